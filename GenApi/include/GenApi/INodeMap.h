// SPDX-License-Identifier: MIT
#pragma once

#include <GenApi/Container.h>
#include <GenApi/IPort.h>
#include <GenApi/Synch.h>
#include <GenApi/Types.h>

namespace GENAPI_NAMESPACE {

/// All nodes of a device. Freed with CastToIDestroy(map)->Destroy().
GENICAM_INTERFACE INodeMap
{
    /// Replaces the list by all nodes.
    virtual void GetNodes(NodeList_t & nodes) const = 0;
    /// Null if there is no node of that name; a prefix "Std::" or "Cust::" has to match.
    virtual INode *GetNode(const gcstring &name) const = 0;
    /// Forgets all cached values.
    virtual void InvalidateNodes() const = 0;
    virtual gcstring GetDeviceName() = 0;
    /// Lets the caches of nodes with a polling time age by that many milliseconds.
    virtual void Poll(int64_t elapsedMs) = 0;
    virtual CLock &GetLock() const = 0;
    virtual uint64_t GetNumNodes() const = 0;
    /// Connects the port node of that name; false if there is none. The port must outlive the map.
    virtual bool Connect(IPort * port, const gcstring &portName) const = 0;
    /// Connects the port node "Device".
    virtual bool Connect(IPort * port) const = 0;

    virtual ~INodeMap() { }
};

} // namespace GENAPI_NAMESPACE
