// SPDX-License-Identifier: MIT
#pragma once

#include <deque>
#include <functional>
#include <mutex>

#include <QObject>

/// Brings functions from any thread to the thread of this object, whose event loop runs them in their order. What has
/// not run when this goes is dropped.
///
/// They wait under a lock of the standard library. Qt's own queued calls with values do the same, but the thread
/// sanitizer does not see the locks of a Qt that is not built with it.
class HandOver : public QObject
{
    Q_OBJECT

public:
    using Function = std::function<void()>;

    /// Any thread.
    void post(Function function);
    /// The same, but at once when called on the thread of this object. Any thread.
    void call(Function function);
    /// Drops what waits and what is still to come. On the thread of this object.
    void close();

private Q_SLOTS:
    void runNext();

private:
    std::mutex m_mutex; ///< guards what follows
    std::deque<Function> m_waiting;
    bool m_isClosed = false;
};
