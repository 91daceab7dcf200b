// SPDX-License-Identifier: MIT
#pragma once

#include <atomic>
#include <functional>
#include <memory>

#include <QObject>
#include <QString>
#include <QThread>

/// A thread that runs jobs one after the other, in the order in which they were added.
class JobThread
{
public:
    explicit JobThread(const QString &name);
    /// Drops what waits and lets the running job end.
    ~JobThread();

    void add(std::function<void()> job);
    /// Drops what waits: no further job begins.
    void stop();
    /// After stop(): true when the running job has ended, false when that takes longer than `milliseconds`.
    bool hasEnded(unsigned long milliseconds);

private:
    QThread m_thread;
    std::unique_ptr<QObject> m_worker;
    std::atomic_bool m_stopped{false};
};
