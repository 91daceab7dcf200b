// SPDX-License-Identifier: MIT
#include "Node.h"

#include <algorithm>

namespace NodeEngine {

Node *Node::linked(Tag role) const
{
    const auto found = std::find_if(m_links.begin(), m_links.end(), [role](const Link &l) { return l.role == role; });
    return found == m_links.end() ? nullptr : found->target;
}

bool Node::isRegister() const
{
    switch (tag()) {
    case Tag::IntReg:
    case Tag::MaskedIntReg:
    case Tag::FloatReg:
    case Tag::StringReg:
    case Tag::Register:
        return true;
    default:
        return false;
    }
}

} // namespace NodeEngine
