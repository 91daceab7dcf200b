// SPDX-License-Identifier: MIT
#include "EnumerationNodes.h"

#include "NodeLoader.h"
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

bool EnumEntryNode::take(Tag tag, pugi::xml_node child, NodeLoader &loader)
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
        return PublicNode::take(tag, child, loader);
    }
}

std::string EnumEntryNode::symbolic() const
{
    const char *own = text(Tag::Symbolic);
    return *own ? own : m_description.element().attribute("Name").value();
}

GenICam::gcstring EnumEntryNode::GetDisplayName() const
{
    const char *own = text(Tag::DisplayName);
    return *own ? GenICam::gcstring(own) : gcstringOf(symbolic());
}

std::string EnumEntryNode::textValue(bool, bool)
{
    return decimalText(m_value);
}

// --- EnumerationNode

bool EnumerationNode::take(Tag tag, pugi::xml_node child, NodeLoader &loader)
{
    switch (tag) {
    case Tag::EnumEntry:
        if (auto *entry = dynamic_cast<EnumEntryNode *>(loader.addEntry(*this, child)))
            m_entries.push_back(entry);
        return true;
    case Tag::Value:
        m_value = integerOfDescription(textOf(child)).value_or(0);
        return true;
    case Tag::pValue:
        m_target = loader.link(*this, tag, child);
        return true;
    default:
        return PublicNode::take(tag, child, loader);
    }
}

GenApi::EAccessMode EnumerationNode::ownAccessMode() const
{
    return combined(modeOfEntries(), m_target ? m_target->accessMode() : GenApi::RW);
}

// RW if there is an entry to choose.
GenApi::EAccessMode EnumerationNode::modeOfEntries() const
{
    GenApi::EAccessMode best = m_entries.empty() ? GenApi::RW : GenApi::NI;
    for (const EnumEntryNode *entry : m_entries) {
        const GenApi::EAccessMode mode = entry->accessMode();
        if (GenApi::IsAvailable(mode))
            return GenApi::RW;
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

void EnumerationNode::GetSymbolics(GenApi::StringList_t &symbolics)
{
    const GenApi::AutoLock lock(m_context.lock);
    symbolics.clear();
    for (const EnumEntryNode *entry : m_entries) {
        if (GenApi::IsAvailable(entry->accessMode()))
            symbolics.push_back(entry->GetSymbolic());
    }
}

void EnumerationNode::GetEntries(GenApi::NodeList_t &entries)
{
    entries.clear();
    for (EnumEntryNode *entry : m_entries)
        entries.push_back(entry);
}

GenApi::IEnumeration &EnumerationNode::operator=(const GenICam::gcstring &symbolic)
{
    FromString(symbolic, true);
    return *this;
}

void EnumerationNode::SetIntValue(int64_t value, bool verify)
{
    m_context.changes.change([&] { setInteger(value, verify); });
}

int64_t EnumerationNode::GetIntValue(bool verify, bool ignoreCache)
{
    const GenApi::AutoLock lock(m_context.lock);
    return verifiedValue(verify, ignoreCache);
}

GenApi::IEnumEntry *EnumerationNode::GetCurrentEntry(bool verify, bool ignoreCache)
{
    const GenApi::AutoLock lock(m_context.lock);
    return entryOf(verifiedValue(verify, ignoreCache));
}

int64_t EnumerationNode::verifiedValue(bool verify, bool fresh)
{
    const int64_t value = integerValue(fresh);
    if (!verify)
        return value;
    const EnumEntryNode *entry = entryOf(value);
    if (!entry)
        refuseValue<GenICam::OutOfRangeException>(*this, decimalText(value), "OutOfRangeException");
    if (!GenApi::IsReadable(entry->accessMode()))
        refuse(*this, "Failed to write enumeration value. Enum entry is not readable", "GetIntValue()");
    return value;
}

int64_t EnumerationNode::integerValue(bool fresh)
{
    requireReadable(*this, "GetIntValue()");
    if (!m_target || (m_valueValid && !fresh))
        return m_value;
    const Evaluation step(m_evaluation, Evaluation::Value);
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
        refuseValue<GenICam::InvalidArgumentException>(*this, decimalText(value), "InvalidArgumentException");
    if (verify && !GenApi::IsReadable(entry->accessMode()))
        throw ACCESS_EXCEPTION("Enumeration value '%s' is not available.", entry->name().c_str());
    return entry->symbolic();
}

void EnumerationNode::setInteger(int64_t value, bool verify)
{
    requireWritable(*this, verify, "SetIntValue()");
    EnumEntryNode *entry = entryOf(value);
    if (!entry)
        refuseValue<GenICam::InvalidArgumentException>(*this, decimalText(value), "InvalidArgumentException");
    write(*entry, verify);
}

void EnumerationNode::setFloat(double value, bool verify)
{
    const int64_t nearest = std::isnan(value) ? 0 : saturatedInteger(value);
    if (static_cast<double>(nearest) != value)
        refuseValue<GenICam::InvalidArgumentException>(*this, std::to_string(value), "InvalidArgumentException");
    setInteger(nearest, verify);
}

void EnumerationNode::setTextValue(const std::string &text, bool verify)
{
    EnumEntryNode *entry = entryOf(text);
    if (!entry)
        refuseValue<GenICam::InvalidArgumentException>(*this, text, "InvalidArgumentException");
    requireWritable(*this, verify, "FromString()");
    write(*entry, verify);
}

void EnumerationNode::write(EnumEntryNode &entry, bool verify)
{
    const GenApi::EAccessMode mode = entry.accessMode();
    if (verify && !GenApi::IsAvailable(mode))
        refuse(*this, "Failed to write enumeration value. Enum entry is not writable", "SetIntValue()");
    if (!GenApi::IsImplemented(mode))
        refuse(*this, "Failed to write enumeration value. Enum entry is not implemented", "SetIntValue()");
    const Evaluation step(m_evaluation, Evaluation::Write);
    step.require();
    if (m_target)
        m_target->setInteger(entry.value(), verify);
    else
        m_value = entry.value();
    m_context.changes.changed(*this);
}

} // namespace NodeEngine
