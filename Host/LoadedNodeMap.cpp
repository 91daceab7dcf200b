// SPDX-License-Identifier: MIT
#include "Host/LoadedNodeMap.h"

#include <GenApi/NodeMapFactory.h>

namespace {

/// The name under which every device's nodes know their device, as by default in the standard.
constexpr char deviceName[] = "Device";

GenApi::EContentType_t contentType(const QByteArray &description)
{
    return description.startsWith("PK") ? GenApi::ContentType_ZippedXml : GenApi::ContentType_Xml;
}

} // namespace

LoadedNodeMap::LoadedNodeMap(const QByteArray &description, GenApi::IPort &port)
{
    GenApi::CNodeMapFactory factory(contentType(description), description.constData(),
                                    static_cast<std::size_t>(description.size()), GenApi::CacheUsage_Ignore);
    map.reset(factory.CreateNodeMap(deviceName));
    map->Connect(&port);
}

void LoadedNodeMap::Destroy::operator()(GenApi::INodeMap *finished) const
{
    GenApi::CastToIDestroy(finished)->Destroy();
}
