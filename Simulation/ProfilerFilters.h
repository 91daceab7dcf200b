// SPDX-License-Identifier: MIT
#pragma once

#include <deque>
#include <vector>

/// Filters over the points of a profile and over the profiles of a frame. NaN is a missing point; it stays missing and
/// does not count in its neighbours' windows. Windows of 0 or 1 change nothing.
namespace ProfilerFilters {

using Heights = std::vector<float>;

/// Fills gaps of at most `longest` points with a straight line between their ends.
void fillGaps(Heights &heights, int longest);
void median(Heights &heights, int window);
void average(Heights &heights, int window);

/// Filters each point over the last profiles.
class OverTime
{
public:
    enum class Kind { Median, Average };
    explicit OverTime(Kind filter) : m_kind(filter) { }

    void apply(Heights &heights, int window);
    void clear() { m_last.clear(); }

private:
    const Kind m_kind;
    std::deque<Heights> m_last;
};

} // namespace ProfilerFilters
