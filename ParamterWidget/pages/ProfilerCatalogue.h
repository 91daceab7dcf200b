// SPDX-License-Identifier: MIT
#pragma once

#include "ParamterWidget/pages/RowSpec.h"

/// The curated pages of laser profilers.
namespace ProfilerCatalogue {

extern const TabSpec Trigger;
extern const TabSpec Image;
extern const TabSpec Contour;
extern const TabSpec Others;

} // namespace ProfilerCatalogue
