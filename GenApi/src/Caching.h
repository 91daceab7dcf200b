// SPDX-License-Identifier: MIT
#pragma once

#include "Node.h"

namespace NodeEngine {

// How long what is known of a node stays true, as far as its links tell.

/// The caching mode of a node whose kind has the given one.
GenApi::ECachingMode cachingModeAlong(const Links &links, GenApi::ECachingMode own);
bool isAccessModeCachableAlong(const Links &links, bool isRegister);

} // namespace NodeEngine
