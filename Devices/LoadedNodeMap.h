// SPDX-License-Identifier: MIT
#pragma once

#include <memory>

#include <QByteArray>

#include <GenApi/GenApi.h>

#include "Devices/BlockPort.h"
#include "Devices/CountingPort.h"
#include "Devices/ReadAhead.h"

/// A node map made from a camera description and connected to a port.
class LoadedNodeMap
{
public:
    /// `description` is GenICam XML, plain or zipped. `port` must outlive this object.
    /// `portName`: how the description calls the port; if it does not, its first port that is not of chunk data is
    /// taken. Throws a GenICam exception when the description cannot be loaded.
    LoadedNodeMap(const QByteArray &description, GenApi::IPort &port, const QByteArray &portName = "Device");

    GenApi::INodeMap *get() const { return m_map.get(); }
    /// Reads what a panel will want to show into the nodes' caches, see ReadAhead.h.
    void readAhead(const std::atomic_bool &cancelled, const ReadProgress &progress, const StackedRead &stacked = {});
    /// What went through the port. Any thread.
    PortLoad load() const { return m_counting.load(); }

private:
    struct Destroy
    {
        void operator()(GenApi::INodeMap *map) const;
    };

    CountingPort m_counting;
    BlockPort m_blocks{m_counting};
    std::unique_ptr<GenApi::IPort> m_swapping; ///< between the nodes and the port, for a port with SwapEndianess
    std::unique_ptr<GenApi::INodeMap, Destroy> m_map;
};
