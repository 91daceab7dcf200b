// SPDX-License-Identifier: MIT
#pragma once

#include "NumberValue.h"

namespace NodeEngine {

/// IFloat for every kind of node that is a floating-point number: Float, FloatReg, SwissKnife, Converter.
class FloatValue : public NumberValue<GenApi::IFloat, double>
{
public:
    using NumberValue::NumberValue;

    GenApi::EInterfaceType GetPrincipalInterfaceType() const override { return GenApi::intfIFloat; }

    // IFloat
    bool HasInc() override;
    double GetInc() override;
    GenApi::double_autovector_t GetListOfValidValues(bool) override { return {}; }
    GenICam::gcstring GetUnit() const override;
    GenApi::EDisplayNotation GetDisplayNotation() const override;
    int64_t GetDisplayPrecision() const override;

    // The protocol between nodes.
    double floatValue(bool fresh) override { return number(fresh); }
    std::string textValue(bool verify, bool fresh) override;
    void setInteger(int64_t value, bool verify) override { setFloat(static_cast<double>(value), verify); }
    void setFloat(double value, bool verify) override { setNumber(value, verify); }
    void setTextValue(const std::string &text, bool verify) override;
    int64_t integerLimit(Limit limit) const override;
    double floatLimit(Limit limit) const final { return validLimit(limit); }
    GenApi::EIncMode incrementMode() const override
    {
        return hasIncrement() ? GenApi::fixedIncrement : GenApi::noIncrement;
    }
    GenApi::EDisplayNotation displayNotation() const override { return m_notation; }
    int64_t displayPrecision() const override { return m_precision; }

protected:
    bool take(Tag tag, pugi::xml_node child, NodeLoader &loader) override;
    GenApi::ECachingMode ownCachingMode() const override { return GenApi::WriteAround; }
    double typeLimit(Limit limit) const final;
    void requireInRange(double value, const char *call) const override;

private:
    int64_t m_precision = -1;
    GenApi::EDisplayNotation m_notation = GenApi::_UndefinedEDisplayNotation;
};

} // namespace NodeEngine
