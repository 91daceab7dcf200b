// SPDX-License-Identifier: MIT
#pragma once

#include <GenApi/NodeCallback.h>
#include <GenApi/Synch.h>

#include <cstdint>
#include <functional>
#include <vector>

namespace NodeEngine {

class Node;
class NodeCallbacks;
class NodeGraph;

/// What becomes of a change: caches forget, callbacks are told.
class Changes
{
public:
    Changes(GenApi::CLock &lock, NodeGraph &graph) : m_lock(lock), m_graph(graph) { }

    /// Runs an action that may change nodes, under the lock, then the callbacks of what it changed. An action that
    /// throws half-way through still tells about what it did.
    void change(const std::function<void()> &action);

    // Within change().
    /// The node itself has a new value. Forgets what was computed from it, collects the callbacks.
    void changed(Node &node);
    /// The node and what depends on it has to be read again.
    void forgotten(Node &node);
    /// All nodes have to be read again.
    void allForgotten();

    /// What depends on the node is forgotten without telling anyone. The lock is held.
    void forgetDependents(Node &node);
    /// Deletes a callback, after the ones that are running now. The lock is held.
    void dispose(GenApi::CNodeCallback *callback);

private:
    using Collected = std::vector<NodeCallbacks *>;

    void collect(Node &node);
    void fire(const Collected &collected, GenApi::ECallbackType type);
    void destroyDisposed();

    GenApi::CLock &m_lock;
    NodeGraph &m_graph;
    Collected *m_collected = nullptr; // of the action under way
    uint64_t m_number = 0; // of the change, for collecting callbacks once each
    std::vector<GenApi::CNodeCallback *> m_disposed;
    int m_firing = 0;
};

} // namespace NodeEngine
