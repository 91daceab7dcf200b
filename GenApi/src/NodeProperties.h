// SPDX-License-Identifier: MIT
#pragma once

#include "Node.h"

#include <optional>

namespace NodeEngine {

/// Of several values or attributes, the texts are joined by tabs.
struct NodeProperty
{
    std::string value;
    std::string attribute;
};

/// What INode tells of a node by the names of the description's elements.
class NodeProperties
{
public:
    NodeProperties(const Node &node, const GenApi::INode &shown, GenApi::EAccessMode imposedMode)
        : m_node(node), m_shown(shown), m_imposedMode(imposedMode)
    { }

    /// Sorted.
    std::vector<std::string> names() const;
    std::optional<NodeProperty> find(const std::string &name) const;

private:
    std::optional<std::string> ofNode(const std::string &name) const;
    std::optional<NodeProperty> ofLinks(Tag role) const;
    std::optional<NodeProperty> ofElements(Tag tag) const;

    const Node &m_node;
    const GenApi::INode &m_shown; // the same node
    const GenApi::EAccessMode m_imposedMode;
};

} // namespace NodeEngine
