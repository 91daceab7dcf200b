// SPDX-License-Identifier: MIT
#pragma once

#include <vector>

#include "tour/TourSteps.h"

/// Steps with settings files: of a camera that is open and focused.
const std::vector<TourStep> &tourSettingsSteps();
