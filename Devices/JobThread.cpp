// SPDX-License-Identifier: MIT
#include "Devices/JobThread.h"

#include <utility>

JobThread::JobThread(const QString &name) : m_worker(std::make_unique<QObject>())
{
    m_thread.setObjectName(name);
    m_worker->moveToThread(&m_thread);
    m_thread.start();
}

JobThread::~JobThread()
{
    stop();
    m_thread.wait();
}

void JobThread::add(std::function<void()> job)
{
    const auto run = [this, job = std::move(job)] {
        if (!m_stopped)
            job();
    };
    QMetaObject::invokeMethod(m_worker.get(), run, Qt::QueuedConnection);
}

void JobThread::stop()
{
    m_stopped = true;
    m_thread.quit();
}

bool JobThread::hasEnded(unsigned long milliseconds)
{
    return m_thread.wait(milliseconds);
}
