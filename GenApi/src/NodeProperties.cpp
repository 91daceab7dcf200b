// SPDX-License-Identifier: MIT
// How a node looks from outside: its children by kind of link, and its properties as texts.
#include "Dependencies.h"
#include "Node.h"
#include "NodeBuilder.h"
#include "NodeMap.h"
#include "WordTables.h"

#include <map>

namespace NodeEngine {

namespace {

bool isWritingLink(Tag role)
{
    switch (role) {
    case Tag::pValue:
    case Tag::pValueCopy:
    case Tag::pValueIndexed:
    case Tag::pValueDefault:
        return true;
    default:
        return false;
    }
}

// Adds a node unless it has the list's mark, that is, unless it is in the list.
void addOnce(NodeList_t &list, Node &node, uint64_t mark)
{
    if (node.listMark == mark)
        return;
    node.listMark = mark;
    list.push_back(&node);
}

bool holdsValue(Tag kind)
{
    switch (kind) {
    case Tag::Category:
    case Tag::IntSwissKnife:
    case Tag::SwissKnife:
    case Tag::Port:
    case Tag::Node:
        return false;
    default:
        return true;
    }
}

// The nodes at the ends of the writing links.
void addTerminals(Node &start, NodeList_t &list)
{
    const uint64_t mark = ++start.map().listMark;
    std::vector<Node *> reached{&start};
    start.listMark = mark;
    for (std::size_t i = 0; i < reached.size(); ++i) {
        bool isEnd = holdsValue(reached[i]->tag());
        for (const Link &link : reached[i]->links()) {
            if (!isWritingLink(link.role))
                continue;
            isEnd = false;
            if (link.target->listMark != mark)
                reached.push_back(link.target);
            link.target->listMark = mark;
        }
        if (isEnd)
            list.push_back(reached[i]);
    }
}

const char *propertyOf(Tag role)
{
    return role == Tag::EnumEntry ? "pEnumEntry" : tagName(role);
}

void join(std::string &list, std::string_view item)
{
    list += list.empty() ? "" : "\t";
    list += item;
}

} // namespace

void Node::GetChildren(NodeList_t &children, ELinkType type) const
{
    AutoLock lock(m_map.GetLock());
    children.clear();
    if (type == ctParentNodes)
        return GetParents(children);
    if (type == ctTerminalNodes)
        return addTerminals(const_cast<Node &>(*this), children);
    if (type == ctDependingNodes) {
        for (Node *dependent : m_map.dependentsOf(const_cast<Node &>(*this)))
            children.push_back(dependent);
        return;
    }
    const uint64_t mark = ++m_map.listMark;
    for (const Link &link : m_links) {
        const bool isAsked = type == ctReadingChildren ? isReadingLink(link.role)
            : type == ctWritingChildren                ? isWritingLink(link.role)
                                                       : kindOf(link.role) != LinkKind::Other;
        if (isAsked)
            addOnce(children, *link.target, mark);
    }
}

void Node::GetPropertyNames(gcstring_vector &names) const
{
    AutoLock lock(m_map.GetLock());
    names.clear();
    std::map<std::string, bool> sorted;
    for (const char *name : {"DeviceName", "ImposedAccessMode", "IsDeprecated", "IsFeature", "Name", "NameSpace",
                             "NodeType", "Streamable", "Visibility"})
        sorted[name] = true;
    for (const Link &link : m_links)
        sorted[propertyOf(link.role)] = true;
    for (const pugi::xml_node &parent : {m_record.structure, m_record.element}) {
        for (const pugi::xml_node &child : parent.children()) {
            const Tag tag = tagOf(child.name());
            if (tag != Tag::Unknown && !isNodeTag(tag) && tag != Tag::StructEntry && tag != Tag::Extension)
                sorted[child.name()] = true;
        }
    }
    for (const auto &[name, unused] : sorted)
        names.push_back(name.c_str());
}

std::optional<std::string> Node::ownProperty(const std::string &name) const
{
    const auto yesNo = [](bool value) { return std::string(value ? "Yes" : "No"); };
    if (name == "Name")
        return this->name();
    if (name == "NodeType")
        return tagName(tag());
    if (name == "NameSpace")
        return GetNameSpace() == Standard ? "Standard" : "Custom";
    if (name == "Visibility")
        return wordOf(GetVisibility());
    if (name == "ImposedAccessMode")
        return wordOf(m_imposedAccess);
    if (name == "Streamable")
        return yesNo(m_streamable);
    if (name == "IsFeature")
        return yesNo(m_feature);
    if (name == "IsDeprecated")
        return yesNo(m_deprecated);
    if (name == "DeviceName" && !GetDeviceName().empty())
        return GetDeviceName().c_str();
    return std::nullopt;
}

bool Node::GetProperty(const gcstring &name, gcstring &value, gcstring &attribute)
{
    AutoLock lock(m_map.GetLock());
    std::string values, attributes;
    bool isFound = false;
    const std::string key = name.c_str();
    if (const std::optional<std::string> own = ownProperty(key)) {
        values = *own;
        isFound = true;
    }
    const Tag tag = key == "pEnumEntry" ? Tag::EnumEntry : tagOf(key);
    for (const Link &link : m_links) {
        if (isFound && values.empty())
            break;
        if (link.role != tag || key == tagName(Tag::EnumEntry))
            continue;
        join(values, link.target->name());
        const std::string_view extra = link.name.empty() ? link.number : link.name;
        if (!extra.empty())
            join(attributes, extra);
        isFound = true;
    }
    const bool isElement =
        !isFound && hasElement(tag) && tag != Tag::Unknown && !isNodeTag(tag) && tag != Tag::StructEntry;
    for (const pugi::xml_node &parent : {m_record.structure, m_record.element}) {
        for (pugi::xml_node child = isElement ? parent.child(key.c_str()) : pugi::xml_node(); child;
             child = child.next_sibling(key.c_str())) {
            join(values, textOf(child));
            const char *extra =
                child.attribute("Index") ? child.attribute("Index").value() : child.attribute("Name").value();
            if (*extra)
                join(attributes, extra);
            isFound = true;
        }
    }
    value = values.c_str();
    attribute = attributes.c_str();
    return isFound;
}

} // namespace NodeEngine
