// SPDX-License-Identifier: MIT
#pragma once

#include <GenApi/Types.h>

#include <string_view>

namespace NodeEngine {

// The words of the schema as the standard's enumerations. A word that is none of them gives the fallback.

GENAPI_NAMESPACE::EVisibility visibilityOf(std::string_view word);
GENAPI_NAMESPACE::EAccessMode accessModeOf(std::string_view word, GENAPI_NAMESPACE::EAccessMode fallback);
GENAPI_NAMESPACE::ECachingMode cachingModeOf(std::string_view word);
GENAPI_NAMESPACE::ERepresentation representationOf(std::string_view word);
GENAPI_NAMESPACE::EDisplayNotation displayNotationOf(std::string_view word);
GENAPI_NAMESPACE::ESlope slopeOf(std::string_view word);

const char *wordOf(GENAPI_NAMESPACE::EVisibility visibility);
const char *wordOf(GENAPI_NAMESPACE::EAccessMode mode);
const char *wordOf(GENAPI_NAMESPACE::ECachingMode mode);

} // namespace NodeEngine
