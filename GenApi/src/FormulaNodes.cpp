// SPDX-License-Identifier: MIT
#include "FormulaNodes.h"

#include "NodeLoader.h"
#include "WordTables.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace NodeEngine {

// --- swiss knives

bool IntSwissKnifeNode::take(Tag tag, pugi::xml_node child, NodeLoader &loader)
{
    return m_formula.take(tag, child, loader) || m_limits.take(*this, tag, child, loader)
        || IntegerValue::take(tag, child, loader);
}

int64_t IntSwissKnifeNode::ownLimit(Limit limit) const
{
    return m_limits.value(limit).value_or(IntegerValue::ownLimit(limit));
}

void IntSwissKnifeNode::setInteger(int64_t, bool verify)
{
    if (verify)
        requireWritable(*this, true, "SetValue()");
    refuse(*this, "IntSwissKnife is read only.", "SetValue()");
}

bool SwissKnifeNode::take(Tag tag, pugi::xml_node child, NodeLoader &loader)
{
    return m_formula.take(tag, child, loader) || m_limits.take(*this, tag, child, loader)
        || FloatValue::take(tag, child, loader);
}

double SwissKnifeNode::ownLimit(Limit limit) const
{
    return m_limits.value(limit).value_or(FloatValue::ownLimit(limit));
}

void SwissKnifeNode::setFloat(double, bool verify)
{
    if (verify)
        requireWritable(*this, true, "SetValue()");
    throw LOGICAL_ERROR_EXCEPTION("SwissKnife : %s SetValue failed. SwissKnife is read only", name().c_str());
}

// --- what converters share

bool ConverterPart::take(Tag tag, pugi::xml_node child, NodeLoader &loader)
{
    switch (tag) {
    case Tag::pValue:
        m_target = loader.link(m_owner, tag, child);
        return true;
    case Tag::Slope:
        m_slope = slopeOf(textOf(child));
        return true;
    case Tag::IsLinear:
        m_isLinear = textOf(child) == "Yes";
        return true;
    default:
        return m_formula.take(tag, child, loader);
    }
}

bool ConverterPart::isUsable() const
{
    return m_target && m_formula.isUsable(Tag::FormulaFrom) && m_formula.isUsable(Tag::FormulaTo);
}

std::optional<double> ConverterPart::mapped(Limit limitOfTarget) const
{
    return mapped(m_target->floatLimit(limitOfTarget));
}

std::optional<double> ConverterPart::mapped(double valueOfTarget) const
{
    try {
        const double value = fromTarget<double>(valueOfTarget, false);
        return std::isnan(value) ? std::nullopt : std::optional<double>(value);
    } catch (const EndlessEvaluation &) {
        throw;
    } catch (const GenICam::RuntimeException &) {
        return std::nullopt; // a division by zero at the end of the range
    }
}

bool ConverterPart::isFalling() const
{
    // In double the greatest int64 is 2^63, which bitwise operators take for a negative number.
    constexpr double GreatestBelow = 9223372036854774784.0;
    const bool isWhole = m_target->asNode().GetPrincipalInterfaceType() != GenApi::intfIFloat;
    const double most = isWhole ? GreatestBelow : std::numeric_limits<double>::infinity();
    const std::optional<double> low = mapped(std::max(m_target->floatLimit(Limit::Min), -most));
    const std::optional<double> high = mapped(std::min(m_target->floatLimit(Limit::Max), most));
    return low && high && *low > *high;
}

std::optional<Limit> ConverterPart::limitOfTarget(Limit limit) const
{
    if (!isUsable() || m_slope == GenApi::Varying)
        return std::nullopt;
    const Limit opposite = limit == Limit::Min ? Limit::Max : Limit::Min;
    if (m_slope == GenApi::Decreasing)
        return opposite;
    return m_slope == GenApi::Automatic && limit != Limit::Inc && isFalling() ? opposite : limit;
}

std::optional<double> ConverterPart::mappedLimit(Limit limit) const
{
    const std::optional<Limit> source = limitOfTarget(limit);
    return source ? mapped(*source) : std::nullopt;
}

std::optional<double> ConverterPart::mappedIncrement() const
{
    if (!isUsable())
        return std::nullopt;
    // A formula with a condition may be flat, or lead nowhere, at one end of the range.
    const double step = m_target->floatLimit(Limit::Inc);
    for (const double start : {0.0, m_target->floatLimit(Limit::Max) - step}) {
        const std::optional<double> from = mapped(start);
        const std::optional<double> to = mapped(start + step);
        const double distance = from && to ? std::abs(*to - *from) : 0;
        if (distance > 0 && std::isfinite(distance))
            return distance;
    }
    return std::nullopt;
}

// --- IntConverter

bool IntConverterNode::take(Tag tag, pugi::xml_node child, NodeLoader &loader)
{
    return m_part.take(tag, child, loader) || IntegerValue::take(tag, child, loader);
}

int64_t IntConverterNode::readNumber(bool fresh)
{
    return m_part.fromTarget(m_part.target().integerValue(fresh), fresh);
}

void IntConverterNode::writeNumber(int64_t value, bool verify)
{
    m_part.target().setInteger(m_part.toTarget(value), verify);
}

int64_t IntConverterNode::ownLimit(Limit limit) const
{
    const int64_t ofType = IntegerValue::ownLimit(limit);
    if (limit == Limit::Inc)
        return ofType;
    const std::optional<Limit> source = m_part.limitOfTarget(limit);
    const std::optional<double> estimate = m_part.mappedLimit(limit);
    // Beyond the range of int64 the formula in integers wraps.
    if (!source || !estimate || std::abs(*estimate) >= 9223372036854775807.0)
        return ofType;
    return m_part.fromTarget(m_part.target().integerLimit(*source), false);
}

// --- Converter

bool ConverterNode::take(Tag tag, pugi::xml_node child, NodeLoader &loader)
{
    return m_part.take(tag, child, loader) || FloatValue::take(tag, child, loader);
}

double ConverterNode::readNumber(bool fresh)
{
    return m_part.fromTarget(m_part.target().floatValue(fresh), fresh);
}

void ConverterNode::writeNumber(double value, bool verify)
{
    m_part.target().setFloat(m_part.toTarget(value), verify);
}

double ConverterNode::ownLimit(Limit limit) const
{
    const std::optional<double> mapped = limit == Limit::Inc ? m_part.mappedIncrement() : m_part.mappedLimit(limit);
    return mapped.value_or(FloatValue::ownLimit(limit));
}

bool ConverterNode::hasIncrement() const
{
    const Evaluation step(m_evaluation, Evaluation::Look);
    return step.isEntered() && !isBroken() && m_part.isLinear() && m_part.target().hasIncrement();
}

} // namespace NodeEngine
