// SPDX-License-Identifier: MIT
#pragma once

#include <memory>
#include <vector>

#include <GenApi/GenApi.h>

#include "Devices/gentl/DeliveredFrame.h"

/// The ports of a node map that stand for data which a camera adds to its frames. They have no value before the first
/// one.
class ChunkPorts
{
public:
    /// Connects them. `map` must outlive this.
    explicit ChunkPorts(GenApi::INodeMap &map);
    ~ChunkPorts();

    ChunkPorts(const ChunkPorts &) = delete;
    ChunkPorts &operator=(const ChunkPorts &) = delete;

    bool isEmpty() const { return m_ports.empty(); }
    /// What came with a frame becomes what the nodes hold. On the thread that uses the nodes.
    void adopt(const std::vector<FrameChunk> &chunks);

private:
    class Port;
    std::vector<std::unique_ptr<Port>> m_ports;
};
