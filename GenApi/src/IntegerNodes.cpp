// SPDX-License-Identifier: MIT
#include "IntegerNodes.h"

namespace NodeEngine {

bool IntegerNode::take(Tag tag, pugi::xml_node child, NodeLoader &loader)
{
    return m_source.take(tag, child, loader) || m_limits.take(*this, tag, child, loader)
        || IntegerValue::take(tag, child, loader);
}

int64_t IntegerNode::readNumber(bool fresh)
{
    const auto &place = m_source.current();
    return place.target ? place.target->integerValue(fresh) : place.constant;
}

void IntegerNode::writeNumber(int64_t value, bool verify)
{
    auto &place = m_source.current();
    if (place.target)
        place.target->setInteger(value, verify);
    else
        place.constant = value;
    for (Node *copy : m_source.copies())
        copy->setInteger(value, verify);
}

int64_t IntegerNode::ownLimit(Limit limit) const
{
    // Formulas give steps between whole numbers; only the description itself may say 0.
    const int64_t given = givenLimit(limit);
    return limit != Limit::Inc || m_limits.isConstant(limit) ? given : std::max<int64_t>(given, 1);
}

int64_t IntegerNode::givenLimit(Limit limit) const
{
    if (const std::optional<int64_t> own = m_limits.value(limit))
        return *own;
    const Node *target = m_source.currentTarget();
    return target ? inheritedLimit<int64_t>(*target, m_source.copies(), limit) : typeLimit(limit);
}

GenApi::EIncMode IntegerNode::incrementMode() const
{
    if (!m_validValues.empty())
        return GenApi::listIncrement;
    const Node *target = m_source.target();
    const Evaluation step(m_evaluation, Evaluation::IncLimit);
    return target && step.isEntered() && target->incrementMode() == GenApi::listIncrement ? GenApi::listIncrement
                                                                                          : GenApi::fixedIncrement;
}

GenApi::ERepresentation IntegerNode::representation() const
{
    const GenApi::ERepresentation own = IntegerValue::representation();
    if (own != GenApi::_UndefinedRepresentation || !m_source.target())
        return own;
    const Evaluation step(m_evaluation, Evaluation::Look);
    return step.isEntered() ? m_source.target()->representation() : own;
}

std::string IntegerNode::unit() const
{
    std::string own = IntegerValue::unit();
    if (!own.empty() || !m_source.target())
        return own;
    const Evaluation step(m_evaluation, Evaluation::Look);
    return step.isEntered() ? m_source.target()->unit() : own;
}

} // namespace NodeEngine
