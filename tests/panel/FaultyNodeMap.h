// SPDX-License-Identifier: MIT
#pragma once

#include <functional>

#include <GenApi/GenApi.h>

/// A node map with one node, which it has under every name, or none. `fault` runs at every look-up and may throw.
class FaultyNodeMap : public GenApi::INodeMap
{
public:
    explicit FaultyNodeMap(
        GenApi::INode *node, std::function<void()> fault = [] {})
        : m_node(node), m_fault(fault)
    { }

    void GetNodes(GenApi::NodeList_t &nodes) const override
    {
        m_fault();
        nodes.clear();
        nodes.push_back(m_node);
    }
    GenApi::INode *GetNode(const GenICam::gcstring &) const override
    {
        m_fault();
        return m_node;
    }
    void InvalidateNodes() const override { }
    GenICam::gcstring GetDeviceName() override { return "faulty"; }
    void Poll(int64_t) override { }
    GenApi::CLock &GetLock() const override { return m_lock; }
    uint64_t GetNumNodes() const override { return 1; }
    bool Connect(GenApi::IPort *, const GenICam::gcstring &) const override { return false; }
    bool Connect(GenApi::IPort *) const override { return false; }

private:
    GenApi::INode *m_node;
    std::function<void()> m_fault;
    mutable GenApi::CLock m_lock;
};
