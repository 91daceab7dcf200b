// SPDX-License-Identifier: MIT
#pragma once

#include "Description.h"

#include <GenApi/Types.h>

#include <array>
#include <bitset>
#include <string>

namespace NodeEngine {

/// What the description says about a node itself: its name, its texts, who it is for.
class NodeDescription
{
public:
    explicit NodeDescription(const NodeRecord &record) : m_record(record) { }

    std::string name() const { return std::string(m_record.name); }
    /// The same without a copy; holds as long as the description.
    std::string_view nameView() const { return m_record.name; }
    Tag tag() const { return m_record.tag; }
    pugi::xml_node element() const { return m_record.element; }
    /// The elements whose children describe the node: the structure around it (or null), then its own.
    std::array<pugi::xml_node, 2> elements() const { return {m_record.structure, m_record.element}; }
    GenApi::ENameSpace nameSpace() const;
    /// Whether the node, or the structure around it, has such a child element.
    bool hasElement(Tag tag) const { return m_elements[static_cast<std::size_t>(tag)]; }
    /// The text of a child element, of the structure around the node if the node has none, or "".
    const char *text(Tag tag) const;

    GenApi::EVisibility visibility() const { return m_visibility; }
    void imposeVisibility(GenApi::EVisibility visibility);
    bool isStreamable() const { return m_streamable; }
    bool isDeprecated() const { return m_deprecated; }
    /// Whether categories lead from the root to the node.
    bool isFeature() const { return m_feature; }
    void setFeature() { m_feature = true; }

    /// Notes one child element; true if it says something about the node itself.
    bool take(Tag tag, pugi::xml_node child);

private:
    const NodeRecord m_record;
    std::bitset<static_cast<std::size_t>(Tag::Count)> m_elements; // the kinds of child elements
    GenApi::EVisibility m_visibility = GenApi::Beginner;
    bool m_streamable = false;
    bool m_deprecated = false;
    bool m_feature = false;
};

} // namespace NodeEngine
