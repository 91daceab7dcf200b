// SPDX-License-Identifier: MIT
#pragma once

#include "tour/TourSteps.h"

/// The part of the tour on the curated pages of an open area-scan camera that does not acquire; leaves it like that.
const std::vector<TourStep> &tourPageSteps();
