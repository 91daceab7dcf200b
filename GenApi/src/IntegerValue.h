// SPDX-License-Identifier: MIT
#pragma once

#include "NumberValue.h"

namespace NodeEngine {

/// IInteger for every kind of node that is a whole number: Integer, IntReg, MaskedIntReg, IntSwissKnife, IntConverter.
class IntegerValue : public NumberValue<IInteger, int64_t>
{
public:
    using NumberValue::NumberValue;

    EInterfaceType GetPrincipalInterfaceType() const override { return intfIInteger; }

    // IInteger
    int64_t GetInc() override { return publicLimit(Limit::Inc); }
    int64_autovector_t GetListOfValidValues(bool bounded) override;
    gcstring GetUnit() override;

    // The protocol between nodes.
    int64_t integerValue(bool fresh) override { return number(fresh); }
    double floatValue(bool fresh) override { return static_cast<double>(integerValue(fresh)); }
    std::string textValue(bool verify, bool fresh) override;
    void setInteger(int64_t value, bool verify) override { setNumber(value, verify); }
    void setFloat(double value, bool verify) override;
    void setTextValue(const std::string &text, bool verify) override;
    int64_t integerLimit(Limit limit) const final { return validLimit(limit); }
    bool hasIncrement() const override { return true; }
    EIncMode incrementMode() const override { return m_validValues.empty() ? fixedIncrement : listIncrement; }

protected:
    bool take(Tag tag, pugi::xml_node child, NodeBuilder &builder) override;
    int64_t typeLimit(Limit limit) const final { return Node::integerLimit(limit); }
    void requireInRange(int64_t value, const char *call) const override;

    std::vector<int64_t> m_validValues;
};

} // namespace NodeEngine
