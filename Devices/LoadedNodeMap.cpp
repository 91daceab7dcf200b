// SPDX-License-Identifier: MIT
#include "Devices/LoadedNodeMap.h"

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

/// The nodes leave it to the port to swap the bytes of its words.
bool wantsSwappedWords(const GenApi::INodeMap &map)
{
    GenApi::INode *port = map.GetNode("Device");
    GenICam::gcstring value;
    GenICam::gcstring attribute;
    return port && port->GetProperty("SwapEndianess", value, attribute) && value == "Yes";
}

} // namespace

LoadedNodeMap::LoadedNodeMap(const QByteArray &description, GenApi::IPort &port) : m_counting(port)
{
    GenApi::CNodeMapFactory factory(contentType(description), description.constData(),
                                    static_cast<std::size_t>(description.size()), GenApi::CacheUsage_Ignore);
    m_map.reset(factory.CreateNodeMap(DeviceName));
    if (wantsSwappedWords(*m_map))
        m_swapping = std::make_unique<AlignedPort>(std::make_unique<SwappedPort>(m_blocks));
    m_map->Connect(m_swapping ? m_swapping.get() : &m_blocks);
}

void LoadedNodeMap::readAhead(const std::atomic_bool &cancelled, const ReadProgress &progress)
{
    ::readAhead(*m_map, m_blocks, cancelled, progress);
}

void LoadedNodeMap::Destroy::operator()(GenApi::INodeMap *finished) const
{
    GenApi::CastToIDestroy(finished)->Destroy();
}
