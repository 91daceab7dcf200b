// SPDX-License-Identifier: MIT
#include "Features/JobThread.h"

#include <utility>

JobThread::~JobThread()
{
    end();
}

void JobThread::add(Job job)
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    if (m_isStopped)
        return;
    m_jobs.push_back(std::move(job));
    m_changed.notify_all();
    if (!std::exchange(m_isRunning, true))
        m_thread = std::thread([this] { run(); });
}

void JobThread::run()
{
    const auto isCalled = [this] { return m_isStopped || !m_jobs.empty(); };
    std::unique_lock<std::mutex> lock(m_mutex);
    for (m_changed.wait(lock, isCalled); !m_isStopped; m_changed.wait(lock, isCalled)) {
        Job job = std::move(m_jobs.front());
        m_jobs.pop_front();
        lock.unlock();
        job();
        job = nullptr; // what it holds goes here, too
        lock.lock();
    }
    m_isRunning = false;
    m_changed.notify_all();
}

void JobThread::stop()
{
    std::deque<Job> dropped; // outlives the lock: what it holds may be anything
    const std::lock_guard<std::mutex> lock(m_mutex);
    m_isStopped = true;
    dropped.swap(m_jobs);
    m_changed.notify_all();
}

bool JobThread::hasEnded(std::chrono::milliseconds time)
{
    std::unique_lock<std::mutex> lock(m_mutex);
    return m_changed.wait_for(lock, time, [this] { return !m_isRunning; });
}

void JobThread::end()
{
    stop();
    if (m_thread.joinable())
        m_thread.join();
}
