// SPDX-License-Identifier: MIT
#pragma once

/// What lies before a simulated structured-light camera: a plate with a box, stairs, a ramp, a post, a shiny dome, a
/// coin, a dark disc and a hole. X grows to the right, Y to the front, from the middle of the view. Lengths in mm.
namespace StructuredLightScene {

struct Surface
{
    float height = 0.0f; ///< over the plate
    float reflectance = 0.55f; ///< 1 is white paper
    float gloss = 0.0f; ///< 1 is polished
};

Surface at(double x, double y);

} // namespace StructuredLightScene
