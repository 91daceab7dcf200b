// SPDX-License-Identifier: MIT
#pragma once

#include <algorithm>
#include <chrono>

/// How long a call takes, in milliseconds.
template <class Call>
double milliseconds(const Call &call)
{
    const auto start = std::chrono::steady_clock::now();
    call();
    return std::chrono::duration<double, std::milli>(std::chrono::steady_clock::now() - start).count();
}

/// The smallest of what repeated calls return: whatever else the machine does can only add to a time.
template <class Call>
double fastestOf(int repeats, const Call &call)
{
    double fastest = call();
    for (int i = 1; i < repeats; ++i)
        fastest = std::min(fastest, call());
    return fastest;
}
