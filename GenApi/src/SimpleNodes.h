// SPDX-License-Identifier: MIT
#pragma once

#include "ValueNode.h"

namespace NodeEngine {

/// Boolean: an integer of two values.
class BooleanNode : public ValueNode<GenApi::IBoolean>
{
public:
    using ValueNode::ValueNode;

    GenApi::EInterfaceType GetPrincipalInterfaceType() const override { return GenApi::intfIBoolean; }

    // IBoolean
    void SetValue(bool value, bool verify) override;
    GenApi::IBoolean &operator=(bool value) override;
    bool GetValue(bool verify, bool ignoreCache) const override;
    bool operator()() const override { return GetValue(false, false); }

    // The protocol between nodes: 1 or 0.
    int64_t integerValue(bool fresh) override { return booleanValue(fresh) ? 1 : 0; }
    double floatValue(bool fresh) override { return booleanValue(fresh) ? 1 : 0; }
    std::string textValue(bool verify, bool fresh) override;
    void setInteger(int64_t value, bool verify) override { set(value != 0, verify); }
    void setFloat(double value, bool verify) override { set(value != 0, verify); }
    void setTextValue(const std::string &text, bool verify) override;

protected:
    bool take(Tag tag, pugi::xml_node child, NodeLoader &loader) override;
    void loaded(NodeLoader &loader) override;
    GenApi::EAccessMode ownAccessMode() const override { return m_target ? m_target->accessMode() : GenApi::RW; }
    GenApi::EAccessMode ownBaseAccessMode() const override
    {
        return m_target ? m_target->baseAccessMode() : GenApi::RW;
    }

private:
    bool booleanValue(bool fresh) const;
    void set(bool value, bool verify);

    Node *m_target = nullptr;
    int64_t m_on = 1;
    int64_t m_off = 0;
    mutable int64_t m_value = 0; // the constant, or the cached one while m_valueValid
    std::string m_word; // the constant as the file has it, until loaded
};

/// Command: writes a value that makes the device act.
class CommandNode : public ValueNode<GenApi::ICommand>
{
public:
    using ValueNode::ValueNode;

    GenApi::EInterfaceType GetPrincipalInterfaceType() const override { return GenApi::intfICommand; }

    // ICommand
    void Execute(bool verify) override;
    void operator()() override { Execute(true); }
    bool IsDone(bool verify) override;

    // The protocol between nodes.
    int64_t integerValue(bool fresh) override;
    double floatValue(bool fresh) override { return static_cast<double>(integerValue(fresh)); }
    std::string textValue(bool verify, bool fresh) override;
    void setTextValue(const std::string &text, bool verify) override;

protected:
    bool take(Tag tag, pugi::xml_node child, NodeLoader &loader) override;
    GenApi::EAccessMode ownAccessMode() const override;

private:
    void execute();

    Node *m_target = nullptr;
    Node *m_commandNode = nullptr;
    int64_t m_commandValue = 0;
    int64_t m_written = 0; // by the last Execute()
    int64_t m_constant = 0;
    bool m_hasConstant = false;
    bool m_isUnderWay = false;
};

/// Category: a list of features. It cannot be less accessible, nor more hidden, than the best of them.
class CategoryNode : public ValueNode<GenApi::ICategory>
{
public:
    using ValueNode::ValueNode;

    GenApi::EInterfaceType GetPrincipalInterfaceType() const override { return GenApi::intfICategory; }
    GenApi::EVisibility GetVisibility() const override;

    // ICategory
    void GetFeatures(GenApi::FeatureList_t &features) const override;

    // The protocol between nodes.
    std::string textValue(bool, bool) override { return stringOf(GetDisplayName()); }

protected:
    bool take(Tag tag, pugi::xml_node child, NodeLoader &loader) override;
    GenApi::EAccessMode computedAccessMode() const override;
};

/// A Node of the description: names and texts only.
class PlainNode : public PublicNode
{
public:
    using PublicNode::PublicNode;

    GenApi::EInterfaceType GetPrincipalInterfaceType() const override { return GenApi::intfIBase; }

protected:
    GenApi::EAccessMode ownAccessMode() const override { return GenApi::RO; }
};

} // namespace NodeEngine
