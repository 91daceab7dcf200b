// SPDX-License-Identifier: MIT
#pragma once

#include <chrono>

#ifdef __linux__
#include <ctime>
#include <sys/resource.h>
#endif

/// How long this thread has waited for a device since the construction: all the time that has gone by, if the thread
/// had to wait at all; what it has computed otherwise, if that is more than a millisecond (a port that asks again and
/// again instead of waiting). What other programs took from it does not count. Where the system does not tell, all time
/// counts.
class ReadingTime
{
public:
    using Clock = std::chrono::steady_clock;

    Clock::duration elapsed() const
    {
        const Clock::duration all = Clock::now() - m_begin;
#ifdef __linux__
        if (waits() != m_waits)
            return all;
        const Clock::duration computed = computing() - m_computed;
        return computed > std::chrono::milliseconds(1) ? computed : Clock::duration::zero();
#else
        return all;
#endif
    }

private:
    const Clock::time_point m_begin = Clock::now();
#ifdef __linux__
    /// Times that the thread gave up the processor by itself.
    static long waits()
    {
        rusage usage{};
        getrusage(RUSAGE_THREAD, &usage);
        return usage.ru_nvcsw;
    }
    static Clock::duration computing()
    {
        timespec time{};
        clock_gettime(CLOCK_THREAD_CPUTIME_ID, &time);
        return std::chrono::seconds(time.tv_sec) + std::chrono::nanoseconds(time.tv_nsec);
    }
    const long m_waits = waits();
    const Clock::duration m_computed = computing();
#endif
};
