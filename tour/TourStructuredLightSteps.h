// SPDX-License-Identifier: MIT
#pragma once

#include "tour/TourSteps.h"

/// The part of the tour on the simulated structured-light camera, from its opening to its closing; the area-scan camera
/// gets the focus back.
const std::vector<TourStep> &tourStructuredLightSteps();
