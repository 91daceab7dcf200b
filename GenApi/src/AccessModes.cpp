// SPDX-License-Identifier: MIT
#include "AccessModes.h"

#include "Node.h"
#include "NodeGraph.h"
#include "NodeLoader.h"
#include "WordTables.h"

#include <GenApi/GenApi.h>

namespace NodeEngine {

GenApi::EAccessMode combined(GenApi::EAccessMode a, GenApi::EAccessMode b)
{
    if (a == GenApi::NI || b == GenApi::NI)
        return GenApi::NI;
    if (a == GenApi::NA || b == GenApi::NA)
        return GenApi::NA;
    if (a == GenApi::RW)
        return b;
    return b == GenApi::RW || b == a ? a : GenApi::NA;
}

namespace {

// What is left of a node when it has to read another one of that mode.
GenApi::EAccessMode leftBy(GenApi::EAccessMode mode)
{
    if (mode == GenApi::NI)
        return GenApi::NI;
    return GenApi::IsReadable(mode) ? GenApi::RW : GenApi::NA;
}

// Other nodes that must be readable for the node to work, its values and gates aside.
bool isNeeded(Tag role)
{
    switch (role) {
    case Tag::pMin:
    case Tag::pMax:
    case Tag::pInc:
    case Tag::pAddress:
    case Tag::pIndex:
    case Tag::pLength:
    case Tag::pCommandValue:
        return true;
    default:
        return false;
    }
}

GenApi::EAccessMode withoutWriting(GenApi::EAccessMode mode)
{
    if (mode == GenApi::RW)
        return GenApi::RO;
    return mode == GenApi::WO ? GenApi::NA : mode;
}

// What a node leaves that says by its value whether there is another one.
GenApi::EAccessMode leftByGate(Node &gate, GenApi::EAccessMode closed)
{
    const GenApi::EAccessMode mode = leftBy(gate.accessMode());
    return mode == GenApi::RW && gate.integerValue(false) == 0 ? closed : mode;
}

} // namespace

GenApi::EAccessMode modeOfLinks(const Node &node, const NodeGraph &graph)
{
    GenApi::EAccessMode mode = GenApi::RW;
    for (const Link &link : node.links()) {
        // Limits that depend on each other do not restrict each other.
        if (kindOf(link.role) == LinkKind::Limit && graph.readEachOther(node, *link.target))
            continue;
        if (isNeeded(link.role))
            mode = combined(mode, leftBy(link.target->accessMode()));
        else if (link.role == Tag::pVariable && !GenApi::IsAvailable(link.target->accessMode()))
            mode = combined(mode, link.target->accessMode());
    }
    return mode;
}

bool AccessGates::take(Node &owner, Tag tag, pugi::xml_node child, NodeLoader &loader)
{
    switch (tag) {
    case Tag::ImposedAccessMode:
        m_imposed = accessModeOf(textOf(child), GenApi::RW);
        return true;
    case Tag::pIsImplemented:
        m_implemented = loader.link(owner, tag, child);
        return true;
    case Tag::pIsAvailable:
        m_available = loader.link(owner, tag, child);
        return true;
    case Tag::pIsLocked:
        m_locked = loader.link(owner, tag, child);
        return true;
    default:
        return false;
    }
}

GenApi::EAccessMode AccessGates::mode() const
{
    if (m_implemented) {
        const GenApi::EAccessMode mode = leftByGate(*m_implemented, GenApi::NI);
        if (mode != GenApi::RW)
            return mode;
    }
    if (m_available) {
        const GenApi::EAccessMode mode = leftByGate(*m_available, GenApi::NA);
        if (mode != GenApi::RW)
            return mode;
    }
    return m_locked ? leftBy(m_locked->accessMode()) : GenApi::RW;
}

GenApi::EAccessMode AccessGates::restricted(GenApi::EAccessMode mode) const
{
    mode = combined(mode, m_imposed);
    const bool isLocked = GenApi::IsWritable(mode) && m_locked && m_locked->integerValue(false) != 0;
    return isLocked ? withoutWriting(mode) : mode;
}

bool AccessGates::isImplemented() const
{
    return !m_implemented || leftByGate(*m_implemented, GenApi::NI) == GenApi::RW;
}

} // namespace NodeEngine
