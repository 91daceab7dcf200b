// SPDX-License-Identifier: MIT
#pragma once

#include <memory>

namespace NodeEngine {

class Node;
struct NodeContext;
struct NodeRecord;

/// The node of the kind that the record's tag names.
std::unique_ptr<Node> makeNode(NodeContext &context, const NodeRecord &record);

} // namespace NodeEngine
