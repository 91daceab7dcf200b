// SPDX-License-Identifier: MIT
#include "NodeCallbacks.h"

#include <algorithm>
#include <utility>

namespace NodeEngine {

NodeCallbacks::~NodeCallbacks()
{
    if (!m_callbacks)
        return;
    for (GenApi::CNodeCallback *callback : *m_callbacks)
        callback->Destroy();
}

void NodeCallbacks::add(GenApi::CNodeCallback *callback)
{
    if (!m_callbacks)
        m_callbacks = std::make_unique<std::vector<GenApi::CNodeCallback *>>();
    m_callbacks->push_back(callback);
}

bool NodeCallbacks::has(GenApi::CNodeCallback *callback) const
{
    return m_callbacks && std::find(m_callbacks->begin(), m_callbacks->end(), callback) != m_callbacks->end();
}

bool NodeCallbacks::remove(GenApi::CNodeCallback *callback)
{
    if (!has(callback))
        return false;
    m_callbacks->erase(std::find(m_callbacks->begin(), m_callbacks->end(), callback));
    return true;
}

void NodeCallbacks::fire(GenApi::ECallbackType type, GenApi::CLock &lock)
{
    // A callback may register and deregister callbacks, its own too.
    const auto isRegistered = [this, &lock](GenApi::CNodeCallback *callback) {
        const GenApi::AutoLock locked(lock);
        return has(callback);
    };
    std::vector<GenApi::CNodeCallback *> callbacks;
    {
        const GenApi::AutoLock locked(lock);
        callbacks = *m_callbacks;
    }
    for (GenApi::CNodeCallback *callback : callbacks) {
        if (isRegistered(callback))
            (*callback)(type);
    }
}

bool NodeCallbacks::collectFor(uint64_t change)
{
    return std::exchange(m_change, change) != change;
}

} // namespace NodeEngine
