// SPDX-License-Identifier: MIT
#include "Devices/gentl/ChunkPorts.h"

#include <algorithm>
#include <cstring>

#include "Features/NodeGuard.h"

class ChunkPorts::Port : public GenApi::IPort
{
public:
    Port(GenApi::INode *node, uint64_t id) : m_node(node), m_id(id) { }

    uint64_t id() const { return m_id; }

    GenApi::EAccessMode GetAccessMode() const override { return m_data.isEmpty() ? GenApi::NA : GenApi::RO; }

    void Read(void *buffer, int64_t address, int64_t length) override
    {
        if (address < 0 || length < 0 || address > m_data.size() || length > m_data.size() - address)
            throw OUT_OF_RANGE_EXCEPTION("The last frame has %d bytes of this data, %lld at %lld are asked for",
                                         m_data.size(), static_cast<long long>(length),
                                         static_cast<long long>(address));
        std::memcpy(buffer, m_data.constData() + address, static_cast<std::size_t>(length));
    }

    void Write(const void *, int64_t, int64_t) override { throw ACCESS_EXCEPTION("Data of a frame is not writable"); }

    void adopt(const QByteArray &data)
    {
        m_data = data;
        guardNode([this] { m_node->InvalidateNode(); });
    }

private:
    GenApi::INode *const m_node;
    const uint64_t m_id;
    QByteArray m_data;
};

namespace {

/// The number that the description gives a port of chunk data; none for other nodes and for numbers that change.
std::optional<uint64_t> chunkId(GenApi::INode *node)
{
    GenICam::gcstring value;
    GenICam::gcstring attribute;
    if (node->GetPrincipalInterfaceType() != GenApi::intfIPort || !node->GetProperty("ChunkID", value, attribute))
        return std::nullopt;
    bool isNumber = false;
    const uint64_t id = QByteArray(value.c_str()).trimmed().toULongLong(&isNumber, 16);
    return isNumber ? std::optional(id) : std::nullopt;
}

} // namespace

ChunkPorts::ChunkPorts(GenApi::INodeMap &map)
{
    GenApi::NodeList_t nodes;
    map.GetNodes(nodes);
    for (GenApi::INode *node : nodes) {
        if (const std::optional<uint64_t> id = chunkId(node)) {
            m_ports.push_back(std::make_unique<Port>(node, *id));
            map.Connect(m_ports.back().get(), node->GetName());
        }
    }
}

ChunkPorts::~ChunkPorts() = default;

void ChunkPorts::adopt(const std::vector<FrameChunk> &chunks)
{
    for (const FrameChunk &chunk : chunks) {
        for (const std::unique_ptr<Port> &port : m_ports) {
            if (port->id() == chunk.id)
                port->adopt(chunk.data);
        }
    }
}
