// SPDX-License-Identifier: MIT
#include "Simulation/ProfilerFilters.h"

#include <algorithm>
#include <cmath>
#include <numeric>

namespace ProfilerFilters {

namespace {

using Window = std::vector<float>;

float middle(Window &values)
{
    const auto half = values.begin() + std::ptrdiff_t(values.size() / 2);
    std::nth_element(values.begin(), half, values.end());
    return *half;
}

float mean(Window &values)
{
    return std::accumulate(values.begin(), values.end(), 0.0f) / float(values.size());
}

template <class Reduce>
void slide(Heights &heights, int window, Reduce reduce)
{
    if (window < 2)
        return;
    const Heights before = heights;
    const int size = int(before.size());
    Window values;
    for (int i = 0; i < size; ++i) {
        if (std::isnan(before[size_t(i)]))
            continue;
        values.clear();
        for (int j = std::max(0, i - window / 2); j <= std::min(size - 1, i + window / 2); ++j) {
            if (!std::isnan(before[size_t(j)]))
                values.push_back(before[size_t(j)]);
        }
        heights[size_t(i)] = reduce(values);
    }
}

} // namespace

void fillGaps(Heights &heights, int longest)
{
    const auto missing = [](float height) { return std::isnan(height); };
    auto known = std::find_if_not(heights.begin(), heights.end(), missing);
    while (known != heights.end()) {
        const auto gap = std::find_if(known, heights.end(), missing);
        const auto end = std::find_if_not(gap, heights.end(), missing);
        const auto length = end - gap;
        if (end != heights.end() && length > 0 && length <= longest) {
            const float from = *(gap - 1);
            const float step = (*end - from) / float(length + 1);
            for (std::ptrdiff_t i = 0; i < length; ++i)
                *(gap + i) = from + step * float(i + 1);
        }
        known = end;
    }
}

void median(Heights &heights, int window)
{
    slide(heights, window, middle);
}

void average(Heights &heights, int window)
{
    slide(heights, window, mean);
}

void OverTime::apply(Heights &heights, int window)
{
    m_last.push_back(heights);
    while (int(m_last.size()) > std::max(1, window))
        m_last.pop_front();
    if (m_last.size() < 2)
        return;
    Window values;
    for (size_t i = 0; i < heights.size(); ++i) {
        if (std::isnan(heights[i]))
            continue;
        values.clear();
        for (const Heights &one : m_last) {
            if (!std::isnan(one[i]))
                values.push_back(one[i]);
        }
        heights[i] = m_kind == Kind::Median ? middle(values) : mean(values);
    }
}

} // namespace ProfilerFilters
