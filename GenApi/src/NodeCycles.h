// SPDX-License-Identifier: MIT
#pragma once

#include "Links.h"

#include <string>

namespace NodeEngine {

/// Nodes that cannot be read without reading each other.
using Cycle = std::vector<Node *>;

/// Where values, limits or gates lead back to where they came from. Nodes are given in the order of their positions.
std::vector<Cycle> readCycles(const std::vector<Node *> &nodes);
/// The same for values alone: these cannot be read at all.
std::vector<Cycle> valueCycles(const std::vector<Node *> &nodes);
/// One way round a cycle of readCycles(), as names.
std::string wayRound(const Cycle &cycle);

} // namespace NodeEngine
