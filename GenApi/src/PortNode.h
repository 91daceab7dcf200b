// SPDX-License-Identifier: MIT
#pragma once

#include "PublicNode.h"
#include "RegisterCache.h"

#include <GenApi/IPort.h>

namespace NodeEngine {

/// A Port of the description: what the host's IPort is connected to.
///
/// Not connected it is NI, a port of chunk data NA. Bytes pass as they are: SwapEndianess is for the host's IPort.
class PortNode : public PublicNode, public GenApi::IPort
{
public:
    using PublicNode::PublicNode;

    GenApi::EInterfaceType GetPrincipalInterfaceType() const override { return GenApi::intfIPort; }

    // IPort
    void Read(void *buffer, int64_t address, int64_t length) override;
    void Write(const void *buffer, int64_t address, int64_t length) override;

    /// Forgets all registers behind the port.
    void forget() override;

    void connect(GenApi::IPort *port) { m_port = port; }
    RegisterCache &cache() { return m_cache; }

protected:
    bool take(Tag tag, pugi::xml_node child, NodeLoader &loader) override;
    GenApi::EAccessMode ownAccessMode() const override;

private:
    GenApi::IPort &connectedPort() const;

    GenApi::IPort *m_port = nullptr;
    RegisterCache m_cache;
    bool m_isChunkPort = false;
};

} // namespace NodeEngine
