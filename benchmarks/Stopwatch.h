// SPDX-License-Identifier: MIT
#pragma once

#include <algorithm>
#include <chrono>
#include <vector>

/// How long a call takes, in milliseconds.
template <class Call>
double milliseconds(const Call &call)
{
    const auto start = std::chrono::steady_clock::now();
    call();
    return std::chrono::duration<double, std::milli>(std::chrono::steady_clock::now() - start).count();
}

/// The median of the values, which must not be empty.
inline double median(std::vector<double> values)
{
    const auto middle = values.begin() + static_cast<std::ptrdiff_t>(values.size() / 2);
    std::nth_element(values.begin(), middle, values.end());
    return *middle;
}

/// The median of what repeated calls return.
template <class Call>
double medianOf(int repeats, const Call &call)
{
    std::vector<double> values;
    for (int i = 0; i < repeats; ++i)
        values.push_back(call());
    return median(values);
}
