// SPDX-License-Identifier: MIT
#include "Simulation/ProfilerScene.h"

#include <cmath>

namespace ProfilerScene {

namespace {

constexpr double PartStart = 3.0;
constexpr double PartLength = 34.0;
constexpr double HalfWidth = 15.0;
constexpr double BodyHeight = -1.0;
constexpr Surface Belt{BeltHeight, 0.5};

Surface stairs(double along)
{
    const int step = int(along / PartLength * 4.0);
    return {BodyHeight + 2.0 * step, step == 3 ? 1.8 : 1.0};
}

Surface ramp(double x, double along)
{
    const bool darkPatch = x > 8.0 && x < 13.0 && along > 21.0 && along < 31.0;
    return {BodyHeight + 5.0 * along / PartLength, darkPatch ? 0.25 : 1.0};
}

Surface middle(double x, double along)
{
    constexpr double DomeRadius = 3.0;
    const bool groove = x > -4.5 && x < -3.0;
    if (groove)
        return {BodyHeight - 2.0, 0.9};
    if (std::hypot(x - 2.0, along - 23.0) < 2.2)
        return Belt; // seen through the hole
    const double distance = std::hypot(x - 2.0, along - 9.0);
    const double dome = distance < DomeRadius ? std::sqrt(DomeRadius * DomeRadius - distance * distance) : 0.0;
    return {BodyHeight + 0.8 * dome, 1.0};
}

} // namespace

Surface at(double x, double y)
{
    const double along = y - std::floor(y / PartSpacing) * PartSpacing - PartStart;
    if (along < 0.0 || along >= PartLength || std::abs(x) > HalfWidth)
        return Belt;
    if (x < -7.0)
        return stairs(along);
    return x < 6.0 ? middle(x, along) : ramp(x, along);
}

} // namespace ProfilerScene
