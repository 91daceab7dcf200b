// SPDX-License-Identifier: MIT
#include "EnumerationNodes.h"

#include "NodeBuilder.h"
#include "NumberText.h"

#include <algorithm>
#include <cmath>

namespace NodeEngine {

namespace {

template <class Exception>
[[noreturn]] void refuseValue(const Node &node, const std::string &value, const char *type)
{
    const std::string text =
        "Feature '" + node.name() + "' : cannot convert value '" + value + "', the value is invalid.";
    throw Exception(text.c_str(), __FILE__, __LINE__, "", node.name().c_str(), type);
}

} // namespace

// --- EnumEntryNode

bool EnumEntryNode::take(Tag tag, pugi::xml_node child, NodeBuilder &builder)
{
    switch (tag) {
    case Tag::Value:
        m_value = integerOfDescription(textOf(child)).value_or(0);
        return true;
    case Tag::NumericValue:
        m_numericValue = floatOfDescription(textOf(child));
        return true;
    case Tag::IsSelfClearing:
        m_isSelfClearing = textOf(child) == "Yes";
        return true;
    default:
        return Node::take(tag, child, builder);
    }
}

std::string EnumEntryNode::symbolic() const
{
    const char *own = text(Tag::Symbolic);
    return *own ? own : element().attribute("Name").value();
}

gcstring EnumEntryNode::GetDisplayName() const
{
    const char *own = text(Tag::DisplayName);
    return *own ? gcstring(own) : gcstringOf(symbolic());
}

std::string EnumEntryNode::textValue(bool, bool)
{
    return decimalText(m_value);
}

// --- EnumerationNode

bool EnumerationNode::take(Tag tag, pugi::xml_node child, NodeBuilder &builder)
{
    switch (tag) {
    case Tag::EnumEntry:
        if (auto *entry = dynamic_cast<EnumEntryNode *>(builder.addEntry(*this, child)))
            m_entries.push_back(entry);
        return true;
    case Tag::Value:
        m_value = integerOfDescription(textOf(child)).value_or(0);
        return true;
    case Tag::pValue:
        m_target = builder.link(*this, tag, child);
        return true;
    default:
        return Node::take(tag, child, builder);
    }
}

EAccessMode EnumerationNode::ownAccessMode() const
{
    return combined(modeOfEntries(), m_target ? m_target->accessMode() : RW);
}

// RW if there is an entry to choose.
EAccessMode EnumerationNode::modeOfEntries() const
{
    EAccessMode best = m_entries.empty() ? RW : NI;
    for (const EnumEntryNode *entry : m_entries) {
        const EAccessMode mode = entry->accessMode();
        if (IsAvailable(mode))
            return RW;
        best = std::max(best, mode);
    }
    return best;
}

EnumEntryNode *EnumerationNode::entryOf(int64_t value) const
{
    for (EnumEntryNode *entry : m_entries) {
        if (entry->value() == value)
            return entry;
    }
    return nullptr;
}

EnumEntryNode *EnumerationNode::entryOf(const std::string &symbolic) const
{
    for (EnumEntryNode *entry : m_entries) {
        if (entry->symbolic() == symbolic)
            return entry;
    }
    return nullptr;
}

void EnumerationNode::GetSymbolics(StringList_t &symbolics)
{
    AutoLock lock(m_map.GetLock());
    symbolics.clear();
    for (const EnumEntryNode *entry : m_entries) {
        if (IsAvailable(entry->accessMode()))
            symbolics.push_back(entry->GetSymbolic());
    }
}

void EnumerationNode::GetEntries(NodeList_t &entries)
{
    entries.clear();
    for (EnumEntryNode *entry : m_entries)
        entries.push_back(entry);
}

IEnumeration &EnumerationNode::operator=(const gcstring &symbolic)
{
    FromString(symbolic, true);
    return *this;
}

void EnumerationNode::SetIntValue(int64_t value, bool verify)
{
    m_map.change([&] { setInteger(value, verify); });
}

int64_t EnumerationNode::GetIntValue(bool verify, bool ignoreCache)
{
    AutoLock lock(m_map.GetLock());
    return verifiedValue(verify, ignoreCache);
}

IEnumEntry *EnumerationNode::GetCurrentEntry(bool verify, bool ignoreCache)
{
    AutoLock lock(m_map.GetLock());
    return entryOf(verifiedValue(verify, ignoreCache));
}

int64_t EnumerationNode::verifiedValue(bool verify, bool fresh)
{
    const int64_t value = integerValue(fresh);
    if (!verify)
        return value;
    const EnumEntryNode *entry = entryOf(value);
    if (!entry)
        refuseValue<OutOfRangeException>(*this, decimalText(value), "OutOfRangeException");
    if (!IsReadable(entry->accessMode()))
        refuse("Failed to write enumeration value. Enum entry is not readable", "GetIntValue()");
    return value;
}

int64_t EnumerationNode::integerValue(bool fresh)
{
    requireReadable("GetIntValue()");
    if (!m_target || (m_valueValid && !fresh))
        return m_value;
    const Evaluation step(*this, Evaluation::Value);
    step.require();
    m_value = m_target->integerValue(fresh);
    m_valueValid = hasCachableValue();
    return m_value;
}

std::string EnumerationNode::textValue(bool verify, bool fresh)
{
    const int64_t value = integerValue(fresh);
    const EnumEntryNode *entry = entryOf(value);
    if (!entry)
        refuseValue<InvalidArgumentException>(*this, decimalText(value), "InvalidArgumentException");
    if (verify && !IsReadable(entry->accessMode()))
        throw ACCESS_EXCEPTION("Enumeration value '%s' is not available.", entry->name().c_str());
    return entry->symbolic();
}

void EnumerationNode::setInteger(int64_t value, bool verify)
{
    requireWritable(verify, "SetIntValue()");
    EnumEntryNode *entry = entryOf(value);
    if (!entry)
        refuseValue<InvalidArgumentException>(*this, decimalText(value), "InvalidArgumentException");
    write(*entry, verify);
}

void EnumerationNode::setFloat(double value, bool verify)
{
    const int64_t nearest = std::isnan(value) ? 0 : saturatedInteger(value);
    if (static_cast<double>(nearest) != value)
        refuseValue<InvalidArgumentException>(*this, std::to_string(value), "InvalidArgumentException");
    setInteger(nearest, verify);
}

void EnumerationNode::setTextValue(const std::string &text, bool verify)
{
    EnumEntryNode *entry = entryOf(text);
    if (!entry)
        refuseValue<InvalidArgumentException>(*this, text, "InvalidArgumentException");
    requireWritable(verify, "FromString()");
    write(*entry, verify);
}

void EnumerationNode::write(EnumEntryNode &entry, bool verify)
{
    const EAccessMode mode = entry.accessMode();
    if (verify && !IsAvailable(mode))
        refuse("Failed to write enumeration value. Enum entry is not writable", "SetIntValue()");
    if (!IsImplemented(mode))
        refuse("Failed to write enumeration value. Enum entry is not implemented", "SetIntValue()");
    const Evaluation step(*this, Evaluation::Write);
    step.require();
    if (m_target)
        m_target->setInteger(entry.value(), verify);
    else
        m_value = entry.value();
    m_map.changed(*this);
}

} // namespace NodeEngine
