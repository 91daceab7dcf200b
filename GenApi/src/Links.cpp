// SPDX-License-Identifier: MIT
#include "Links.h"

namespace NodeEngine {

LinkKind kindOf(Tag role)
{
    switch (role) {
    case Tag::pValue:
    case Tag::pValueCopy:
    case Tag::pIndex:
    case Tag::pValueIndexed:
    case Tag::pValueDefault:
    case Tag::pVariable:
    case Tag::pAddress:
    case Tag::pLength:
    case Tag::pCommandValue:
        return LinkKind::Value;
    case Tag::pMin:
    case Tag::pMax:
    case Tag::pInc:
        return LinkKind::Limit;
    case Tag::pIsImplemented:
    case Tag::pIsAvailable:
    case Tag::pIsLocked:
        return LinkKind::Gate;
    case Tag::pFeature:
    case Tag::EnumEntry:
    case Tag::pPort:
        return LinkKind::Content;
    case Tag::pInvalidator:
        return LinkKind::Invalidator;
    default:
        return LinkKind::Other;
    }
}

bool isNumberLink(Tag role)
{
    const LinkKind kind = kindOf(role);
    return kind == LinkKind::Value || kind == LinkKind::Limit || kind == LinkKind::Gate;
}

bool isReadingLink(Tag role)
{
    const LinkKind kind = kindOf(role);
    return role != Tag::EnumEntry && kind != LinkKind::Invalidator && kind != LinkKind::Other;
}

bool isWritingLink(Tag role)
{
    switch (role) {
    case Tag::pValue:
    case Tag::pValueCopy:
    case Tag::pValueIndexed:
    case Tag::pValueDefault:
        return true;
    default:
        return false;
    }
}

} // namespace NodeEngine
