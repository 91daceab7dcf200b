// SPDX-License-Identifier: MIT
#pragma once

#include "Description.h"
#include "LoadLog.h"
#include "NameTable.h"

#include <GenApi/IDestroy.h>
#include <GenApi/INodeMap.h>
#include <GenApi/IPort.h>
#include <GenApi/NodeCallback.h>
#include <GenApi/Synch.h>

#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace NodeEngine {

using namespace GENAPI_NAMESPACE;
using namespace GENICAM_NAMESPACE;

class Node;

/// The nodes of one description. Public calls of the map and its nodes take the map's lock, so they may come from any
/// thread; a port is read and written with the lock held.
class NodeMap : public INodeMap, public IDestroy
{
public:
    /// \param text the description as descriptionText() gives it
    /// \throws GenICam::RuntimeException if it is none
    NodeMap(std::string text, const std::string &deviceName);
    ~NodeMap() override;

    // INodeMap
    void GetNodes(NodeList_t &nodes) const override;
    INode *GetNode(const gcstring &name) const override;
    void InvalidateNodes() const override;
    gcstring GetDeviceName() override { return m_deviceName.c_str(); }
    void Poll(int64_t elapsedMs) override;
    CLock &GetLock() const override { return m_lock; }
    uint64_t GetNumNodes() const override { return m_nodes.size(); }
    bool Connect(IPort *port, const gcstring &portName) const override;
    bool Connect(IPort *port) const override;

    // IDestroy
    void Destroy() override { delete this; }

    const std::string &deviceName() const { return m_deviceName; }
    Node *find(std::string_view name) const;
    const std::vector<Node *> &nodes() const { return m_order; }
    LoadLog &log() { return m_log; }

    /// Runs an action that may change nodes, under the lock, then the callbacks of what it changed. An action that
    /// throws half-way through still tells about what it did.
    void change(const std::function<void()> &action) const;
    /// Within change(): the node itself has a new value. Forgets what was computed from it, collects the callbacks.
    void changed(Node &node) const;
    /// Within change(): the node and what depends on it has to be read again.
    void forgotten(Node &node) const;
    /// What depends on the node is forgotten without telling anyone.
    void forgetDependents(Node &node) const;

    /// Everything that depends on the node, directly or not.
    const std::vector<Node *> &dependentsOf(Node &node) const;
    /// Deletes a callback, after the ones that are running now.
    void dispose(CNodeCallback *callback) const;
    /// Fills the parents and dependents of all nodes, once, when they are asked for first.
    void connect() const;

    /// Steps of Evaluation under way. Guarded by the lock.
    mutable int evaluationDepth = 0;
    /// Steps since the outermost one began.
    mutable int evaluationSteps = 0;
    /// For listing nodes once each; see Node::listMark.
    mutable uint64_t listMark = 0;

private:
    friend class NodeBuilder;

    using Changes = std::vector<Node *>;

    void collect(Node &node) const;
    void fire(const Changes &changes, ECallbackType type) const;

    mutable CLock m_lock;
    LoadLog m_log;
    const std::string m_deviceName;
    Description m_description;
    std::vector<std::unique_ptr<Node>> m_nodes;
    std::vector<Node *> m_order; // as GetNodes() gives them: by first mention
    NameTable m_names;
    std::vector<Node *> m_polled;
    mutable Changes *m_changes = nullptr; // of the action under way
    mutable uint64_t m_changeMark = 0;
    mutable std::vector<CNodeCallback *> m_disposed;
    mutable int m_firing = 0;
    mutable bool m_connected = false;
};

} // namespace NodeEngine
