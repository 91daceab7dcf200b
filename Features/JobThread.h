// SPDX-License-Identifier: MIT
#pragma once

#include <chrono>
#include <condition_variable>
#include <deque>
#include <functional>
#include <mutex>
#include <thread>

/// A thread that runs jobs one after the other, in the order in which they were added. It begins with the first one.
class JobThread
{
public:
    using Job = std::function<void()>;

    JobThread() = default;
    JobThread(const JobThread &) = delete;
    JobThread &operator=(const JobThread &) = delete;
    /// As end().
    ~JobThread();

    void add(Job job);
    /// Drops what waits: no further job begins.
    void stop();
    /// After stop(): true when the running job has ended, false when that takes longer than `time`.
    bool hasEnded(std::chrono::milliseconds time);
    /// Drops what waits and lets the running job end.
    void end();

private:
    void run();

    std::mutex m_mutex; ///< guards what follows
    std::condition_variable m_changed;
    std::deque<Job> m_jobs;
    bool m_isStopped = false;
    bool m_isRunning = false;
    std::thread m_thread;
};
