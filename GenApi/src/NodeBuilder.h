// SPDX-License-Identifier: MIT
#pragma once

#include "NameTable.h"
#include "Node.h"
#include "NodeContext.h"
#include "NodeLoader.h"

#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace NodeEngine {

/// A node that is to be read again from time to time.
struct PolledNode
{
    Node *node;
    int64_t period; ///< in milliseconds
    int64_t age = 0; ///< since it was read again last
};

/// The nodes that a description makes.
struct LoadedNodes
{
    std::vector<std::unique_ptr<Node>> nodes;
    NameTable names;
    std::vector<PolledNode> polled;
};

/// Makes the nodes of a description and resolves their links.
///
/// What is wrong in the description costs the nodes concerned, not the file: the first of two nodes of one name stays,
/// a node with a link to nowhere or in a value cycle is broken (NA); each cause is logged once.
class NodeBuilder : public NodeLoader
{
public:
    NodeBuilder(Description &description, NodeContext &context) : m_description(description), m_context(context) { }

    LoadedNodes build();

    Node *link(Node &from, Tag role, pugi::xml_node element) override;
    Node *link(Node &from, Tag role, std::string_view name) override;
    void link(Node &from, Tag role, Node &target) override;
    Node *addInner(const NodeRecord &record) override;
    Node *addEntry(Node &enumeration, pugi::xml_node element) override;
    void addPolled(Node &node, int64_t period) override;
    void warn(const std::string &cause) override;

private:
    Node *resolve(Node &from, Tag role, std::string_view name);
    Node *create(const NodeRecord &record);
    void mention(Node &node);
    void breakCycles();
    void markFeatures();

    Description &m_description;
    NodeContext &m_context;
    LoadedNodes m_loaded;
};

} // namespace NodeEngine
