// SPDX-License-Identifier: MIT
#include <Base/GCString.h>

namespace GENICAM_NAMESPACE {

// For code that takes the constant by reference.
const size_t gcstring::npos;

} // namespace GENICAM_NAMESPACE
