// SPDX-License-Identifier: MIT
#pragma once

#include <deque>
#include <mutex>
#include <utility>

#include <QImage>

/// Images (or other frames) on their way from a producing thread to the GUI thread. A few may wait; when a further one
/// comes, the oldest goes, so that a slow receiver sees the newest. Thread-safe.
template <class Frame>
class BasicFrameMailbox
{
public:
    static constexpr std::size_t Capacity = 3;

    /// True when the receiver is to be told to take() once; false when the image took the place of the oldest one,
    /// whose turn it takes.
    bool put(Frame frame)
    {
        const std::lock_guard<std::mutex> lock(m_mutex);
        const bool full = m_waiting.size() == Capacity;
        if (full)
            m_waiting.pop_front();
        m_waiting.push_back(std::move(frame));
        return !full;
    }

    /// The oldest image that waits. Call it once for each put() that returned true.
    Frame take()
    {
        const std::lock_guard<std::mutex> lock(m_mutex);
        if (m_waiting.empty())
            return {};
        Frame frame = std::move(m_waiting.front());
        m_waiting.pop_front();
        return frame;
    }

private:
    std::mutex m_mutex;
    std::deque<Frame> m_waiting;
};

using FrameMailbox = BasicFrameMailbox<QImage>;
