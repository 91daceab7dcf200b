// SPDX-License-Identifier: MIT
#pragma once

#include "ValueNode.h"

namespace NodeEngine {

/// IInteger for every kind of node that is a whole number: Integer, IntReg, MaskedIntReg, IntSwissKnife, IntConverter.
class IntegerValue : public ValueNode<IInteger>
{
public:
    using ValueNode::ValueNode;

    EInterfaceType GetPrincipalInterfaceType() const override { return intfIInteger; }

    // IInteger
    void SetValue(int64_t value, bool verify) override;
    IInteger &operator=(int64_t value) override;
    int64_t GetValue(bool verify, bool ignoreCache) override;
    int64_t operator()() override { return GetValue(false, false); }
    int64_t operator*() override { return GetValue(false, false); }
    int64_t GetMin() override { return publicLimit(Limit::Min); }
    int64_t GetMax() override { return publicLimit(Limit::Max); }
    EIncMode GetIncMode() override;
    int64_t GetInc() override { return publicLimit(Limit::Inc); }
    int64_autovector_t GetListOfValidValues(bool bounded) override;
    ERepresentation GetRepresentation() override;
    gcstring GetUnit() override;
    void ImposeMin(int64_t value) override;
    void ImposeMax(int64_t value) override;

    // The protocol between nodes.
    int64_t integerValue(bool fresh) override;
    double floatValue(bool fresh) override { return static_cast<double>(integerValue(fresh)); }
    std::string textValue(bool verify, bool fresh) override;
    void setInteger(int64_t value, bool verify) override;
    void setFloat(double value, bool verify) override;
    void setTextValue(const std::string &text, bool verify) override;
    int64_t integerLimit(Limit limit) const final;
    bool hasIncrement() const override { return true; }
    EIncMode incrementMode() const override { return m_validValues.empty() ? fixedIncrement : listIncrement; }
    ERepresentation representation() const override { return m_representation; }
    std::string unit() const override { return text(Tag::Unit); }

protected:
    bool take(Tag tag, pugi::xml_node child, NodeBuilder &builder) override;

    virtual int64_t readInteger(bool fresh) = 0;
    virtual void writeInteger(int64_t value, bool verify) = 0;
    /// The limit without what was imposed.
    virtual int64_t ownLimit(Limit limit) const { return Node::integerLimit(limit); }

    std::vector<int64_t> m_validValues;

private:
    int64_t publicLimit(Limit limit) const;
    void requireInRange(int64_t value, const char *call) const;

    int64_t m_value = 0; // while m_valueValid
    std::optional<int64_t> m_imposedMin;
    std::optional<int64_t> m_imposedMax;
    ERepresentation m_representation = _UndefinedRepresentation;
};

} // namespace NodeEngine
