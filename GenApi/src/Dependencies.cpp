// SPDX-License-Identifier: MIT
#include "Dependencies.h"

#include "NodeMap.h"

#include <algorithm>
#include <unordered_set>

namespace NodeEngine {

LinkKind kindOf(Tag role)
{
    switch (role) {
    case Tag::pValue:
    case Tag::pValueCopy:
    case Tag::pIndex:
    case Tag::pValueIndexed:
    case Tag::pValueDefault:
    case Tag::pVariable:
    case Tag::pAddress:
    case Tag::pLength:
    case Tag::pCommandValue:
        return LinkKind::Value;
    case Tag::pMin:
    case Tag::pMax:
    case Tag::pInc:
        return LinkKind::Limit;
    case Tag::pIsImplemented:
    case Tag::pIsAvailable:
    case Tag::pIsLocked:
        return LinkKind::Gate;
    case Tag::pFeature:
    case Tag::EnumEntry:
    case Tag::pPort:
        return LinkKind::Content;
    case Tag::pInvalidator:
        return LinkKind::Invalidator;
    default:
        return LinkKind::Other;
    }
}

bool isReadingLink(Tag role)
{
    const LinkKind kind = kindOf(role);
    return role != Tag::EnumEntry && kind != LinkKind::Invalidator && kind != LinkKind::Other;
}

namespace {

// More than any feature of a camera has; thousands of selected features must not each walk a whole description.
constexpr std::size_t MostSources = 1000;

// What the node's value and limits are read from, the node itself included.
std::vector<Node *> sourcesOf(Node &node)
{
    const uint64_t mark = ++node.map().listMark;
    node.listMark = mark;
    std::vector<Node *> sources{&node};
    for (std::size_t i = 0; i < sources.size() && sources.size() < MostSources; ++i) {
        for (const Link &link : sources[i]->links()) {
            const LinkKind kind = kindOf(link.role);
            if ((kind != LinkKind::Value && kind != LinkKind::Limit) || link.target->listMark == mark)
                continue;
            link.target->listMark = mark;
            sources.push_back(link.target);
        }
    }
    return sources;
}

void add(std::vector<Node *> &list, Node *node)
{
    // Links of one node come one after the other.
    if (list.empty() || list.back() != node)
        list.push_back(node);
}

// A selector switches what the registers behind its features hold, whether or not the description says so.
void connectSelected(Node &selector, Node &selected)
{
    add(selector.dependents, &selected);
    const std::vector<Node *> own = sourcesOf(selector);
    for (Node *source : sourcesOf(selected)) {
        if (source->isRegister() && std::find(own.begin(), own.end(), source) == own.end())
            add(selector.dependents, source);
    }
}

} // namespace

void connectGraph(const std::vector<Node *> &nodes)
{
    for (Node *node : nodes) {
        for (const Link &link : node->links()) {
            if (isReadingLink(link.role) || link.role == Tag::EnumEntry)
                add(link.target->parents, node);
            if (link.role == Tag::pSelected)
                connectSelected(*node, *link.target);
            else if (kindOf(link.role) != LinkKind::Other)
                add(link.target->dependents, node);
        }
    }
}

const std::vector<Node *> &dependentClosure(Node &node)
{
    if (node.dependentClosure)
        return *node.dependentClosure;
    auto closure = std::make_unique<std::vector<Node *>>();
    std::unordered_set<const Node *> seen;
    const auto addDependents = [&](const Node &of) {
        for (Node *dependent : of.dependents) {
            if (seen.insert(dependent).second)
                closure->push_back(dependent);
        }
    };
    addDependents(node);
    for (std::size_t i = 0; i < closure->size(); ++i)
        addDependents(*(*closure)[i]);
    closure->shrink_to_fit();
    node.dependentClosure = std::move(closure);
    return *node.dependentClosure;
}

namespace {

bool isRead(const Link &link)
{
    const LinkKind kind = kindOf(link.role);
    return kind == LinkKind::Value || kind == LinkKind::Limit || kind == LinkKind::Gate;
}

// A variable like "X.Max" reads no value.
bool isValueRead(const Link &link)
{
    const std::size_t dot = link.name.rfind('.');
    const bool isProperty = dot != std::string_view::npos && link.name.substr(dot) != ".Value";
    return kindOf(link.role) == LinkKind::Value && !(link.role == Tag::pVariable && isProperty);
}

// Tarjan's strongly connected components, with its own stack.
class CycleSearch
{
public:
    using Follows = bool (*)(const Link &);

