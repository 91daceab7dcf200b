// SPDX-License-Identifier: MIT
#include "Devices/NeededRegisters.h"

#include <algorithm>
#include <initializer_list>

#include "Devices/SilenceGuard.h"

namespace {

constexpr int64_t LongestRegister = 512; // bytes; longer ones are read when somebody looks at them
constexpr char DevicePort[] = "Device";
constexpr const char *Gates[] = {"pIsImplemented", "pIsAvailable"};
constexpr char Lock[] = "pIsLocked";

GenApi::NodeList_t childrenOf(const GenApi::INode *node)
{
    GenApi::NodeList_t children;
    node->GetChildren(children, GenApi::ctReadingChildren);
    return children;
}

bool isPort(const GenApi::INode *node)
{
    return node->GetPrincipalInterfaceType() == GenApi::intfIPort;
}

/// A register behind another port, of chunks for instance, has the addresses of another memory.
bool isOfDevice(const GenApi::INode *node)
{
    for (const GenApi::INode *child : childrenOf(node)) {
        if (isPort(child))
            return child->GetName() == DevicePort;
    }
    return false;
}

bool isNeededRegister(GenApi::INode *node)
{
    return GenApi::CRegisterPtr(node).IsValid() && node->GetCachingMode() != GenApi::NoCache && isOfDevice(node);
}

/// The node that a link names; null without one.
GenApi::INode *linked(GenApi::INode *node, const char *link)
{
    GenICam::gcstring name;
    GenICam::gcstring attribute;
    return node->GetProperty(link, name, attribute) ? node->GetNodeMap()->GetNode(name) : nullptr;
}

GenApi::NodeList_t linkedAll(GenApi::INode *node, std::initializer_list<const char *> links)
{
    GenApi::NodeList_t nodes;
    for (const char *link : links) {
        if (GenApi::INode *other = linked(node, link))
            nodes.push_back(other);
    }
    return nodes;
}

GenApi::NodeList_t entriesOf(GenApi::INode *node)
{
    GenApi::NodeList_t entries;
    if (const GenApi::CEnumerationPtr enumeration(node); enumeration.IsValid())
        enumeration->GetEntries(entries);
    return entries;
}

bool isZero(GenApi::INode *gate)
{
    if (const GenApi::CIntegerPtr integer(gate); integer.IsValid())
        return integer->GetValue() == 0;
    if (const GenApi::CBooleanPtr boolean(gate); boolean.IsValid())
        return !boolean->GetValue();
    if (const GenApi::CEnumerationPtr enumeration(gate); enumeration.IsValid())
        return enumeration->GetIntValue() == 0;
    const GenApi::CFloatPtr number(gate);
    return number.IsValid() && number->GetValue() == 0;
}

/// One of the gates that say whether there is such a node is closed, or cannot be read.
bool isShut(GenApi::INode *node)
{
    for (const char *link : Gates) {
        GenApi::INode *gate = linked(node, link);
        if (gate && (!GenApi::IsReadable(gate) || isZero(gate)))
            return true;
    }
    return false;
}

/// By the description alone: locks do not matter here, so they need not have been read.
bool isReadableEver(GenApi::INode *node)
{
    for (const char *mode : {"AccessMode", "ImposedAccessMode"}) {
        GenICam::gcstring value;
        GenICam::gcstring attribute;
        if (node->GetProperty(mode, value, attribute) && (value == "WO" || value == "NA" || value == "NI"))
            return false;
    }
    return true;
}

bool tellsAccess(GenApi::INode *node)
{
    GenICam::gcstring value;
    GenICam::gcstring attribute;
    return node->GetProperty("AccessMode", value, attribute);
}

/// What the value depends on.
GenApi::NodeList_t childrenWithoutLock(GenApi::INode *node)
{
    GenApi::INode *const lock = linked(node, Lock);
    GenApi::NodeList_t children;
    for (GenApi::INode *child : childrenOf(node)) {
        if (child != lock)
            children.push_back(child);
    }
    return children;
}

bool isCategory(const GenApi::INode *node)
{
    return node->GetPrincipalInterfaceType() == GenApi::intfICategory;
}

bool isCommand(const GenApi::INode *node)
{
    return node->GetPrincipalInterfaceType() == GenApi::intfICommand;
}

} // namespace

