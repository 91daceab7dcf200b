// SPDX-License-Identifier: MIT
#pragma once

#include "ParamterWidget/pages/RowSpec.h"

/// The curated pages of structured-light cameras.
namespace StructuredLightCatalogue {

extern const TabSpec Shoot;
extern const TabSpec Image;
extern const TabSpec Advanced;

} // namespace StructuredLightCatalogue
