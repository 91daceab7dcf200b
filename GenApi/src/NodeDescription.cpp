// SPDX-License-Identifier: MIT
#include "NodeDescription.h"

#include "WordTables.h"

#include <algorithm>

namespace NodeEngine {

GenApi::ENameSpace NodeDescription::nameSpace() const
{
    const std::string_view word = m_record.element.attribute("NameSpace").value();
    return word == "Standard" ? GenApi::Standard : GenApi::Custom;
}

const char *NodeDescription::text(Tag tag) const
{
    if (!hasElement(tag))
        return "";
    const pugi::xml_node own = m_record.element.child(tagName(tag));
    return (own ? own : m_record.structure.child(tagName(tag))).text().get();
}

void NodeDescription::imposeVisibility(GenApi::EVisibility visibility)
{
    m_visibility = std::max(m_visibility, visibility);
}

bool NodeDescription::take(Tag tag, pugi::xml_node child)
{
    m_elements.set(static_cast<std::size_t>(tag));
    switch (tag) {
    case Tag::Visibility:
        m_visibility = visibilityOf(textOf(child));
        return true;
    case Tag::IsDeprecated:
        m_deprecated = textOf(child) == "Yes";
        return true;
    case Tag::Streamable:
        m_streamable = textOf(child) == "Yes";
        return true;
    default:
        return false;
    }
}

} // namespace NodeEngine
