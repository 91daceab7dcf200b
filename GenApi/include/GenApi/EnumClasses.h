// SPDX-License-Identifier: MIT
#pragma once

#include <GenApi/Types.h>

namespace GENAPI_NAMESPACE {

/// Text form of an enumeration of the standard.
#define GENAPI_ENUM_CLASS(name)                                                                                        \
    class GENICAM_DECL name##Class                                                                                     \
    {                                                                                                                  \
    public:                                                                                                            \
        /** False if `text` is none of the names; `value` is then the undefined one. */                                \
        static bool FromString(const GENICAM_NAMESPACE::gcstring &text, name *value);                                  \
        static void ToString(GENICAM_NAMESPACE::gcstring &text, name *value);                                          \
        static GENICAM_NAMESPACE::gcstring ToString(name value);                                                       \
    }

GENAPI_ENUM_CLASS(EAccessMode);
GENAPI_ENUM_CLASS(EVisibility);
GENAPI_ENUM_CLASS(ERepresentation);
GENAPI_ENUM_CLASS(EIncMode);
GENAPI_ENUM_CLASS(ENameSpace);
GENAPI_ENUM_CLASS(ECachingMode);
GENAPI_ENUM_CLASS(EDisplayNotation);
GENAPI_ENUM_CLASS(EYesNo);
GENAPI_ENUM_CLASS(EEndianess);
GENAPI_ENUM_CLASS(ESign);
GENAPI_ENUM_CLASS(ESlope);

#undef GENAPI_ENUM_CLASS

} // namespace GENAPI_NAMESPACE
