// SPDX-License-Identifier: MIT
#pragma once

#include "NumberValue.h"

namespace NodeEngine {

/// IInteger for every kind of node that is a whole number: Integer, IntReg, MaskedIntReg, IntSwissKnife, IntConverter.
class IntegerValue : public NumberValue<GenApi::IInteger, int64_t>
{
public:
    using NumberValue::NumberValue;

    GenApi::EInterfaceType GetPrincipalInterfaceType() const override { return GenApi::intfIInteger; }

    // IInteger
    int64_t GetInc() override { return publicLimit(Limit::Inc); }
    GenApi::int64_autovector_t GetListOfValidValues(bool bounded) override;
    GenICam::gcstring GetUnit() override;

    // The protocol between nodes.
    int64_t integerValue(bool fresh) override { return number(fresh); }
    double floatValue(bool fresh) override { return static_cast<double>(integerValue(fresh)); }
    std::string textValue(bool verify, bool fresh) override;
    void setInteger(int64_t value, bool verify) override { setNumber(value, verify); }
    void setFloat(double value, bool verify) override;
    void setTextValue(const std::string &text, bool verify) override;
    int64_t integerLimit(Limit limit) const final { return validLimit(limit); }
    bool hasIncrement() const override { return true; }
    GenApi::EIncMode incrementMode() const override
    {
        return m_validValues.empty() ? GenApi::fixedIncrement : GenApi::listIncrement;
    }

protected:
    bool take(Tag tag, pugi::xml_node child, NodeLoader &loader) override;
    int64_t typeLimit(Limit limit) const final { return PublicNode::integerLimit(limit); }
    void requireInRange(int64_t value, const char *call) const override;

    std::vector<int64_t> m_validValues;
};

} // namespace NodeEngine
