// SPDX-License-Identifier: MIT
#pragma once

#include "Description.h"

#include <string>
#include <string_view>

namespace NodeEngine {

class Node;

/// What a node may ask of whoever loads it.
class NodeLoader
{
public:
    virtual ~NodeLoader() = default;

    /// Links a node to the one that the element names; null, and the node broken if it needs the link, if there is
    /// none.
    virtual Node *link(Node &from, Tag role, pugi::xml_node element) = 0;
    virtual Node *link(Node &from, Tag role, std::string_view name) = 0;
    virtual void link(Node &from, Tag role, Node &target) = 0;
    /// The node that stands inside of another one; null if its name is another node's.
    virtual Node *addInner(const NodeRecord &record) = 0;
    /// The entry of an enumeration.
    virtual Node *addEntry(Node &enumeration, pugi::xml_node element) = 0;
    /// The node is to be read again each time so many milliseconds have passed.
    virtual void addPolled(Node &node, int64_t period) = 0;
    virtual void warn(const std::string &cause) = 0;
};

} // namespace NodeEngine
