// SPDX-License-Identifier: MIT
#pragma once

#include <vector>

#include "tour/TourSteps.h"

/// Steps with GenTL producers: that of the tests, and a file that is none. A simulated camera is open before and after
/// them. None in builds without tests.
const std::vector<TourStep> &tourProducerSteps();
