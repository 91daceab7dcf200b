// SPDX-License-Identifier: MIT
#pragma once

#include <GenApi/NodeCallback.h>
#include <GenApi/Synch.h>

#include <memory>
#include <vector>

namespace NodeEngine {

/// The callbacks of one node, which it owns. The map's lock is held unless said otherwise.
class NodeCallbacks
{
public:
    NodeCallbacks() = default;
    ~NodeCallbacks();
    NodeCallbacks(const NodeCallbacks &) = delete;
    NodeCallbacks &operator=(const NodeCallbacks &) = delete;

    bool isEmpty() const { return !m_callbacks || m_callbacks->empty(); }
    void add(GenApi::CNodeCallback *callback);
    /// Gives the callback up to the caller; false if it is not here.
    bool remove(GenApi::CNodeCallback *callback);
    /// Runs the callbacks of that type. Takes the lock itself, to see which there are, and calls them without it.
    void fire(GenApi::ECallbackType type, GenApi::CLock &lock);

    /// Puts the callbacks on the list of a change; false if they are on it already.
    bool collectFor(uint64_t change);

private:
    bool has(GenApi::CNodeCallback *callback) const;

    std::unique_ptr<std::vector<GenApi::CNodeCallback *>> m_callbacks; // few nodes have any
    uint64_t m_change = 0; // the last one they were collected for
};

} // namespace NodeEngine
