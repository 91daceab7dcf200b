// SPDX-License-Identifier: MIT
#pragma once

#include <memory>

namespace NodeEngine {

class Node;
class NodeMap;
struct NodeRecord;

/// The node of the kind that the record's tag names.
std::unique_ptr<Node> makeNode(NodeMap &map, const NodeRecord &record);

} // namespace NodeEngine
