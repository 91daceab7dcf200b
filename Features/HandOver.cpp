// SPDX-License-Identifier: MIT
#include "Features/HandOver.h"

#include <utility>

#include <QThread>

void HandOver::post(Function function)
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    if (m_isClosed)
        return;
    m_waiting.push_back(std::move(function));
    // By name: an event of Qt's own then, which carries nothing that this thread has written.
    QMetaObject::invokeMethod(this, "runNext", Qt::QueuedConnection);
}

void HandOver::call(Function function)
{
    if (thread() != QThread::currentThread())
        post(std::move(function));
    else if (!m_isClosed)
        function();
}

void HandOver::close()
{
    std::deque<Function> dropped; // outlives the lock: what it holds may be anything
    const std::lock_guard<std::mutex> lock(m_mutex);
    m_isClosed = true;
    dropped.swap(m_waiting);
}

void HandOver::runNext()
{
    Function next;
    {
        const std::lock_guard<std::mutex> lock(m_mutex);
        if (m_waiting.empty()) // closed meanwhile
            return;
        next = std::move(m_waiting.front());
        m_waiting.pop_front();
    }
    next();
}
