// SPDX-License-Identifier: MIT
#include "PortNode.h"

#include "NodeBuilder.h"
#include "NodeMap.h"

namespace NodeEngine {

bool PortNode::take(Tag tag, pugi::xml_node child, NodeBuilder &builder)
{
    switch (tag) {
    case Tag::ChunkID:
    case Tag::pChunkID:
        m_isChunkPort = true;
        return true;
    default:
        return Node::take(tag, child, builder);
    }
}

EAccessMode PortNode::ownAccessMode() const
{
    if (m_port)
        return m_port->GetAccessMode();
    return m_isChunkPort ? NA : NI;
}

void PortNode::forget()
{
    Node::forget();
    m_cache.invalidate();
}

IPort &PortNode::connectedPort() const
{
    if (!m_port)
        refuse("Node is not connected.", "Read()");
    return *m_port;
}

void PortNode::Read(void *buffer, int64_t address, int64_t length)
{
    AutoLock lock(m_map.GetLock());
    connectedPort().Read(buffer, address, length);
}

void PortNode::Write(const void *buffer, int64_t address, int64_t length)
{
    AutoLock lock(m_map.GetLock());
    connectedPort().Write(buffer, address, length);
}

} // namespace NodeEngine
