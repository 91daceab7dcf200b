// SPDX-License-Identifier: MIT
#pragma once

#include <atomic>
#include <functional>

#include <GenApi/GenApi.h>

class BlockPort;

/// Told how many registers of how many have been read.
using ReadProgress = std::function<void(int done, int all)>;

/// Reads the registers that a panel of the map's features will want into the caches of the nodes, adjacent ones in
/// one access. Registers that no feature asks for are never touched: reading them may do something.
///
/// `port` must be the one that the map's nodes read through. Failures end nothing but the read-ahead of the registers
/// that have them; a device that falls silent and `cancelled` end it at the next access. May run on any thread that
/// has the map to itself.
void readAhead(GenApi::INodeMap &map, BlockPort &port, const std::atomic_bool &cancelled, const ReadProgress &progress);
