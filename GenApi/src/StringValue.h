// SPDX-License-Identifier: MIT
#pragma once

#include "ValueNode.h"

namespace NodeEngine {

/// IString for String and StringReg.
class StringValue : public ValueNode<GenApi::IString>
{
public:
    using ValueNode::ValueNode;

    GenApi::EInterfaceType GetPrincipalInterfaceType() const override { return GenApi::intfIString; }

    // IString
    void SetValue(const GenICam::gcstring &value, bool verify) override;
    GenApi::IString &operator=(const GenICam::gcstring &value) override;
    GenICam::gcstring GetValue(bool verify, bool ignoreCache) override;
    GenICam::gcstring operator()() override { return GetValue(false, false); }
    GenICam::gcstring operator*() override { return GetValue(false, false); }
    int64_t GetMaxLength(bool verify) override;

    // The protocol between nodes.
    std::string textValue(bool verify, bool fresh) override;
    void setTextValue(const std::string &text, bool verify) override;
    int64_t greatestLength() override;

protected:
    virtual std::string readString(bool fresh) = 0;
    virtual void writeString(const std::string &value, bool verify) = 0;
    /// Greatest length in bytes that can be written.
    virtual int64_t capacity() = 0;
};

/// String: a constant text, or what pValue leads to.
class StringNode : public StringValue
{
public:
    using StringValue::StringValue;

protected:
    bool take(Tag tag, pugi::xml_node child, NodeLoader &loader) override;
    GenApi::EAccessMode ownAccessMode() const override { return m_target ? m_target->accessMode() : GenApi::RW; }
    GenApi::EAccessMode ownBaseAccessMode() const override
    {
        return m_target ? m_target->baseAccessMode() : GenApi::RW;
    }
    std::string readString(bool fresh) override;
    void writeString(const std::string &value, bool verify) override;
    int64_t capacity() override;

private:
    std::string m_constant;
    Node *m_target = nullptr;
};

} // namespace NodeEngine
