// SPDX-License-Identifier: MIT
#pragma once

#include <deque>
#include <mutex>

#include <QImage>

/// Images on their way from a producing thread to the GUI thread. A few may wait; when a further one comes, the oldest
/// goes, so that a slow receiver sees the newest. Thread-safe.
class FrameMailbox
{
public:
    static constexpr std::size_t capacity = 3;

    /// True when the receiver is to be told to take() once; false when the image took the place of the oldest one,
    /// whose turn it takes.
    bool put(const QImage &frame);
    /// The oldest image that waits. Call it once for each put() that returned true.
    QImage take();

private:
    std::mutex mutex;
    std::deque<QImage> waiting;
};
