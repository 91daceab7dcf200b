// SPDX-License-Identifier: MIT
#pragma once

#include <optional>
#include <vector>

#include "Devices/HeightFrame.h"

// What a host finds in height profiles. Pure functions; lengths in mm, points without data are left out.
namespace HeightAnalysis {

struct Range
{
    double lowest = 0.0;
    double highest = 0.0;
};

/// The heights of a frame without the lowest and the highest points; `leftOut` is their share at each end. None without
/// any data.
std::optional<Range> usualRange(const HeightFrame &frame, double leftOut = 0.01);

/// The straight surface that most points of a profile lie on.
struct Line
{
    double slope = 0.0; ///< mm of height per mm along the profile
    double meanHeight = 0.0; ///< of the points that lie on it
};

/// None when the profile has too few points for a line, or all at one place.
std::optional<Line> mainLine(const std::vector<float> &profile, double firstX, double pitchX);

/// The tilt in degrees whose correction levels a surface that has this slope with the correction in force.
double levellingTilt(double slope, const HeightCorrection &inForce);
/// The factor that brings a surface to its true height, to which the offset is still added. Infinite or not a number
/// for one that lies at height 0 or was never measured.
double trueScale(double meanHeight, double trueHeight, const HeightCorrection &inForce);

} // namespace HeightAnalysis
