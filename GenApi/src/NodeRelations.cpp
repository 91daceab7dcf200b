// SPDX-License-Identifier: MIT
#include "NodeRelations.h"

#include <algorithm>

namespace NodeEngine {

namespace {

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
void addTerminals(Node &start, NodeMarks &marks, GenApi::NodeList_t &list)
{
    std::vector<Node *> reached{&start};
    marks.add(start.position());
    for (std::size_t i = 0; i < reached.size(); ++i) {
        bool isEnd = holdsValue(reached[i]->tag());
        for (const Link &link : reached[i]->links()) {
            if (!isWritingLink(link.role))
                continue;
            isEnd = false;
            if (marks.add(link.target->position()))
                reached.push_back(link.target);
        }
        if (isEnd)
            list.push_back(&reached[i]->asNode());
    }
}

bool isAsked(Tag role, GenApi::ELinkType type)
{
    if (type == GenApi::ctReadingChildren)
        return isReadingLink(role);
    return type == GenApi::ctWritingChildren ? isWritingLink(role) : kindOf(role) != LinkKind::Other;
}

void assign(const std::vector<Node *> &nodes, GenApi::NodeList_t &list)
{
    list.clear();
    for (Node *node : nodes)
        list.push_back(&node->asNode());
}

bool selects(const Node &selector, const Node &node)
{
    return std::any_of(selector.links().begin(), selector.links().end(),
                       [&node](const Link &link) { return link.role == Tag::pSelected && link.target == &node; });
}

} // namespace

void listChildren(const Node &node, GenApi::ELinkType type, NodeGraph &graph, GenApi::NodeList_t &children)
{
    children.clear();
    if (type == GenApi::ctParentNodes)
        return listParents(node, graph, children);
    if (type == GenApi::ctTerminalNodes)
        return addTerminals(*graph.nodes()[node.position()], graph.freshMarks(), children);
    if (type == GenApi::ctDependingNodes)
        return assign(graph.dependentsOf(node), children);
    NodeMarks &marks = graph.freshMarks();
    for (const Link &link : node.links()) {
        if (isAsked(link.role, type) && marks.add(link.target->position()))
            children.push_back(&link.target->asNode());
    }
}

void listParents(const Node &node, NodeGraph &graph, GenApi::NodeList_t &parents)
{
    assign(graph.parentsOf(node), parents);
}

void listSelected(const Node &node, NodeGraph &graph, GenApi::FeatureList_t &features)
{
    features.clear();
    NodeMarks &marks = graph.freshMarks();
    marks.add(node.position());
    std::vector<const Node *> reached{&node};
    for (std::size_t i = 0; i < reached.size(); ++i) {
        for (const Link &link : reached[i]->links()) {
            if (link.role != Tag::pSelected || !marks.add(link.target->position()))
                continue;
            reached.push_back(link.target);
            if (link.target->asValue())
                features.push_back(link.target->asValue());
        }
    }
}

void listSelecting(const Node &node, const NodeGraph &graph, GenApi::FeatureList_t &features)
{
    features.clear();
    for (Node *other : graph.nodes()) {
        if (other->asValue() && selects(*other, node))
            features.push_back(other->asValue());
    }
}

} // namespace NodeEngine
