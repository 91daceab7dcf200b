// SPDX-License-Identifier: MIT
#include "NodeBuilder.h"

#include "Node.h"
#include "NodeKinds.h"

namespace NodeEngine {

LoadedNodes NodeBuilder::build()
{
    const std::vector<NodeRecord> &records = m_description.nodes();
    m_loaded.nodes.reserve(records.size() * 2);
    m_context.graph.reserve(records.size() * 2);
    m_loaded.names.reserve(records.size() * 2);
    for (const NodeRecord &record : records)
        create(record);
    // Inner nodes are appended meanwhile; they load themselves.
    const std::size_t count = m_loaded.nodes.size();
    for (std::size_t i = 0; i < count; ++i) {
        mention(*m_loaded.nodes[i]);
        m_loaded.nodes[i]->load(*this);
    }
    breakCycles();
    markFeatures();
    return std::move(m_loaded);
}

Node *NodeBuilder::create(const NodeRecord &record)
{
    Node *&known = m_loaded.names[record.name];
    // "A" with an entry "B_C" and "A_B" with an entry "C" make the same name: both entries are there.
    const bool isOtherEntry =
        known && record.tag == Tag::EnumEntry && known->description().element().parent() != record.element.parent();
    if (known && !isOtherEntry) {
        warn("the name '" + std::string(record.name) + "' is used more than once, the first node has it");
        return nullptr;
    }
    m_loaded.nodes.push_back(makeNode(m_context, record));
    Node *node = m_loaded.nodes.back().get();
    if (!known)
        known = node;
    return node;
}

Node *NodeBuilder::addInner(const NodeRecord &record)
{
    // All entries of a structure share what stands inside of the structure.
    Node *known = m_loaded.names.find(record.name);
    if (known && known->description().element() == record.element)
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
    Node *entry = addInner(m_description.entry(enumeration.name(), element));
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
    const bool isText = from.tag() == Tag::String && (role == Tag::pValue || role == Tag::pValueCopy);
    return !isText && isNumberLink(role);
}

} // namespace

Node *NodeBuilder::resolve(Node &from, Tag role, std::string_view name)
{
    if (Node *target = m_loaded.names.find(name)) {
        mention(*target);
        if (needsNumber(from, role) && !isNumber(*target)) {
            warn("node '" + from.name() + "' links to '" + target->name() + "', which is no number");
            from.setBroken();
        }
        return target;
    }
    warn("node '" + from.name() + "' links to '" + std::string(name) + "', which does not exist");
    if (isNumberLink(role) || role == Tag::pPort)
        from.setBroken();
    return nullptr;
}

void NodeBuilder::link(Node &from, Tag role, Node &target)
{
    from.addLink({role, &target, {}, {}});
}

void NodeBuilder::mention(Node &node)
{
    if (node.position() == Node::Nowhere)
        m_context.graph.add(node);
}

void NodeBuilder::warn(const std::string &cause)
{
    m_context.log.warn(cause);
}

void NodeBuilder::addPolled(Node &node, int64_t period)
{
    m_loaded.polled.push_back({&node, period});
}

void NodeBuilder::breakCycles()
{
    const std::vector<Cycle> cycles = m_context.graph.findCycles();
    for (const Cycle &cycle : cycles)
        warn("nodes read each other: " + wayRound(cycle));
    if (cycles.empty())
        return;
    for (const Cycle &cycle : valueCycles(m_context.graph.nodes())) {
        for (Node *node : cycle) {
            if (!node->isBroken())
                warn("the value of node '" + node->name() + "' depends on itself");
            node->setBroken();
        }
    }
}

void NodeBuilder::markFeatures()
{
    Node *root = m_loaded.names.find("Root");
    if (!root || root->tag() != Tag::Category)
        return;
    std::vector<Node *> reached{root};
    root->setFeature();
    for (std::size_t i = 0; i < reached.size(); ++i) {
        for (const Link &link : reached[i]->links()) {
            if (link.role != Tag::pFeature || link.target->description().isFeature())
                continue;
            link.target->setFeature();
            reached.push_back(link.target);
        }
    }
}

} // namespace NodeEngine
