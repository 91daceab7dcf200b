// SPDX-License-Identifier: MIT
#include "NodeProperties.h"

#include "WordTables.h"

#include <set>

namespace NodeEngine {

namespace {

const char *propertyOf(Tag role)
{
    return role == Tag::EnumEntry ? "pEnumEntry" : tagName(role);
}

Tag roleOf(const std::string &property)
{
    if (property == "pEnumEntry")
        return Tag::EnumEntry;
    return property == tagName(Tag::EnumEntry) ? Tag::Unknown : tagOf(property);
}

// Whether the element is a property as it stands, not a node inside of the node.
bool isPlainElement(Tag tag)
{
    return tag != Tag::Unknown && !isNodeTag(tag) && tag != Tag::StructEntry;
}

void join(std::string &list, std::string_view item)
{
    list += list.empty() ? "" : "\t";
    list += item;
}

void add(std::optional<NodeProperty> &property, std::string_view value, std::string_view attribute)
{
    if (!property)
        property.emplace();
    join(property->value, value);
    if (!attribute.empty())
        join(property->attribute, attribute);
}

} // namespace

std::vector<std::string> NodeProperties::names() const
{
    std::set<std::string> sorted{"DeviceName", "ImposedAccessMode", "IsDeprecated", "IsFeature", "Name",
                                 "NameSpace",  "NodeType",          "Streamable",   "Visibility"};
    for (const Link &link : m_node.links())
        sorted.insert(propertyOf(link.role));
    for (const pugi::xml_node &parent : m_node.description().elements()) {
        for (const pugi::xml_node &child : parent.children()) {
            const Tag tag = tagOf(child.name());
            if (isPlainElement(tag) && tag != Tag::Extension)
                sorted.insert(child.name());
        }
    }
    return {sorted.begin(), sorted.end()};
}

std::optional<NodeProperty> NodeProperties::find(const std::string &name) const
{
    if (const std::optional<std::string> own = ofNode(name))
        return NodeProperty{*own, {}};
    if (const std::optional<NodeProperty> linked = ofLinks(roleOf(name)))
        return linked;
    return ofElements(tagOf(name));
}

std::optional<std::string> NodeProperties::ofNode(const std::string &name) const
{
    const auto yesNo = [](bool value) { return std::string(value ? "Yes" : "No"); };
    if (name == "Name")
        return m_node.name();
    if (name == "NodeType")
        return tagName(m_node.tag());
    if (name == "NameSpace")
        return m_shown.GetNameSpace() == GenApi::Standard ? "Standard" : "Custom";
    if (name == "Visibility")
        return wordOf(m_shown.GetVisibility());
    if (name == "ImposedAccessMode")
        return wordOf(m_imposedMode);
    if (name == "Streamable")
        return yesNo(m_shown.IsStreamable());
    if (name == "IsFeature")
        return yesNo(m_shown.IsFeature());
    if (name == "IsDeprecated")
        return yesNo(m_shown.IsDeprecated());
    if (name == "DeviceName" && !m_shown.GetDeviceName().empty())
        return m_shown.GetDeviceName().c_str();
    return std::nullopt;
}

std::optional<NodeProperty> NodeProperties::ofLinks(Tag role) const
{
    std::optional<NodeProperty> property;
    for (const Link &link : m_node.links()) {
        if (link.role == role)
            add(property, link.target->name(), link.name.empty() ? link.number : link.name);
    }
    return property;
}

std::optional<NodeProperty> NodeProperties::ofElements(Tag tag) const
{
    std::optional<NodeProperty> property;
    if (!isPlainElement(tag) || !m_node.description().hasElement(tag))
        return property;
    for (const pugi::xml_node &parent : m_node.description().elements()) {
        for (const pugi::xml_node &child : parent.children(tagName(tag))) {
            const pugi::xml_attribute index = child.attribute("Index");
            add(property, textOf(child), index ? index.value() : child.attribute("Name").value());
        }
    }
    return property;
}

} // namespace NodeEngine
