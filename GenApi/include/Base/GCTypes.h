// SPDX-License-Identifier: MIT
#pragma once

// Names of the namespaces with the version of the standard's interface. `GenApi` and `GenICam` are aliases,
// so forward declarations have to be written inside `namespace GENAPI_NAMESPACE`.
#define GENICAM_NAMESPACE GenICam_3_4
#define GENAPI_NAMESPACE GenApi_3_4

namespace GENICAM_NAMESPACE { }
namespace GENAPI_NAMESPACE { }
namespace GenICam = GENICAM_NAMESPACE;
namespace GenApi = GENAPI_NAMESPACE;

#include <cstddef>
#include <cstdint>

// Types that cross the boundary of the library: their type information has to be visible everywhere.
#if defined(_WIN32)
#define GENICAM_DECL
#else
#define GENICAM_DECL __attribute__((visibility("default")))
#endif
#define GENICAM_INTERFACE struct GENICAM_DECL

namespace GENICAM_NAMESPACE {

typedef struct _Version_t
{
    uint16_t Major;
    uint16_t Minor;
    uint16_t SubMinor;
} Version_t;

} // namespace GENICAM_NAMESPACE
