// SPDX-License-Identifier: MIT
#include "FloatNodes.h"

namespace NodeEngine {

namespace {

bool isWhole(const Node &node)
{
    return node.GetPrincipalInterfaceType() != intfIFloat;
}

// The value that an integer with these limits takes for the number.
int64_t onGrid(double value, const Node &target)
{
    const int64_t nearest = saturatedInteger(value);
    const int64_t inc = target.integerLimit(Limit::Inc);
    const int64_t min = target.integerLimit(Limit::Min);
    if (inc <= 1 || nearest < min)
        return nearest;
    const double steps = (value - static_cast<double>(min)) / static_cast<double>(inc);
    return static_cast<int64_t>(static_cast<uint64_t>(min)
                                + static_cast<uint64_t>(saturatedInteger(steps)) * static_cast<uint64_t>(inc));
}

void write(Node &target, double value, bool verify)
{
    if (isWhole(target))
        target.setInteger(onGrid(value, target), verify);
    else
        target.setFloat(value, verify);
}

} // namespace

bool FloatNode::take(Tag tag, pugi::xml_node child, NodeBuilder &builder)
{
    return m_source.take(tag, child, builder) || m_limits.take(*this, tag, child, builder)
        || FloatValue::take(tag, child, builder);
}

double FloatNode::readNumber(bool fresh)
{
    const auto &place = m_source.current();
    return place.target ? place.target->floatValue(fresh) : place.constant;
}

void FloatNode::writeNumber(double value, bool verify)
{
    auto &place = m_source.current();
    if (place.target)
        write(*place.target, value, verify);
    else
        place.constant = value;
    for (Node *copy : m_source.copies())
        write(*copy, value, verify);
}

double FloatNode::ownLimit(Limit limit) const
{
    const std::optional<double> own = m_limits.value(limit);
    const bool isUsable = limit != Limit::Inc || m_limits.isConstant(limit) || (own && *own > 0);
    if (own && isUsable)
        return *own;
    const Node *target = m_source.currentTarget();
    return target ? inheritedLimit<double>(*target, m_source.copies(), limit) : FloatValue::ownLimit(limit);
}

bool FloatNode::hasIncrement() const
{
    if (m_limits.has(Limit::Inc))
        return true;
    const Evaluation step(*this, Evaluation::Look);
    return step.isEntered() && m_source.target() && m_source.target()->hasIncrement();
}

EIncMode FloatNode::incrementMode() const
{
    if (!hasIncrement())
        return noIncrement;
    const Node *target = m_limits.has(Limit::Inc) ? nullptr : m_source.target();
    const Evaluation step(*this, Evaluation::IncLimit);
    return target && step.isEntered() ? target->incrementMode() : fixedIncrement;
}

template <class Value>
Value FloatNode::inherited(Value own, Value none, Value (Node::*get)() const) const
{
    if (own != none || !m_source.target())
        return own;
    const Evaluation step(*this, Evaluation::Look);
    return step.isEntered() ? (m_source.target()->*get)() : own;
}

ERepresentation FloatNode::representation() const
{
    return inherited(FloatValue::representation(), _UndefinedRepresentation, &Node::representation);
}

std::string FloatNode::unit() const
{
    return inherited(FloatValue::unit(), std::string(), &Node::unit);
}

EDisplayNotation FloatNode::displayNotation() const
{
    return inherited(FloatValue::displayNotation(), _UndefinedEDisplayNotation, &Node::displayNotation);
}

int64_t FloatNode::displayPrecision() const
{
    return inherited(FloatValue::displayPrecision(), int64_t(-1), &Node::displayPrecision);
}

} // namespace NodeEngine
