// SPDX-License-Identifier: MIT
#pragma once

#include <atomic>
#include <functional>
#include <vector>

#include <GenApi/GenApi.h>

class BlockPort;
struct RegisterBlock;

/// Told how many registers of how many have been read.
using ReadProgress = std::function<void(int done, int all)>;

/// Reads blocks in one access, where that is possible. Returns how many it has read, from the first one on; 0 where it
/// is not possible. Throws a TimeoutException only.
using StackedRead = std::function<std::size_t(std::vector<RegisterBlock> &blocks)>;

/// Reads the registers that a panel of the map's features will want into the caches of the nodes, adjacent ones in
/// one access, and many of these at once if there is a `stacked`. Registers that no feature asks for are never touched:
/// reading them may do something.
///
/// `port` must be the one that the map's nodes read through. Failures end nothing but the read-ahead of the registers
/// that have them; a device that falls silent and `cancelled` end it at the next access. May run on any thread that
/// has the map to itself.
void readAhead(GenApi::INodeMap &map, BlockPort &port, const std::atomic_bool &cancelled, const ReadProgress &progress,
               const StackedRead &stacked = {});
