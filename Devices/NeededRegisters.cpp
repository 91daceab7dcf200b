// SPDX-License-Identifier: MIT
#include "Devices/NeededRegisters.h"

#include <string>

#include "Devices/SilenceGuard.h"

namespace {

constexpr int64_t LongestRegister = 512; // bytes; longer ones are read when somebody looks at them
constexpr char DevicePort[] = "Device";
constexpr const char *Gates[] = {"pIsImplemented", "pIsAvailable", "pIsLocked"};

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

GenApi::NodeList_t gatesOf(GenApi::INode *node)
{
    GenApi::NodeList_t gates;
    for (const char *link : Gates) {
        if (GenApi::INode *gate = linked(node, link))
            gates.push_back(gate);
    }
    return gates;
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

/// The node is away whatever else is read: one of the gates that say so is closed, or cannot be read.
bool isShut(GenApi::INode *node)
{
    for (const char *link : {Gates[0], Gates[1]}) {
        GenApi::INode *gate = linked(node, link);
        if (gate && (!GenApi::IsReadable(gate) || isZero(gate)))
            return true;
    }
    return false;
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
    if (node->GetPrincipalInterfaceType() == GenApi::intfICategory || !seen.insert(node).second)
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
    if (!areKnown(gatesOf(node), Subject::Value))
        return false;
    if (isShut(node) || node->GetPrincipalInterfaceType() == GenApi::intfICategory)
        return true;
    GenApi::NodeList_t below = childrenOf(node);
    if (const GenApi::CEnumerationPtr enumeration(node); enumeration.IsValid()) {
        GenApi::NodeList_t entries;
        enumeration->GetEntries(entries);
        for (GenApi::INode *entry : entries)
            below.push_back(entry);
    }
    return areKnown(below, Subject::Access);
}

bool NeededRegisters::isValueKnown(GenApi::INode *node)
{
    if (!isKnown(node, Subject::Access))
        return false;
    if (node->GetPrincipalInterfaceType() == GenApi::intfICategory || isCommand(node) || !GenApi::IsReadable(node))
        return true;
    return areKnown(childrenOf(node), Subject::Value) && isRegisterKnown(node);
}

bool NeededRegisters::isRegisterKnown(GenApi::INode *node)
{
    if (m_named.count(node) || !isNeededRegister(node))
        return true;
    m_named.insert(node);
    const GenApi::CRegisterPtr reg(node);
    const NeededRegister needed{node, reg->GetAddress(), reg->GetLength()};
    if (needed.length <= 0 || needed.length > LongestRegister)
        return true;
    m_round.push_back(needed);
    return false;
}
