// SPDX-License-Identifier: MIT
#include "Caching.h"

namespace NodeEngine {

GenApi::ECachingMode cachingModeAlong(const Links &links, GenApi::ECachingMode own)
{
    GenApi::ECachingMode mode = own;
    for (const Link &link : links) {
        if (kindOf(link.role) != LinkKind::Value || link.role == Tag::pCommandValue)
            continue;
        const GenApi::ECachingMode other = link.target->cachingMode();
        if (other == GenApi::NoCache || mode == GenApi::NoCache)
            mode = GenApi::NoCache;
        else if (other == GenApi::WriteAround)
            mode = GenApi::WriteAround;
    }
    return mode;
}

bool isAccessModeCachableAlong(const Links &links, bool isRegister)
{
    bool isCachable = true;
    for (const Link &link : links) {
        const LinkKind kind = kindOf(link.role);
        const bool isValueRead = kind == LinkKind::Gate || (link.role == Tag::pIndex && !isRegister);
        if (kind != LinkKind::Other && kind != LinkKind::Invalidator)
            isCachable = isCachable && link.target->isAccessModeCachable();
        if (isValueRead)
            isCachable = isCachable && link.target->hasCachableValue();
    }
    return isCachable;
}

} // namespace NodeEngine
