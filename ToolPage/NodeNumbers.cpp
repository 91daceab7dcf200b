// SPDX-License-Identifier: MIT
#include "ToolPage/NodeNumbers.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace {

template <class Real>
double clampedTo(double number, double ifNan)
{
    constexpr double Limit = std::numeric_limits<Real>::max();
    return std::isnan(number) ? ifNan : std::clamp(number, -Limit, Limit);
}

} // namespace

int NodeNumbers::low32(int64_t number)
{
    return static_cast<int32_t>(static_cast<uint32_t>(number));
}

int NodeNumbers::spinBoxMaximum(int64_t maximum, int minimum)
{
    const int low = low32(maximum);
    return low == -1 || low < minimum ? std::numeric_limits<int32_t>::max() : low;
}

double NodeNumbers::singlePrecision(double number, double ifNan)
{
    return static_cast<float>(clampedTo<float>(number, ifNan));
}

double NodeNumbers::finite(double number, double ifNan)
{
    return clampedTo<double>(number, ifNan);
}
