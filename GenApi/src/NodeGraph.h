// SPDX-License-Identifier: MIT
#pragma once

#include "NodeCycles.h"

#include <cstdint>
#include <memory>
#include <utility>
#include <vector>

namespace NodeEngine {

/// Tells nodes that were met from those that were not, without allocating each time.
class NodeMarks
{
public:
    void restart(std::size_t nodes)
    {
        m_marks.resize(nodes);
        ++m_current;
    }
    /// False if the node of that position has been added since the last restart.
    bool add(std::size_t position) { return std::exchange(m_marks[position], m_current) != m_current; }

private:
    std::vector<uint64_t> m_marks; // by position
    uint64_t m_current = 0;
};

/// The nodes of a map and what depends on what. Links lead from a node to what it needs; this is the way back.
///
/// The lists are made when they are asked for first, and stay. The map's lock is held.
class NodeGraph
{
public:
    void reserve(std::size_t count) { m_nodes.reserve(count); }
    /// Appends a node and tells it its position.
    void add(Node &node);
    /// By first mention in the description.
    const std::vector<Node *> &nodes() const { return m_nodes; }

    /// The nodes with a link to this one.
    const std::vector<Node *> &parentsOf(const Node &node);
    /// Everything that depends on the node, directly or not, the node itself only if it does so in a cycle.
    const std::vector<Node *> &dependentsOf(const Node &node);

    /// Where nodes read each other; kept for readEachOther().
    std::vector<Cycle> findCycles();
    bool readEachOther(const Node &one, const Node &other) const;

    /// Marks with nothing added. There is one set of them, so the next call ends its use.
    NodeMarks &freshMarks();

private:
    struct Place
    {
        std::vector<Node *> parents;
        std::vector<Node *> dependents; // direct ones
        std::unique_ptr<std::vector<Node *>> closure; // everything that depends on the node
    };

    void connect();
    void connectSelected(const Node &selector, Node &selected);
    std::vector<Node *> sourcesOf(Node &node);

    std::vector<Node *> m_nodes;
    std::vector<Place> m_places; // by position
    std::vector<uint32_t> m_cycles; // by position: the number of the node's cycle or 0; empty if there is no cycle
    NodeMarks m_marks;
};

} // namespace NodeEngine
