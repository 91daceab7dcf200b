// SPDX-License-Identifier: MIT
#pragma once

#include "Devices/HeightFrame.h"

/// Filters of depth maps. NaN is a missing point; it does not count as a neighbour. Thresholds in mm; a threshold,
/// radius or size of 0 changes nothing.
namespace StructuredLightFilters {

/// Gives points that are further from the median of the 3 x 3 points around them its height.
void replaceSpikes(HeightFrame &map, float threshold);
/// Removes points that are further from the mean of the 11 x 11 points around them.
void removeJumps(HeightFrame &map, float threshold);
/// Removes points with fewer neighbours within `radius` columns and rows; more than there can be counts as all.
void removeIsolated(HeightFrame &map, int radius, int neighbours);
/// Fills holes of at most `largest` points from their edges.
void fillHoles(HeightFrame &map, int largest);
/// Averages each point with those of its neighbours that lie on the same surface.
void smooth(HeightFrame &map);
void truncate(HeightFrame &map, float lowest, float highest);

} // namespace StructuredLightFilters
