// SPDX-License-Identifier: MIT
#include "FloatNodes.h"

namespace NodeEngine {

namespace {

bool isWhole(Node &node)
{
    return node.asNode().GetPrincipalInterfaceType() != GenApi::intfIFloat;
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

bool FloatNode::take(Tag tag, pugi::xml_node child, NodeLoader &loader)
{
    return m_source.take(tag, child, loader) || m_limits.take(*this, tag, child, loader)
        || FloatValue::take(tag, child, loader);
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
    const Evaluation step(m_evaluation, Evaluation::Look);
    return step.isEntered() && m_source.target() && m_source.target()->hasIncrement();
}

GenApi::EIncMode FloatNode::incrementMode() const
{
    if (!hasIncrement())
        return GenApi::noIncrement;
    const Node *target = m_limits.has(Limit::Inc) ? nullptr : m_source.target();
    const Evaluation step(m_evaluation, Evaluation::IncLimit);
    return target && step.isEntered() ? target->incrementMode() : GenApi::fixedIncrement;
}

template <class Value>
Value FloatNode::inherited(Value own, Value none, Value (NodeValue::*get)() const) const
{
    if (own != none || !m_source.target())
        return own;
    const Evaluation step(m_evaluation, Evaluation::Look);
    return step.isEntered() ? (m_source.target()->*get)() : own;
}

GenApi::ERepresentation FloatNode::representation() const
{
    return inherited(FloatValue::representation(), GenApi::_UndefinedRepresentation, &Node::representation);
}

std::string FloatNode::unit() const
{
    return inherited(FloatValue::unit(), std::string(), &Node::unit);
}

GenApi::EDisplayNotation FloatNode::displayNotation() const
{
    return inherited(FloatValue::displayNotation(), GenApi::_UndefinedEDisplayNotation, &Node::displayNotation);
}

int64_t FloatNode::displayPrecision() const
{
    return inherited(FloatValue::displayPrecision(), int64_t(-1), &Node::displayPrecision);
}

} // namespace NodeEngine
