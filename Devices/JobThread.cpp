// SPDX-License-Identifier: MIT
#include "Devices/JobThread.h"

#include <utility>

JobThread::JobThread(const QString &name) : worker(std::make_unique<QObject>())
{
    thread.setObjectName(name);
    worker->moveToThread(&thread);
    thread.start();
}

JobThread::~JobThread()
{
    stop();
    thread.wait();
}

void JobThread::add(std::function<void()> job)
{
    const auto run = [this, job = std::move(job)] {
        if (!stopped)
            job();
    };
    QMetaObject::invokeMethod(worker.get(), run, Qt::QueuedConnection);
}

void JobThread::stop()
{
    stopped = true;
    thread.quit();
}

bool JobThread::hasEnded(unsigned long milliseconds)
{
    return thread.wait(milliseconds);
}
