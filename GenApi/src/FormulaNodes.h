// SPDX-License-Identifier: MIT
#pragma once

#include "FloatValue.h"
#include "FormulaScope.h"
#include "IntegerValue.h"
#include "LimitSource.h"

namespace NodeEngine {

/// IntSwissKnife: a read-only formula in 64-bit integers.
class IntSwissKnifeNode : public IntegerValue
{
public:
    IntSwissKnifeNode(NodeContext &context, const NodeRecord &record)
        : IntegerValue(context, record), m_formula(*this, context)
    { }

    void setInteger(int64_t value, bool verify) override;

protected:
    bool take(Tag tag, pugi::xml_node child, NodeLoader &loader) override;
    GenApi::EAccessMode ownAccessMode() const override
    {
        return m_formula.isUsable(Tag::Formula) ? GenApi::RO : GenApi::NA;
    }
    int64_t readNumber(bool fresh) override { return m_formula.value<int64_t>(Tag::Formula, 0, fresh); }
    void writeNumber(int64_t, bool) override { }
    int64_t ownLimit(Limit limit) const override;

private:
    mutable FormulaScope m_formula;
    LimitSource<int64_t> m_limits;
};

/// SwissKnife: a read-only formula in double.
class SwissKnifeNode : public FloatValue
{
public:
    SwissKnifeNode(NodeContext &context, const NodeRecord &record)
        : FloatValue(context, record), m_formula(*this, context)
    { }

    void setFloat(double value, bool verify) override;

protected:
    bool take(Tag tag, pugi::xml_node child, NodeLoader &loader) override;
    GenApi::EAccessMode ownAccessMode() const override
    {
        return m_formula.isUsable(Tag::Formula) ? GenApi::RO : GenApi::NA;
    }
    double readNumber(bool fresh) override { return m_formula.value<double>(Tag::Formula, 0, fresh); }
    void writeNumber(double, bool) override { }
    double ownLimit(Limit limit) const override;

private:
    mutable FormulaScope m_formula;
    LimitSource<double> m_limits;
};

/// What both converters have: a target, a formula in each direction, and how the value runs along the target's.
class ConverterPart
{
public:
    ConverterPart(Node &owner, NodeContext &context) : m_owner(owner), m_formula(owner, context) { }

    bool take(Tag tag, pugi::xml_node child, NodeLoader &loader);
    GenApi::EAccessMode accessMode() const { return isUsable() ? m_target->accessMode() : GenApi::NA; }
    GenApi::EAccessMode baseAccessMode() const { return isUsable() ? m_target->baseAccessMode() : GenApi::NA; }
    Node &target() const { return *m_target; }
    bool isLinear() const { return m_isLinear; }

    template <class Number>
    Number fromTarget(Number value, bool fresh) const
    {
        return m_formula.value<Number>(Tag::FormulaFrom, value, fresh);
    }
    template <class Number>
    Number toTarget(Number value) const
    {
        return m_formula.value<Number>(Tag::FormulaTo, value, false);
    }
    /// The limit of the target as a value of the converter; nothing if the formula leads nowhere from there.
    std::optional<double> mappedLimit(Limit limit) const;
    /// The distance of two neighbouring values, nothing if the formula makes none of it.
    std::optional<double> mappedIncrement() const;
    /// The limit of the target that is the converter's, or nothing if the slope says that there is none.
    std::optional<Limit> limitOfTarget(Limit limit) const;

private:
    bool isUsable() const;
    std::optional<double> mapped(Limit limitOfTarget) const;
    std::optional<double> mapped(double valueOfTarget) const;
    bool isFalling() const;

    Node &m_owner;
    mutable FormulaScope m_formula;
    Node *m_target = nullptr;
    GenApi::ESlope m_slope = GenApi::Automatic;
    bool m_isLinear = false;
};

/// IntConverter: an integer that is calculated from its target's, and the other way round.
class IntConverterNode : public IntegerValue
{
public:
    IntConverterNode(NodeContext &context, const NodeRecord &record)
        : IntegerValue(context, record), m_part(*this, context)
    { }

protected:
    bool take(Tag tag, pugi::xml_node child, NodeLoader &loader) override;
    GenApi::EAccessMode ownAccessMode() const override { return m_part.accessMode(); }
    GenApi::EAccessMode ownBaseAccessMode() const override { return m_part.baseAccessMode(); }
    GenApi::ECachingMode ownCachingMode() const override { return GenApi::WriteAround; }
    int64_t readNumber(bool fresh) override;
    void writeNumber(int64_t value, bool verify) override;
    int64_t ownLimit(Limit limit) const override;

private:
    ConverterPart m_part;
};

/// Converter: the same in double.
class ConverterNode : public FloatValue
{
public:
    ConverterNode(NodeContext &context, const NodeRecord &record) : FloatValue(context, record), m_part(*this, context)
    { }

    bool hasIncrement() const override;

protected:
    bool take(Tag tag, pugi::xml_node child, NodeLoader &loader) override;
    GenApi::EAccessMode ownAccessMode() const override { return m_part.accessMode(); }
    GenApi::EAccessMode ownBaseAccessMode() const override { return m_part.baseAccessMode(); }
    double readNumber(bool fresh) override;
    void writeNumber(double value, bool verify) override;
    double ownLimit(Limit limit) const override;

private:
    ConverterPart m_part;
};

} // namespace NodeEngine
