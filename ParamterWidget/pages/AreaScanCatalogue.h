// SPDX-License-Identifier: MIT
#pragma once

#include "ParamterWidget/pages/RowSpec.h"

/// The curated pages of area-scan cameras. Feature names follow the SFNC.
namespace AreaScanCatalogue {

extern const TabSpec Common;
extern const TabSpec Trigger;
extern const TabSpec Advanced;

} // namespace AreaScanCatalogue
