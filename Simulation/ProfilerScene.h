// SPDX-License-Identifier: MIT
#pragma once

#include <QRect>

/// What lies in front of a simulated laser profiler: a belt that carries the same made-up part again and again. The
/// part has stairs, a groove, a dome, a through hole, a ramp and a dark patch. Lengths in mm.
namespace ProfilerScene {

constexpr double PartSpacing = 50.0; ///< along Y, from part to part
constexpr double BeltHeight = -5.0;
/// Where a lamp shines onto the sensor, in sensor pixels, and how bright it is at an exposure of 100 microseconds.
const QRect StrayLight(1380, 60, 240, 50);
constexpr double StrayBrightness = 130.0;

struct Surface
{
    double height;
    double reflectance; ///< 1 is a usual surface
};

/// The surface at a place across (x) and along (y) the belt.
Surface at(double x, double y);

} // namespace ProfilerScene
