// SPDX-License-Identifier: MIT
#pragma once

#include "Node.h"

#include <string>
#include <string_view>

namespace NodeEngine {

/// Makes the nodes of a map of its description and resolves their links.
///
/// What is wrong in the description costs the nodes concerned, not the file: the first of two nodes of one name stays,
/// a node with a link to nowhere or in a value cycle is broken (NA); each cause is logged once.
class NodeBuilder
{
public:
    explicit NodeBuilder(NodeMap &map) : m_map(map) { }

    void build();

    /// Links a node to the one that the element names; null and broken if there is none.
    Node *link(Node &from, Tag role, pugi::xml_node element);
    Node *link(Node &from, Tag role, std::string_view name);
    void link(Node &from, Tag role, Node &target);
    /// The node that stands inside of another one; null if its name is another node's.
    Node *addInner(const NodeRecord &record);
    /// The entry of an enumeration.
    Node *addEntry(Node &enumeration, pugi::xml_node element);
    void warn(const std::string &cause);
    void addPolled(Node &node);

private:
    Node *resolve(Node &from, Tag role, std::string_view name);
    Node *create(const NodeRecord &record);
    void mention(Node &node);
    void breakCycles();
    void markFeatures();

    NodeMap &m_map;
};

/// The text of an element without the blanks around it.
std::string_view textOf(pugi::xml_node element);

} // namespace NodeEngine
