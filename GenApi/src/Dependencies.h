// SPDX-License-Identifier: MIT
#pragma once

#include "Node.h"

#include <vector>

namespace NodeEngine {

/// What a link means to the node that has it.
enum class LinkKind {
    Value, ///< its value comes from there
    Limit, ///< its minimum, maximum or increment does
    Gate, ///< its access mode does
    Content, ///< a category's feature, an enumeration's entry, a register's port
    Invalidator, ///< it has to be read again when that one is written
    Other ///< nothing follows from it
};
LinkKind kindOf(Tag role);

/// Whether GetChildren(ctReadingChildren) and GetParents() show the link.
bool isReadingLink(Tag role);

/// Fills parents and dependents of all nodes from their links.
void connectGraph(const std::vector<Node *> &nodes);
/// Everything that depends on the node, directly or not, the node itself only if it does so in a cycle.
const std::vector<Node *> &dependentClosure(Node &node);

/// Nodes that cannot be read without reading each other.
using Cycle = std::vector<Node *>;
/// Where values, limits or gates lead back to where they came from; numbers the nodes there (Node::cycle). Nodes are
/// given in the order of their positions.
std::vector<Cycle> readCycles(const std::vector<Node *> &nodes);
/// The same for values alone: these cannot be read at all.
std::vector<Cycle> valueCycles(const std::vector<Node *> &nodes);
/// One way round a cycle of readCycles(), as names.
std::string wayRound(const Cycle &cycle);

} // namespace NodeEngine
