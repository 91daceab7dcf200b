// SPDX-License-Identifier: MIT
#pragma once

#include <functional>

#include "Devices/HeightFrame.h"
#include "Host/HeightAnalysis.h"

class TourStage;

/// The heights that devices send while the tour looks on.
namespace TourHeights {

/// The next height map, or part of one, that is `wanted`; without points when none comes within `patience` ms.
HeightFrame next(TourStage &stage, const std::function<bool(const HeightFrame &)> &wanted, int patience = 5000);
/// Starts the acquisition; its first complete map, without points when none comes.
HeightFrame first(TourStage &stage);
/// The same; its heights, NaN without data.
HeightAnalysis::Range firstRange(TourStage &stage);

} // namespace TourHeights
