// SPDX-License-Identifier: MIT
#pragma once

#include "Description.h"
#include "NodeBuilder.h"
#include "NodeContext.h"

#include <GenApi/IDestroy.h>
#include <GenApi/IDeviceInfo.h>
#include <GenApi/INodeMap.h>
#include <GenApi/IPort.h>

#include <string>
#include <string_view>

namespace NodeEngine {

/// The nodes of one description. Public calls of the map and its nodes take the map's lock, so they may come from any
/// thread; a port is read and written with the lock held.
class NodeMap : public GenApi::INodeMap, public GenApi::IDeviceInfo, public GenApi::IDestroy
{
public:
    /// \param text the description as descriptionText() gives it
    /// \throws GenICam::RuntimeException if it is none
    NodeMap(std::string text, const std::string &deviceName);

    // INodeMap
    void GetNodes(GenApi::NodeList_t &nodes) const override;
    GenApi::INode *GetNode(const GenICam::gcstring &name) const override;
    void InvalidateNodes() const override;
    GenICam::gcstring GetDeviceName() override { return m_context.deviceName.c_str(); }
    void Poll(int64_t elapsedMs) override;
    GenApi::CLock &GetLock() const override { return m_context.lock; }
    uint64_t GetNumNodes() const override { return m_loaded.nodes.size(); }
    bool Connect(GenApi::IPort *port, const GenICam::gcstring &portName) const override;
    bool Connect(GenApi::IPort *port) const override;

    // IDeviceInfo
    GenICam::gcstring GetModelName() override { return m_description.attribute("ModelName"); }
    GenICam::gcstring GetVendorName() override { return m_description.attribute("VendorName"); }
    GenICam::gcstring GetToolTip() override { return m_description.attribute("ToolTip"); }
    GenICam::gcstring GetStandardNameSpace() override { return m_description.attribute("StandardNameSpace"); }
    void GetGenApiVersion(GenApi::Version_t &version, uint16_t &build) override;
    void GetSchemaVersion(GenApi::Version_t &version) override { version = versionOf("Schema"); }
    void GetDeviceVersion(GenApi::Version_t &version) override { version = versionOf(""); }
    GenICam::gcstring GetProductGuid() override { return m_description.attribute("ProductGuid"); }
    GenICam::gcstring GetVersionGuid() override { return m_description.attribute("VersionGuid"); }

    // IDestroy
    void Destroy() override { delete this; }

private:
    GenApi::Version_t versionOf(const char *prefix) const;
    Node *find(std::string_view name) const { return m_loaded.names.find(name); }

    mutable NodeContext m_context; // the standard calls functions const that change nodes
    Description m_description;
    LoadedNodes m_loaded;
};

} // namespace NodeEngine