NeededRegisters::NeededRegisters(GenApi::INodeMap &map)
{
    GenApi::NodeList_t nodes;
    map.GetNodes(nodes);
    std::unordered_set<GenApi::INode *> seen;
    for (GenApi::INode *node : nodes) {
        if (!node->IsFeature() || node->GetVisibility() > GenApi::Guru)
            continue;
        m_features.push_back(node);
        countBelow(node, seen);
    }
}

void NeededRegisters::countBelow(GenApi::INode *node, std::unordered_set<GenApi::INode *> &seen)
{
    if (isCategory(node) || !seen.insert(node).second)
        return;
    m_mostCount += isNeededRegister(node) ? 1 : 0;
    for (GenApi::INode *child : childrenOf(node))
        countBelow(child, seen);
}

std::vector<NeededRegister> NeededRegisters::nextRound()
{
    m_round.clear();
    for (Marks &marks : m_marks)
        marks.clear();
    for (GenApi::INode *feature : m_features)
        isKnown(feature, Subject::Value);
    return m_round;
}

bool NeededRegisters::isKnown(GenApi::INode *node, Subject subject)
{
    if (isPort(node) || m_known[int(subject)].count(node))
        return true;
    Marks &marks = m_marks[int(subject)];
    if (const auto [place, isNew] = marks.emplace(node, true); !isNew)
        return place->second; // of nodes that depend on each other, the first one waits for the others
    bool known = true; // what fails stays unread
    guardSilence([&] { known = subject == Subject::Access ? isAccessKnown(node) : isValueKnown(node); });
    marks[node] = known;
    if (known)
        m_known[int(subject)].insert(node);
    return known;
}

bool NeededRegisters::areKnown(const GenApi::NodeList_t &nodes, Subject subject)
{
    bool known = true;
    for (GenApi::INode *node : nodes)
        known = isKnown(node, subject) && known;
    return known;
}

bool NeededRegisters::isAccessKnown(GenApi::INode *node)
{
    if (!areKnown(linkedAll(node, {Gates[0], Gates[1]}), Subject::Value))
        return false;
    const bool isGone = isShut(node) || !isReadableEver(node);
    if (isGone)
        m_away.insert(node);
    if (isGone || isCategory(node))
        return true;
    const GenApi::NodeList_t below = childrenOf(node);
    if (!areKnown(below, Subject::Access))
        return false;
    if (std::any_of(below.begin(), below.end(), [this](GenApi::INode *child) { return m_away.count(child) != 0; }))
        m_away.insert(node);
    return true;
}

bool NeededRegisters::isValueKnown(GenApi::INode *node)
{
    if (!isKnown(node, Subject::Access))
        return false;
    if (isCategory(node) || (m_away.count(node) && !isCommand(node)))
        return true;
    // Locks and entries tell what may be written; the value does not wait for them.
    const bool knowsLock = areKnown(linkedAll(node, {Lock}), Subject::Value);
    const bool knowsEntries = areKnown(entriesOf(node), Subject::Access);
    if (isCommand(node))
        return knowsLock;
    // A register that does not tell its access is asked, which reads the lock.
    const bool knowsValue = areKnown(childrenWithoutLock(node), Subject::Value) && (knowsLock || tellsAccess(node))
        && isRegisterKnown(node, knowsLock);
    return knowsLock && knowsEntries && knowsValue;
}

bool NeededRegisters::isRegisterKnown(GenApi::INode *node, bool knowsLock)
{
    if (m_named.count(node) || !isNeededRegister(node))
        return true;
    m_named.insert(node);
    const GenApi::CRegisterPtr reg(node);
    if (knowsLock && !GenApi::IsReadable(node))
        return true;
    const NeededRegister needed{node, reg->GetAddress(), reg->GetLength()};
    if (needed.length <= 0 || needed.length > LongestRegister)
        return true;
    m_round.push_back(needed);
    return false;
}
