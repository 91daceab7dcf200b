// SPDX-License-Identifier: MIT
#include "NodeBuilder.h"

#include "Dependencies.h"
#include "NodeKinds.h"
#include "NodeMap.h"

namespace NodeEngine {

std::string_view textOf(pugi::xml_node element)
{
    std::string_view text = element.text().get();
    const auto isBlank = [](char c) { return c == ' ' || c == '\t' || c == '\r' || c == '\n'; };
    while (!text.empty() && isBlank(text.front()))
        text.remove_prefix(1);
    while (!text.empty() && isBlank(text.back()))
        text.remove_suffix(1);
    return text;
}

void NodeBuilder::build()
{
    const std::vector<NodeRecord> &records = m_map.m_description.nodes();
    m_map.m_nodes.reserve(records.size() * 2);
    m_map.m_order.reserve(records.size() * 2);
    m_map.m_names.reserve(records.size() * 2);
    for (const NodeRecord &record : records)
        create(record);
    // Inner nodes are appended meanwhile; they load themselves.
    const std::size_t count = m_map.m_nodes.size();
    for (std::size_t i = 0; i < count; ++i) {
        mention(*m_map.m_nodes[i]);
        m_map.m_nodes[i]->load(*this);
    }
    breakCycles();
    markFeatures();
}

Node *NodeBuilder::create(const NodeRecord &record)
{
    Node *&known = m_map.m_names[record.name];
    // "A" with an entry "B_C" and "A_B" with an entry "C" make the same name: both entries are there.
    const bool isOtherEntry =
        known && record.tag == Tag::EnumEntry && known->element().parent() != record.element.parent();
    if (known && !isOtherEntry) {
        warn("the name '" + std::string(record.name) + "' is used more than once, the first node has it");
        return nullptr;
    }
    m_map.m_nodes.push_back(makeNode(m_map, record));
    Node *node = m_map.m_nodes.back().get();
    if (!known)
        known = node;
    return node;
}

Node *NodeBuilder::addInner(const NodeRecord &record)
{
    // All entries of a structure share what stands inside of the structure.
    Node *known = m_map.find(record.name);
    if (known && known->element() == record.element)
        return known;
    Node *node = create(record);
    if (node) {
        mention(*node);
        node->load(*this);
    }
    return node;
}

Node *NodeBuilder::addEntry(Node &enumeration, pugi::xml_node element)
{
    Node *entry = addInner(m_map.m_description.entry(enumeration.name(), element));
    if (entry)
        enumeration.addLink({Tag::EnumEntry, entry, {}, {}});
    return entry;
}

Node *NodeBuilder::link(Node &from, Tag role, pugi::xml_node element)
{
    Node *target = resolve(from, role, textOf(element));
    if (!target)
        return nullptr;
    const char *number = element.attribute(role == Tag::pIndex ? "Offset" : "Index").value();
    from.addLink({role, target, element.attribute("Name").value(), number});
    return target;
}

Node *NodeBuilder::link(Node &from, Tag role, std::string_view name)
{
    Node *target = resolve(from, role, name);
    if (target)
        link(from, role, *target);
    return target;
}

namespace {

bool isNumber(const Node &node)
{
    switch (node.tag()) {
    case Tag::Category:
    case Tag::String:
    case Tag::StringReg:
    case Tag::Register:
    case Tag::Port:
    case Tag::Node:
        return false;
    default:
        return true;
    }
}

bool needsNumber(const Node &from, Tag role)
{
    const LinkKind kind = kindOf(role);
    const bool isText = from.tag() == Tag::String && (role == Tag::pValue || role == Tag::pValueCopy);
    return !isText && (kind == LinkKind::Value || kind == LinkKind::Limit || kind == LinkKind::Gate);
}

} // namespace

Node *NodeBuilder::resolve(Node &from, Tag role, std::string_view name)
{
    if (Node *target = m_map.find(name)) {
        mention(*target);
        if (needsNumber(from, role) && !isNumber(*target)) {
            warn("node '" + from.name() + "' links to '" + target->name() + "', which is no number");
            from.setBroken();
        }
        return target;
    }
    warn("node '" + from.name() + "' links to '" + std::string(name) + "', which does not exist");
    const LinkKind kind = kindOf(role);
    if (kind == LinkKind::Value || kind == LinkKind::Limit || kind == LinkKind::Gate || role == Tag::pPort)
        from.setBroken();
    return nullptr;
}

void NodeBuilder::link(Node &from, Tag role, Node &target)
{
    from.addLink({role, &target, {}, {}});
}

void NodeBuilder::mention(Node &node)
{
    if (node.position != Node::Nowhere)
        return;
    node.position = m_map.m_order.size();
    m_map.m_order.push_back(&node);
}

void NodeBuilder::warn(const std::string &cause)
{
    m_map.m_log.warn(cause);
}

void NodeBuilder::addPolled(Node &node)
{
    m_map.m_polled.push_back(&node);
}

void NodeBuilder::breakCycles()
{
    const std::vector<Cycle> cycles = readCycles(m_map.m_order);
    for (const Cycle &cycle : cycles)
        warn("nodes read each other: " + wayRound(cycle));
    if (cycles.empty())
        return;
    for (const Cycle &cycle : valueCycles(m_map.m_order)) {
        for (Node *node : cycle) {
            if (!node->isBroken())
                warn("the value of node '" + node->name() + "' depends on itself");
            node->setBroken();
        }
    }
}

void NodeBuilder::markFeatures()
{
    Node *root = m_map.find("Root");
    if (!root || root->tag() != Tag::Category)
        return;
    std::vector<Node *> reached{root};
    root->setFeature();
    for (std::size_t i = 0; i < reached.size(); ++i) {
        for (const Link &link : reached[i]->links()) {
            if (link.role != Tag::pFeature || link.target->IsFeature())
                continue;
            link.target->setFeature();
            reached.push_back(link.target);
        }
    }
}

} // namespace NodeEngine
