// SPDX-License-Identifier: MIT
#pragma once

#include <chrono>

#include "Devices/ReadAhead.h"
#include "Devices/gentl/ModulePort.h"

/// Reads many registers with one call of a producer that can do that. Not for the GUI thread; a call that takes longer
/// than `limit` counts as one that is refused, and is the last one.
StackedRead stackedReads(const ModulePort::Target &target, bool wantsWords, std::chrono::milliseconds limit);
