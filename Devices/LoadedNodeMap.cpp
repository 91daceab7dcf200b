// SPDX-License-Identifier: MIT
#include "Devices/LoadedNodeMap.h"

#include <algorithm>

#include <GenApi/NodeMapFactory.h>

#include "Devices/AlignedPort.h"
#include "Devices/SwappedPort.h"

namespace {

/// The name under which every device's nodes know their device, as by default in the standard.
constexpr char DeviceName[] = "Device";

GenApi::EContentType_t contentType(const QByteArray &description)
{
    return description.startsWith("PK") ? GenApi::ContentType_ZippedXml : GenApi::ContentType_Xml;
}

bool isRegisterPort(GenApi::INode *node)
{
    GenICam::gcstring value;
    GenICam::gcstring attribute;
    return node && node->GetPrincipalInterfaceType() == GenApi::intfIPort
        && !node->GetProperty("ChunkID", value, attribute) && !node->GetProperty("pChunkID", value, attribute);
}

/// The port node of that name, or the first one that stands for registers; null when there is none.
GenApi::INode *portOf(const GenApi::INodeMap &map, const QByteArray &name)
{
    GenApi::INode *port = map.GetNode(name.constData());
    if (isRegisterPort(port))
        return port;
    GenApi::NodeList_t nodes;
    map.GetNodes(nodes);
    const auto first = std::find_if(nodes.begin(), nodes.end(), isRegisterPort);
    return first == nodes.end() ? nullptr : *first;
}

/// The nodes leave it to the port to swap the bytes of its words.
bool wantsSwappedWords(GenApi::INode *port)
{
    GenICam::gcstring value;
    GenICam::gcstring attribute;
    return port && port->GetProperty("SwapEndianess", value, attribute) && value == "Yes";
}

} // namespace

LoadedNodeMap::LoadedNodeMap(const QByteArray &description, GenApi::IPort &port, const QByteArray &portName)
    : m_counting(port)
{
    GenApi::CNodeMapFactory factory(contentType(description), description.constData(),
                                    static_cast<std::size_t>(description.size()), GenApi::CacheUsage_Ignore);
    m_map.reset(factory.CreateNodeMap(DeviceName));
    GenApi::INode *node = portOf(*m_map, portName);
    if (wantsSwappedWords(node))
        m_swapping = std::make_unique<AlignedPort>(std::make_unique<SwappedPort>(m_blocks));
    if (node)
        m_map->Connect(m_swapping ? m_swapping.get() : &m_blocks, node->GetName());
}

void LoadedNodeMap::readAhead(const std::atomic_bool &cancelled, const ReadProgress &progress,
                              const StackedRead &stacked)
{
    const StackedRead counted = [&](std::vector<RegisterBlock> &blocks) {
        m_counting.countOne();
        return stacked(blocks);
    };
    ::readAhead(*m_map, m_blocks, cancelled, progress, stacked ? counted : StackedRead());
}

void LoadedNodeMap::Destroy::operator()(GenApi::INodeMap *finished) const
{
    GenApi::CastToIDestroy(finished)->Destroy();
}
