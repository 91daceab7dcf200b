// SPDX-License-Identifier: MIT
#pragma once

#include "tour/TourSteps.h"

/// The part of the tour on bad links: frames that get lost, a camera that does not answer, one that is gone and comes
/// back. The first camera is open, acquires and shows its attribute tab, and does so again in the end.
const std::vector<TourStep> &tourLinkSteps();
