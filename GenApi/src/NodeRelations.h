// SPDX-License-Identifier: MIT
#pragma once

#include "Node.h"
#include "NodeGraph.h"

#include <GenApi/Container.h>

namespace NodeEngine {

// The nodes around a node as INode and ISelector list them. The lists are filled anew; the map's lock is held.

void listChildren(const Node &node, GenApi::ELinkType type, NodeGraph &graph, GenApi::NodeList_t &children);
void listParents(const Node &node, NodeGraph &graph, GenApi::NodeList_t &parents);
/// What the node selects, and what that selects in turn.
void listSelected(const Node &node, NodeGraph &graph, GenApi::FeatureList_t &features);
void listSelecting(const Node &node, const NodeGraph &graph, GenApi::FeatureList_t &features);

} // namespace NodeEngine
