// SPDX-License-Identifier: MIT
#pragma once

#include "tour/TourSteps.h"

/// The part of the tour on the simulated laser profiler. Starts on the panel of an open camera that does not acquire,
/// and leaves it like that.
const std::vector<TourStep> &tourProfilerSteps();
