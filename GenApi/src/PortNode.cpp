// SPDX-License-Identifier: MIT
#include "PortNode.h"

#include "NodeLoader.h"
#include "Refusals.h"

namespace NodeEngine {

bool PortNode::take(Tag tag, pugi::xml_node child, NodeLoader &loader)
{
    switch (tag) {
    case Tag::ChunkID:
    case Tag::pChunkID:
        m_isChunkPort = true;
        return true;
    default:
        return PublicNode::take(tag, child, loader);
    }
}

GenApi::EAccessMode PortNode::ownAccessMode() const
{
    if (m_port)
        return m_port->GetAccessMode();
    return m_isChunkPort ? GenApi::NA : GenApi::NI;
}

void PortNode::forget()
{
    PublicNode::forget();
    m_cache.invalidate();
}

GenApi::IPort &PortNode::connectedPort() const
{
    if (!m_port)
        refuse(*this, "Node is not connected.", "Read()");
    return *m_port;
}

void PortNode::Read(void *buffer, int64_t address, int64_t length)
{
    const GenApi::AutoLock lock(m_context.lock);
    connectedPort().Read(buffer, address, length);
}

void PortNode::Write(const void *buffer, int64_t address, int64_t length)
{
    const GenApi::AutoLock lock(m_context.lock);
    connectedPort().Write(buffer, address, length);
}

} // namespace NodeEngine
