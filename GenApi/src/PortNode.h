// SPDX-License-Identifier: MIT
#pragma once

#include "Node.h"
#include "RegisterCache.h"

#include <GenApi/IPort.h>

namespace NodeEngine {

/// A Port of the description: what the host's IPort is connected to.
///
/// Not connected it is NI, a port of chunk data NA. Bytes pass as they are: SwapEndianess is for the host's IPort.
class PortNode : public Node, public IPort
{
public:
    using Node::Node;

    EInterfaceType GetPrincipalInterfaceType() const override { return intfIPort; }

    // IPort
    void Read(void *buffer, int64_t address, int64_t length) override;
    void Write(const void *buffer, int64_t address, int64_t length) override;

    /// Forgets all registers behind the port.
    void forget() override;

    void connect(IPort *port) { m_port = port; }
    RegisterCache &cache() { return m_cache; }

protected:
    bool take(Tag tag, pugi::xml_node child, NodeBuilder &builder) override;
    EAccessMode ownAccessMode() const override;

private:
    IPort &connectedPort() const;

    IPort *m_port = nullptr;
    RegisterCache m_cache;
    bool m_isChunkPort = false;
};

} // namespace NodeEngine
