// SPDX-License-Identifier: MIT
#include "Changes.h"

#include "Node.h"
#include "NodeGraph.h"

namespace NodeEngine {

void Changes::change(const std::function<void()> &action)
{
    Collected collected;
    const auto actAndCollect = [&] {
        const GenApi::AutoLock lock(m_lock);
        const bool isOutermost = m_collected == nullptr;
        if (!isOutermost)
            return action();
        m_collected = &collected;
        ++m_number;
        const auto fireInside = [&] {
            m_collected = nullptr;
            fire(collected, GenApi::cbPostInsideLock);
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
        fire(collected, GenApi::cbPostOutsideLock);
        throw;
    }
    fire(collected, GenApi::cbPostOutsideLock);
}

void Changes::changed(Node &node)
{
    node.forgetComputed();
    collect(node);
    for (Node *dependent : m_graph.dependentsOf(node)) {
        dependent->forget();
        collect(*dependent);
    }
}

void Changes::forgotten(Node &node)
{
    node.forget();
    changed(node);
}

void Changes::allForgotten()
{
    for (Node *node : m_graph.nodes()) {
        node->forget();
        collect(*node);
    }
}

void Changes::forgetDependents(Node &node)
{
    node.forgetComputed();
    for (Node *dependent : m_graph.dependentsOf(node))
        dependent->forget();
}

void Changes::collect(Node &node)
{
    NodeCallbacks &callbacks = node.callbacks();
    if (m_collected && !callbacks.isEmpty() && callbacks.collectFor(m_number))
        m_collected->push_back(&callbacks);
}

void Changes::fire(const Collected &collected, GenApi::ECallbackType type)
{
    if (collected.empty())
        return;
    struct Firing
    {
        Changes &changes;
        explicit Firing(Changes &firingChanges) : changes(firingChanges)
        {
            const GenApi::AutoLock lock(changes.m_lock);
            ++changes.m_firing;
        }
        ~Firing()
        {
            const GenApi::AutoLock lock(changes.m_lock);
            --changes.m_firing;
            changes.destroyDisposed();
        }
    } const firing(*this);
    for (NodeCallbacks *callbacks : collected)
        callbacks->fire(type, m_lock);
}

void Changes::dispose(GenApi::CNodeCallback *callback)
{
    m_disposed.push_back(callback);
    destroyDisposed();
}

void Changes::destroyDisposed()
{
    if (m_firing > 0)
        return;
    for (GenApi::CNodeCallback *callback : m_disposed)
        callback->Destroy();
    m_disposed.clear();
}

} // namespace NodeEngine
