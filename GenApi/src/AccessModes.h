// SPDX-License-Identifier: MIT
#pragma once

#include "Links.h"

#include <GenApi/Types.h>

#include <pugixml.hpp>

namespace NodeEngine {

class NodeGraph;
class NodeLoader;

/// The worse of two modes: NI, NA, then what neither restricts; RO with WO leaves nothing.
GenApi::EAccessMode combined(GenApi::EAccessMode a, GenApi::EAccessMode b);

/// What the nodes leave of a node that it reads its limits, address and the like from.
GenApi::EAccessMode modeOfLinks(const Node &node, const NodeGraph &graph);

/// What opens and closes a node, whatever its kind: pIsImplemented, pIsAvailable, pIsLocked and the imposed mode.
class AccessGates
{
public:
    bool take(Node &owner, Tag tag, pugi::xml_node child, NodeLoader &loader);
    void impose(GenApi::EAccessMode mode) { m_imposed = combined(m_imposed, mode); }
    GenApi::EAccessMode imposed() const { return m_imposed; }

    /// RW, or NI or NA for good.
    GenApi::EAccessMode mode() const;
    /// What the imposed mode and the lock leave of the mode that the node has by itself.
    GenApi::EAccessMode restricted(GenApi::EAccessMode mode) const;
    /// False only if pIsImplemented says so now, or cannot be read.
    bool isImplemented() const;

private:
    Node *m_implemented = nullptr;
    Node *m_available = nullptr;
    Node *m_locked = nullptr;
    GenApi::EAccessMode m_imposed = GenApi::RW;
};

} // namespace NodeEngine
