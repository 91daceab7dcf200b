// SPDX-License-Identifier: MIT
#pragma once

#include <GenApi/Types.h>

#include <string_view>

namespace NodeEngine {

// The words of the schema as the standard's enumerations. A word that is none of them gives the fallback.

GenApi::EVisibility visibilityOf(std::string_view word);
GenApi::EAccessMode accessModeOf(std::string_view word, GenApi::EAccessMode fallback);
GenApi::ECachingMode cachingModeOf(std::string_view word);
GenApi::ERepresentation representationOf(std::string_view word);
GenApi::EDisplayNotation displayNotationOf(std::string_view word);
GenApi::ESlope slopeOf(std::string_view word);

const char *wordOf(GenApi::EVisibility visibility);
const char *wordOf(GenApi::EAccessMode mode);

} // namespace NodeEngine
