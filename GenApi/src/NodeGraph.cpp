// SPDX-License-Identifier: MIT
#include "NodeGraph.h"

#include "Node.h"

#include <algorithm>
#include <unordered_set>

namespace NodeEngine {

namespace {

// More than any feature of a camera has; thousands of selected features must not each walk a whole description.
constexpr std::size_t MostSources = 1000;

void addUnlessLast(std::vector<Node *> &list, Node &node)
{
    // Links of one node come one after the other.
    if (list.empty() || list.back() != &node)
        list.push_back(&node);
}

bool isSelector(const Node &node)
{
    return std::any_of(node.links().begin(), node.links().end(),
                       [](const Link &link) { return link.role == Tag::pSelected; });
}

} // namespace

void NodeGraph::add(Node &node)
{
    node.setPosition(m_nodes.size());
    m_nodes.push_back(&node);
}

NodeMarks &NodeGraph::freshMarks()
{
    m_marks.restart(m_nodes.size());
    return m_marks;
}

void NodeGraph::connect()
{
    if (!m_places.empty())
        return;
    m_places.resize(m_nodes.size());
    for (Node *node : m_nodes) {
        for (const Link &link : node->links()) {
            if (isReadingLink(link.role) || link.role == Tag::EnumEntry)
                addUnlessLast(m_places[link.target->position()].parents, *node);
            if (link.role == Tag::pSelected)
                connectSelected(*node, *link.target);
            else if (kindOf(link.role) != LinkKind::Other)
                addUnlessLast(m_places[link.target->position()].dependents, *node);
        }
    }
}

// A selector switches what the registers behind its features hold, whether or not the description says so.
void NodeGraph::connectSelected(const Node &selector, Node &selected)
{
    std::vector<Node *> &dependents = m_places[selector.position()].dependents;
    addUnlessLast(dependents, selected);
    const std::vector<Node *> own = sourcesOf(*m_nodes[selector.position()]);
    for (Node *source : sourcesOf(selected)) {
        if (source->isRegister() && std::find(own.begin(), own.end(), source) == own.end())
            addUnlessLast(dependents, *source);
    }
}

// What the node's value and limits are read from, the node itself included. The way ends at other selectors: where
// these stand does not change with this one unless it selects them, too.
std::vector<Node *> NodeGraph::sourcesOf(Node &node)
{
    NodeMarks &marks = freshMarks();
    marks.add(node.position());
    std::vector<Node *> sources{&node};
    for (std::size_t i = 0; i < sources.size() && sources.size() < MostSources; ++i) {
        for (const Link &link : sources[i]->links()) {
            const LinkKind kind = kindOf(link.role);
            const bool isSource = kind == LinkKind::Value || kind == LinkKind::Limit;
            if (isSource && marks.add(link.target->position()) && !isSelector(*link.target))
                sources.push_back(link.target);
        }
    }
    return sources;
}

const std::vector<Node *> &NodeGraph::parentsOf(const Node &node)
{
    connect();
    return m_places[node.position()].parents;
}

const std::vector<Node *> &NodeGraph::dependentsOf(const Node &node)
{
    connect();
    Place &place = m_places[node.position()];
    if (place.closure)
        return *place.closure;
    std::vector<Node *> closure;
    std::unordered_set<const Node *> seen;
    const auto addDependents = [&](const Node &of) {
        for (Node *dependent : m_places[of.position()].dependents) {
            if (seen.insert(dependent).second)
                closure.push_back(dependent);
        }
    };
    addDependents(node);
    for (std::size_t i = 0; i < closure.size(); ++i)
        addDependents(*closure[i]);
    closure.shrink_to_fit();
    place.closure = std::make_unique<std::vector<Node *>>(std::move(closure));
    return *place.closure;
}

std::vector<Cycle> NodeGraph::findCycles()
{
    std::vector<Cycle> cycles = readCycles(m_nodes);
    m_cycles.assign(cycles.empty() ? 0 : m_nodes.size(), 0);
    uint32_t number = 0;
    for (const Cycle &cycle : cycles) {
        ++number;
        for (const Node *node : cycle)
            m_cycles[node->position()] = number;
    }
    return cycles;
}

bool NodeGraph::readEachOther(const Node &one, const Node &other) const
{
    if (m_cycles.empty())
        return false;
    const uint32_t cycle = m_cycles[one.position()];
    return cycle != 0 && cycle == m_cycles[other.position()];
}

} // namespace NodeEngine
