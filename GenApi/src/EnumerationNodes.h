// SPDX-License-Identifier: MIT
#pragma once

#include "ValueNode.h"

#include <optional>
#include <vector>

namespace NodeEngine {

/// One entry of an enumeration. Its value is known while it is not available, too.
class EnumEntryNode : public ValueNode<GenApi::IEnumEntry>
{
public:
    using ValueNode::ValueNode;

    GenApi::EInterfaceType GetPrincipalInterfaceType() const override { return GenApi::intfIEnumEntry; }
    GenICam::gcstring GetDisplayName() const override;
    GenICam::gcstring GetDeviceName() const override { return {}; }

    // IEnumEntry
    int64_t GetValue() override { return m_value; }
    GenICam::gcstring GetSymbolic() const override { return gcstringOf(symbolic()); }
    double GetNumericValue() override { return m_numericValue.value_or(static_cast<double>(m_value)); }
    bool IsSelfClearing() override { return m_isSelfClearing; }

    int64_t value() const { return m_value; }
    std::string symbolic() const;

    // The protocol between nodes.
    int64_t integerValue(bool) override { return m_value; }
    double floatValue(bool) override { return static_cast<double>(m_value); }
    std::string textValue(bool verify, bool fresh) override;

protected:
    bool take(Tag tag, pugi::xml_node child, NodeLoader &loader) override;
    GenApi::EAccessMode ownAccessMode() const override { return GenApi::RO; }

private:
    int64_t m_value = 0;
    std::optional<double> m_numericValue;
    bool m_isSelfClearing = false;
};

/// Enumeration: an integer whose values have names.
class EnumerationNode : public ValueNode<GenApi::IEnumeration>
{
public:
    using ValueNode::ValueNode;

    GenApi::EInterfaceType GetPrincipalInterfaceType() const override { return GenApi::intfIEnumeration; }

    // IEnumeration
    void GetSymbolics(GenApi::StringList_t &symbolics) override;
    void GetEntries(GenApi::NodeList_t &entries) override;
    GenApi::IEnumeration &operator=(const GenICam::gcstring &symbolic) override;
    void SetIntValue(int64_t value, bool verify) override;
    GenICam::gcstring operator*() override { return ToString(false, false); }
    int64_t GetIntValue(bool verify, bool ignoreCache) override;
    GenApi::IEnumEntry *GetEntryByName(const GenICam::gcstring &symbolic) override
    {
        return entryOf(stringOf(symbolic));
    }
    GenApi::IEnumEntry *GetEntry(const int64_t value) override { return entryOf(value); }
    GenApi::IEnumEntry *GetCurrentEntry(bool verify, bool ignoreCache) override;

    // The protocol between nodes.
    int64_t integerValue(bool fresh) override;
    double floatValue(bool fresh) override { return static_cast<double>(integerValue(fresh)); }
    std::string textValue(bool verify, bool fresh) override;
    void setInteger(int64_t value, bool verify) override;
    void setFloat(double value, bool verify) override;
    void setTextValue(const std::string &text, bool verify) override;

protected:
    bool take(Tag tag, pugi::xml_node child, NodeLoader &loader) override;
    bool isOwnImplemented() const override { return modeOfEntries() != GenApi::NI; }
    GenApi::EAccessMode ownAccessMode() const override;
    GenApi::EAccessMode ownBaseAccessMode() const override
    {
        return m_target ? m_target->baseAccessMode() : GenApi::RW;
    }

private:
    EnumEntryNode *entryOf(int64_t value) const;
    EnumEntryNode *entryOf(const std::string &symbolic) const;
    void write(EnumEntryNode &entry, bool verify);
    int64_t verifiedValue(bool verify, bool fresh);
    GenApi::EAccessMode modeOfEntries() const;

    std::vector<EnumEntryNode *> m_entries;
    Node *m_target = nullptr;
    int64_t m_value = 0; // the constant, or the cached one while m_valueValid
};

} // namespace NodeEngine
