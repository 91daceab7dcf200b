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
/// The nodes, given in the order of their positions, whose values depend on themselves.
std::vector<Node *> nodesInValueCycles(const std::vector<Node *> &nodes);

} // namespace NodeEngine
