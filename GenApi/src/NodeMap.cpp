// SPDX-License-Identifier: MIT
#include "NodeMap.h"

#include "Dependencies.h"
#include "Node.h"
#include "NodeBuilder.h"
#include "PortNode.h"

#include <GenApi/NodeCallback.h>

namespace NodeEngine {

NodeMap::NodeMap(std::string text, const std::string &deviceName)
    : m_log(deviceName), m_deviceName(deviceName), m_description(std::move(text), m_log)
{
    NodeBuilder(*this).build();
}

NodeMap::~NodeMap() = default;

void NodeMap::GetNodes(NodeList_t &nodes) const
{
    nodes.clear();
    nodes.reserve(m_order.size());
    for (Node *node : m_order)
        nodes.push_back(node);
}

INode *NodeMap::GetNode(const gcstring &name) const
{
    const std::string_view text(name.c_str(), name.size());
    if (Node *node = find(text))
        return node;
    const std::size_t colons = text.find("::");
    if (colons == std::string_view::npos)
        return nullptr;
    Node *node = find(text.substr(colons + 2));
    return node && node->GetName(true) == name ? node : nullptr;
}

Node *NodeMap::find(std::string_view name) const
{
    return m_names.find(name);
}

void NodeMap::InvalidateNodes() const
{
    change([this] {
        for (Node *node : m_order) {
            node->forget();
            collect(*node);
        }
    });
}

void NodeMap::Poll(int64_t elapsedMs)
{
    change([this, elapsedMs] {
        for (Node *node : m_polled) {
            if (node->poll(elapsedMs))
                forgotten(*node);
        }
    });
}

bool NodeMap::Connect(IPort *port, const gcstring &portName) const
{
    auto *node = dynamic_cast<PortNode *>(find({portName.c_str(), portName.size()}));
    if (!node)
        return false;
    change([this, node, port] {
        node->connect(port);
        for (Node *other : m_order)
            other->forget();
    });
    return true;
}

bool NodeMap::Connect(IPort *port) const
{
    return Connect(port, "Device");
}

void NodeMap::change(const std::function<void()> &action) const
{
    Changes changes;
    bool isOutermost = false;
    const auto actAndCollect = [&] {
        AutoLock lock(m_lock);
        isOutermost = m_changes == nullptr;
        if (!isOutermost)
            return action();
        m_changes = &changes;
        ++m_changeMark;
        const auto fireInside = [&] {
            m_changes = nullptr;
            fire(changes, cbPostInsideLock);
        };
        try {
            action();
        } catch (...) {
            fireInside();
            throw;
        }
        fireInside();
    };
    try {
        actAndCollect();
    } catch (...) {
        fire(changes, cbPostOutsideLock);
        throw;
    }
    fire(changes, cbPostOutsideLock);
}

void NodeMap::changed(Node &node) const
{
    node.forgetComputed();
    collect(node);
    for (Node *dependent : dependentsOf(node)) {
        dependent->forget();
        collect(*dependent);
    }
}

void NodeMap::forgotten(Node &node) const
{
    node.forget();
    changed(node);
}

void NodeMap::forgetDependents(Node &node) const
{
    node.forgetComputed();
    for (Node *dependent : dependentsOf(node))
        dependent->forget();
}

const std::vector<Node *> &NodeMap::dependentsOf(Node &node) const
{
    connect();
    return dependentClosure(node);
}

void NodeMap::connect() const
{
    if (!m_connected)
        connectGraph(m_order);
    m_connected = true;
}

void NodeMap::collect(Node &node) const
{
    if (!m_changes || !node.hasCallbacks() || node.changeMark == m_changeMark)
        return;
    node.changeMark = m_changeMark;
    m_changes->push_back(&node);
}

void NodeMap::fire(const Changes &changes, ECallbackType type) const
{
    if (changes.empty())
        return;
    struct Firing
    {
        const NodeMap &map;
        explicit Firing(const NodeMap &firingMap) : map(firingMap)
        {
            AutoLock lock(map.m_lock);
            ++map.m_firing;
        }
        ~Firing()
        {
            AutoLock lock(map.m_lock);
            if (--map.m_firing == 0)
                map.dispose(nullptr);
        }
    } firing(*this);
    for (Node *node : changes)
        node->fire(type);
}

void NodeMap::dispose(CNodeCallback *callback) const
{
    if (callback)
        m_disposed.push_back(callback);
    if (m_firing > 0)
        return;
    for (CNodeCallback *disposed : m_disposed)
        disposed->Destroy();
    m_disposed.clear();
}

} // namespace NodeEngine

namespace GENAPI_NAMESPACE {

IDestroy *CastToIDestroy(INodeMap *nodeMap)
{
    return dynamic_cast<IDestroy *>(nodeMap);
}

} // namespace GENAPI_NAMESPACE
