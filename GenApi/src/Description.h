// SPDX-License-Identifier: MIT
#pragma once

#include "Tags.h"

#include <pugixml.hpp>

#include <deque>
#include <string>
#include <string_view>
#include <vector>

namespace NodeEngine {

class LoadLog;

/// One node as the description has it. The elements live as long as the Description.
struct NodeRecord
{
    Tag tag;
    std::string_view name; ///< an entry's is "EnumEntry_<Enumeration>_<Entry>"
    pugi::xml_node element;
    pugi::xml_node structure; ///< the StructReg around a StructEntry, else null
};

/// The parsed text of a camera description: its nodes in document order, groups flattened.
///
/// Entries are left to their enumerations. Elements that are no nodes, and nodes without a name, are logged and left
/// out.
class Description
{
public:
    /// \throws GenICam::RuntimeException if the text is not XML, or not a description.
    Description(std::string text, LoadLog &log);

    /// An attribute of the outermost element; empty if it is missing.
    const char *attribute(const char *name) const { return m_tree.document_element().attribute(name).value(); }
    const std::vector<NodeRecord> &nodes() const { return m_nodes; }

    /// The record of an entry inside of the enumeration.
    NodeRecord entry(std::string_view enumeration, pugi::xml_node element);

private:
    void collect(LoadLog &log);
    void add(Tag tag, pugi::xml_node element, pugi::xml_node structure, LoadLog &log);

    std::string m_text; // parsed in place
    pugi::xml_document m_tree;
    std::vector<NodeRecord> m_nodes;
    std::deque<std::string> m_entryNames;
};

/// The text of an element without the blanks around it.
std::string_view textOf(pugi::xml_node element);

} // namespace NodeEngine