    CycleSearch(const std::vector<Node *> &nodes, Follows follows)
        : m_nodes(nodes), m_follows(follows), m_states(nodes.size())
    { }

    std::vector<Cycle> run()
    {
        for (std::size_t i = 0; i < m_nodes.size(); ++i) {
            if (m_states[i].order == 0)
                visit(i);
        }
        return std::move(m_cycles);
    }

private:
    struct State
    {
        std::size_t order = 0;
        std::size_t lowest = 0;
        bool isOnPath = false;
        bool readsItself = false;
    };
    struct Frame
    {
        std::size_t node;
        std::size_t link;
    };

    void enter(std::size_t node)
    {
        m_states[node] = {++m_visited, m_visited, true, false};
        m_path.push_back(node);
        m_frames.push_back({node, 0});
    }

    void visit(std::size_t start)
    {
        enter(start);
        while (!m_frames.empty()) {
            Frame &frame = m_frames.back();
            const std::vector<Link> &links = m_nodes[frame.node]->links();
            if (frame.link == links.size())
                leave();
            else
                follow(frame.node, links[frame.link++]);
        }
    }

    void follow(std::size_t from, const Link &link)
    {
        if (!m_follows(link))
            return;
        const std::size_t to = link.target->position;
        if (to == from)
            m_states[from].readsItself = true;
        else if (m_states[to].order == 0)
            enter(to);
        else if (m_states[to].isOnPath)
            m_states[from].lowest = std::min(m_states[from].lowest, m_states[to].order);
    }

    void leave()
    {
        const std::size_t node = m_frames.back().node;
        m_frames.pop_back();
        if (!m_frames.empty()) {
            State &parent = m_states[m_frames.back().node];
            parent.lowest = std::min(parent.lowest, m_states[node].lowest);
        }
        if (m_states[node].lowest != m_states[node].order)
            return;
        const bool isCycle = m_path.back() != node || m_states[node].readsItself;
        if (isCycle)
            m_cycles.emplace_back();
        std::size_t member = node;
        do {
            member = m_path.back();
            m_path.pop_back();
            m_states[member].isOnPath = false;
            if (isCycle)
                m_cycles.back().push_back(m_nodes[member]);
        } while (member != node);
    }

    const std::vector<Node *> &m_nodes;
    const Follows m_follows;
    std::vector<State> m_states;
    std::vector<Frame> m_frames;
    std::vector<std::size_t> m_path;
    std::vector<Cycle> m_cycles;
    std::size_t m_visited = 0;
};

} // namespace

std::vector<Cycle> readCycles(const std::vector<Node *> &nodes)
{
    std::vector<Cycle> cycles = CycleSearch(nodes, isRead).run();
    uint32_t number = 0;
    for (const Cycle &cycle : cycles) {
        ++number;
        for (Node *node : cycle)
            node->cycle = number;
    }
    return cycles;
}

std::vector<Cycle> valueCycles(const std::vector<Node *> &nodes)
{
    return CycleSearch(nodes, isValueRead).run();
}

std::string wayRound(const Cycle &cycle)
{
    constexpr std::size_t Longest = 20; // names; a whole description may be one cycle
    const Node *node = cycle.back();
    const auto staysInside = [node](const Link &link) { return isRead(link) && link.target->cycle == node->cycle; };
    const uint64_t mark = ++node->map().listMark;
    std::vector<const Node *> way;
    for (; node->listMark != mark;
         node = std::find_if(node->links().begin(), node->links().end(), staysInside)->target) {
        node->listMark = mark;
        way.push_back(node);
    }
    way.erase(way.begin(), std::find(way.begin(), way.end(), node)); // what only leads to the cycle
    std::string text;
    for (std::size_t i = 0; i < std::min(way.size(), Longest); ++i)
        text += way[i]->name() + " -> ";
    return text + (way.size() > Longest ? "..." : node->name());
}

} // namespace NodeEngine
