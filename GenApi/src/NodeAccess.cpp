// SPDX-License-Identifier: MIT
// Access modes and caching modes: what a node may do, and how long what is known of it stays true.
#include "Dependencies.h"
#include "Node.h"
#include "NodeMap.h"

#include <GenApi/GenApi.h>

#include <cstdarg>
#include <cstdio>

namespace NodeEngine {

EAccessMode combined(EAccessMode a, EAccessMode b)
{
    if (a == NI || b == NI)
        return NI;
    if (a == NA || b == NA)
        return NA;
    if (a == RW)
        return b;
    return b == RW || b == a ? a : NA;
}

namespace {

// What is left of a node when it has to read another one of that mode.
EAccessMode leftBy(EAccessMode mode)
{
    if (mode == NI)
        return NI;
    return IsReadable(mode) ? RW : NA;
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

EAccessMode withoutWriting(EAccessMode mode)
{
    if (mode == RW)
        return RO;
    return mode == WO ? NA : mode;
}

} // namespace

EAccessMode Node::GetAccessMode() const
{
    AutoLock lock(m_map.GetLock());
    return accessMode();
}

void Node::ImposeAccessMode(EAccessMode mode)
{
    m_map.change([this, mode] {
        m_imposedAccess = combined(m_imposedAccess, mode);
        m_map.changed(*this);
    });
}

EAccessMode Node::accessMode() const
{
    if (m_access != _UndefinedAccesMode)
        return m_access;
    const EAccessMode mode = computedAccessMode();
    if (isAccessModeCachable())
        m_access = mode;
    return mode;
}

EAccessMode Node::computedAccessMode() const
{
    if (m_broken)
        return NA;
    const Evaluation step(*this, Evaluation::Access);
    if (!step.isEntered())
        return RW; // modes that depend on each other do not restrict each other
    EAccessMode mode = modeOfGates();
    if (mode != RW)
        return isOwnImplemented() ? mode : NI;
    mode = combined(modeOfLinks(), ownAccessMode());
    if (m_broken) // only now found out
        return NA;
    mode = combined(mode, m_imposedAccess);
    const bool isLocked = IsWritable(mode) && m_locked && m_locked->integerValue(false) != 0;
    return isLocked ? withoutWriting(mode) : mode;
}

EAccessMode Node::baseAccessMode() const
{
    if (m_broken)
        return NA;
    const Evaluation step(*this, Evaluation::Access);
    if (!step.isEntered())
        return RW;
    if (m_implemented && (!IsReadable(m_implemented->accessMode()) || m_implemented->integerValue(false) == 0))
        return NI;
    return combined(ownBaseAccessMode(), m_imposedAccess);
}

// RW, or NI or NA for good.
EAccessMode Node::modeOfGates() const
{
    if (m_implemented) {
        const EAccessMode mode = leftBy(m_implemented->accessMode());
        if (mode != RW)
            return mode;
        if (m_implemented->integerValue(false) == 0)
            return NI;
    }
    if (m_available) {
        const EAccessMode mode = leftBy(m_available->accessMode());
        if (mode != RW)
            return mode;
        if (m_available->integerValue(false) == 0)
            return NA;
    }
    return m_locked ? leftBy(m_locked->accessMode()) : RW;
}

EAccessMode Node::modeOfLinks() const
{
    EAccessMode mode = RW;
    for (const Link &link : m_links) {
        // Limits that depend on each other do not restrict each other.
        if (cycle != 0 && link.target->cycle == cycle && kindOf(link.role) == LinkKind::Limit)
            continue;
        if (isNeeded(link.role))
            mode = combined(mode, leftBy(link.target->accessMode()));
        else if (link.role == Tag::pVariable && !IsAvailable(link.target->accessMode()))
            mode = combined(mode, link.target->accessMode());
    }
    return mode;
}

EYesNo Node::IsAccessModeCacheable() const
{
    AutoLock lock(m_map.GetLock());
    return isAccessModeCachable() ? Yes : No;
}

bool Node::isAccessModeCachable() const
{
    if (m_accessCachable >= 0)
        return m_accessCachable != 0;
    const Evaluation step(*this, Evaluation::Look);
    if (!step.isEntered())
        return true;
    bool cachable = true;
    for (const Link &link : m_links) {
        const LinkKind kind = kindOf(link.role);
        const bool isValueRead = kind == LinkKind::Gate || (link.role == Tag::pIndex && !isRegister());
        if (kind != LinkKind::Other && kind != LinkKind::Invalidator)
            cachable = cachable && link.target->isAccessModeCachable();
        if (isValueRead)
            cachable = cachable && link.target->hasCachableValue();
    }
    m_accessCachable = cachable;
    return cachable;
}

ECachingMode Node::GetCachingMode() const
{
    AutoLock lock(m_map.GetLock());
    return cachingMode();
}

ECachingMode Node::cachingMode() const
{
    if (m_caching != _UndefinedCachingMode)
        return m_caching;
    const Evaluation step(*this, Evaluation::Caching);
    if (!step.isEntered())
        return NoCache;
    ECachingMode mode = ownCachingMode();
    for (const Link &link : m_links) {
        if (kindOf(link.role) != LinkKind::Value || link.role == Tag::pCommandValue)
            continue;
        const ECachingMode other = link.target->cachingMode();
        if (other == NoCache || mode == NoCache)
            mode = NoCache;
        else if (other == WriteAround)
            mode = WriteAround;
    }
    m_caching = mode;
    return mode;
}

void Node::requireReadable(const char *call) const
{
    if (!IsReadable(accessMode()))
        refuse("Node is not readable.", call);
}

void Node::requireWritable(bool verify, const char *call) const
{
    if (!IsWritable(verify ? accessMode() : baseAccessMode()))
        refuse("Node is not writable.", call);
}

void Node::requireAvailable() const
{
    if (!IsAvailable(accessMode()))
        throw AccessException("Node is not available.", __FILE__, __LINE__, "", name().c_str(), "AccessException");
}

void Node::refuse(const char *description, const char *call) const
{
    throw AccessException(description, __FILE__, __LINE__, (name() + "." + call).c_str(), name().c_str(),
                          "AccessException");
}

void Node::refuseRange(const char *call, const char *format, ...) const
{
    char description[1024];
    va_list arguments;
    va_start(arguments, format);
    std::vsnprintf(description, sizeof description, format, arguments);
    va_end(arguments);
    throw OutOfRangeException(description, __FILE__, __LINE__, (name() + "." + call).c_str(), name().c_str(),
                              "OutOfRangeException");
}

} // namespace NodeEngine
