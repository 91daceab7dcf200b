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
        m_events.push_back({level, 0});
        m_start = now;
        m_isRunning = true;
    }
    /// Whether an event of that depth is only a call within the event that runs.
    bool isInner(int level) const { return !m_events.empty() && level <= m_events.back().level; }
    /// The event that began last ends, one that ran a loop for it goes on. Returns the longest stretch of the one that
    /// has ended, in milliseconds.
    double end(Clock::time_point now)
    {
        endStretch(now);
        const double longest = m_events.back().longest;
        m_events.pop_back();
        m_start = now;
        m_isRunning = !m_events.empty();
        return longest;
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
        m_isRunning = !m_events.empty();
    }

    /// The longest stretch since the last restart(), in milliseconds.
    double longest() const { return m_longest; }
    void restart() { m_longest = 0; }

private:
    struct Event
    {
        int level;
        double longest; ///< ms
    };

    void endStretch(Clock::time_point now)
    {
        if (!m_isRunning)
            return;
        const double stretch = Milliseconds(now - m_start).count();
        m_events.back().longest = std::max(m_events.back().longest, stretch);
        m_longest = std::max(m_longest, stretch);
    }

    std::vector<Event> m_events; ///< that run, each in a loop of the one before
    Clock::time_point m_start;
    double m_longest = 0;
    bool m_isRunning = false;
};
