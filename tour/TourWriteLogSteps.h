// SPDX-License-Identifier: MIT
#pragma once

#include <vector>

#include "tour/TourSteps.h"

/// The dock with what was written. For the first camera, after its features were edited.
const std::vector<TourStep> &tourWriteLogSteps();
