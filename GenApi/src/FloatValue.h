// SPDX-License-Identifier: MIT
#pragma once

#include "ValueNode.h"

namespace NodeEngine {

/// IFloat for every kind of node that is a floating-point number: Float, FloatReg, SwissKnife, Converter.
class FloatValue : public ValueNode<IFloat>
{
public:
    using ValueNode::ValueNode;

    EInterfaceType GetPrincipalInterfaceType() const override { return intfIFloat; }

    // IFloat
    void SetValue(double value, bool verify) override;
    IFloat &operator=(double value) override;
    double GetValue(bool verify, bool ignoreCache) override;
    double operator()() override { return GetValue(false, false); }
    double operator*() override { return GetValue(false, false); }
    double GetMin() override { return publicLimit(Limit::Min); }
    double GetMax() override { return publicLimit(Limit::Max); }
    bool HasInc() override;
    EIncMode GetIncMode() override;
    double GetInc() override;
    double_autovector_t GetListOfValidValues(bool) override { return {}; }
    ERepresentation GetRepresentation() override;
    gcstring GetUnit() const override;
    EDisplayNotation GetDisplayNotation() const override;
    int64_t GetDisplayPrecision() const override;
    void ImposeMin(double value) override;
    void ImposeMax(double value) override;

    // The protocol between nodes.
    double floatValue(bool fresh) override;
    std::string textValue(bool verify, bool fresh) override;
    void setInteger(int64_t value, bool verify) override { setFloat(static_cast<double>(value), verify); }
    void setFloat(double value, bool verify) override;
    void setTextValue(const std::string &text, bool verify) override;
    int64_t integerLimit(Limit limit) const override;
    double floatLimit(Limit limit) const final;
    EIncMode incrementMode() const override { return hasIncrement() ? fixedIncrement : noIncrement; }
    ERepresentation representation() const override { return m_representation; }
    std::string unit() const override { return text(Tag::Unit); }
    EDisplayNotation displayNotation() const override { return m_notation; }
    int64_t displayPrecision() const override { return m_precision; }

protected:
    bool take(Tag tag, pugi::xml_node child, NodeBuilder &builder) override;
    ECachingMode ownCachingMode() const override { return WriteAround; }

    virtual double readFloat(bool fresh) = 0;
    virtual void writeFloat(double value, bool verify) = 0;
    /// The limit without what was imposed; by default the type's.
    virtual double ownLimit(Limit limit) const;

private:
    double publicLimit(Limit limit) const;
    void requireInRange(double value, const char *call) const;

    double m_value = 0; // while m_valueValid
    std::optional<double> m_imposedMin;
    std::optional<double> m_imposedMax;
    int64_t m_precision = -1;
    ERepresentation m_representation = _UndefinedRepresentation;
    EDisplayNotation m_notation = _UndefinedEDisplayNotation;
};

} // namespace NodeEngine
