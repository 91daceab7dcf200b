// SPDX-License-Identifier: MIT
#pragma once

#include <memory>

#include <QByteArray>

#include <GenApi/GenApi.h>

/// A node map made from a camera description and connected to a port.
class LoadedNodeMap
{
public:
    /// `description` is GenICam XML, plain or zipped. `port` must outlive this object.
    /// Throws a GenICam exception when the description cannot be loaded.
    LoadedNodeMap(const QByteArray &description, GenApi::IPort &port);

    GenApi::INodeMap *get() const { return m_map.get(); }

private:
    struct Destroy
    {
        void operator()(GenApi::INodeMap *map) const;
    };

    std::unique_ptr<GenApi::IPort> m_swapping; ///< between the nodes and the port, for a port with SwapEndianess
    std::unique_ptr<GenApi::INodeMap, Destroy> m_map;
};
