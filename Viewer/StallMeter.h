// SPDX-License-Identifier: MIT
#pragma once

#include <algorithm>
#include <chrono>
#include <vector>

/// Measures how long a thread is deaf to its event loop: the longest stretch in one event.
///
/// Calls of handlers by handlers belong to the event that began it all. An event that runs an event loop of its own
/// (a dialog) is measured in stretches: it is not deaf while that loop waits or handles other events.
class StallMeter
{
public:
    using Clock = std::chrono::steady_clock;
    using Milliseconds = std::chrono::duration<double, std::milli>;

    /// An event that is not inner begins in the event loop of that depth, see QThread::loopLevel().
    void begin(int level, Clock::time_point now)
    {
        endStretch(now);
        m_levels.push_back(level);
        m_start = now;
        m_isRunning = true;
    }
    /// Whether an event of that depth is only a call within the event that runs.
    bool isInner(int level) const { return !m_levels.empty() && level <= m_levels.back(); }
    /// The event that began last ends, one that ran a loop for it goes on.
    void end(Clock::time_point now)
    {
        endStretch(now);
        m_levels.pop_back();
        m_start = now;
        m_isRunning = !m_levels.empty();
    }
    /// An event loop looks for events, or waits for them.
    void pause(Clock::time_point now)
    {
        endStretch(now);
        m_isRunning = false;
    }
    /// The loop has found events, or is about to return.
    void resume(Clock::time_point now)
    {
        endStretch(now);
        m_start = now;
        m_isRunning = !m_levels.empty();
    }

    /// The longest stretch since the last restart(), in milliseconds.
    double longest() const { return m_longest; }
    void restart() { m_longest = 0; }

private:
    void endStretch(Clock::time_point now)
    {
        if (m_isRunning)
            m_longest = std::max(m_longest, Milliseconds(now - m_start).count());
    }

    std::vector<int> m_levels; ///< of the events that run, each in a loop of the one before
    Clock::time_point m_start;
    double m_longest = 0;
    bool m_isRunning = false;
};
