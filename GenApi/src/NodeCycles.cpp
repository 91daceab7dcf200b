// SPDX-License-Identifier: MIT
#include "NodeCycles.h"

#include "Node.h"

#include <algorithm>
#include <unordered_set>

namespace NodeEngine {

namespace {

bool isRead(const Link &link)
{
    return isNumberLink(link.role);
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
            const Links &links = m_nodes[frame.node]->links();
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
        const std::size_t to = link.target->position();
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
    return CycleSearch(nodes, isRead).run();
}

std::vector<Cycle> valueCycles(const std::vector<Node *> &nodes)
{
    return CycleSearch(nodes, isValueRead).run();
}

std::string wayRound(const Cycle &cycle)
{
    constexpr std::size_t Longest = 20; // names; a whole description may be one cycle
    const std::unordered_set<const Node *> members(cycle.begin(), cycle.end());
    const auto staysInside = [&](const Link &link) { return isRead(link) && members.count(link.target) != 0; };
    std::unordered_set<const Node *> passed;
    std::vector<const Node *> way;
    const Node *node = cycle.back();
    for (; passed.insert(node).second;
         node = std::find_if(node->links().begin(), node->links().end(), staysInside)->target)
        way.push_back(node);
    way.erase(way.begin(), std::find(way.begin(), way.end(), node)); // what only leads to the cycle
    std::string text;
    for (std::size_t i = 0; i < std::min(way.size(), Longest); ++i)
        text += way[i]->name() + " -> ";
    return text + (way.size() > Longest ? "..." : node->name());
}

} // namespace NodeEngine
