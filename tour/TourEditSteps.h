// SPDX-License-Identifier: MIT
#pragma once

#include "tour/TourSteps.h"

/// The part of the tour on edits that are cut off or refused, and on values that change by themselves: on the curated
/// pages of an open area-scan camera that does not acquire and has a first user set of full size. Leaves it like that.
const std::vector<TourStep> &tourEditSteps();
