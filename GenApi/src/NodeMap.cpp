// SPDX-License-Identifier: MIT
#include "NodeMap.h"

#include "NumberText.h"
#include "PortNode.h"

#include <algorithm>

namespace NodeEngine {

NodeMap::NodeMap(std::string text, const std::string &deviceName)
    : m_context(*this, deviceName), m_description(std::move(text), m_context.log),
      m_loaded(NodeBuilder(m_description, m_context).build())
{ }

void NodeMap::GetNodes(GenApi::NodeList_t &nodes) const
{
    nodes.clear();
    nodes.reserve(m_context.graph.nodes().size());
    for (Node *node : m_context.graph.nodes())
        nodes.push_back(&node->asNode());
}

GenApi::INode *NodeMap::GetNode(const GenICam::gcstring &name) const
{
    const std::string_view text(name.c_str(), name.size());
    if (Node *node = find(text))
        return &node->asNode();
    const std::size_t colons = text.find("::");
    if (colons == std::string_view::npos)
        return nullptr;
    Node *node = find(text.substr(colons + 2));
    return node && node->asNode().GetName(true) == name ? &node->asNode() : nullptr;
}

void NodeMap::InvalidateNodes() const
{
    m_context.changes.change([this] { m_context.changes.allForgotten(); });
}

void NodeMap::Poll(int64_t elapsedMs)
{
    m_context.changes.change([this, elapsedMs] {
        for (PolledNode &polled : m_loaded.polled) {
            polled.age += std::max<int64_t>(elapsedMs, 0);
            if (polled.age < polled.period)
                continue;
            polled.age = 0;
            m_context.changes.forgotten(*polled.node);
        }
    });
}

bool NodeMap::Connect(GenApi::IPort *port, const GenICam::gcstring &portName) const
{
    auto *node = dynamic_cast<PortNode *>(find({portName.c_str(), portName.size()}));
    if (!node)
        return false;
    m_context.changes.change([this, node, port] {
        node->connect(port);
        for (Node *other : m_context.graph.nodes())
            other->forget();
    });
    return true;
}

void NodeMap::GetGenApiVersion(GenApi::Version_t &version, uint16_t &build)
{
    version = {3, 4, 0};
    build = 0;
}

GenApi::Version_t NodeMap::versionOf(const char *prefix) const
{
    const auto part = [&](const char *name) {
        const std::string attribute = prefix + std::string(name);
        return static_cast<uint16_t>(integerOfDescription(m_description.attribute(attribute.c_str())).value_or(0));
    };
    return {part("MajorVersion"), part("MinorVersion"), part("SubMinorVersion")};
}

bool NodeMap::Connect(GenApi::IPort *port) const
{
    return Connect(port, "Device");
}

} // namespace NodeEngine

namespace GENAPI_NAMESPACE {

IDestroy *CastToIDestroy(INodeMap *nodeMap)
{
    return dynamic_cast<IDestroy *>(nodeMap);
}

} // namespace GENAPI_NAMESPACE
