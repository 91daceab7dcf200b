// SPDX-License-Identifier: MIT
#include "FloatValue.h"

#include "NodeLoader.h"
#include "NumberText.h"
#include "WordTables.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace NodeEngine {

namespace {

constexpr int64_t DefaultPrecision = 6;

FloatForm formOf(GenApi::EDisplayNotation notation)
{
    if (notation == GenApi::fnFixed)
        return FloatForm::Fixed;
    return notation == GenApi::fnScientific ? FloatForm::Scientific : FloatForm::Automatic;
}

} // namespace

bool FloatValue::take(Tag tag, pugi::xml_node child, NodeLoader &loader)
{
    switch (tag) {
    case Tag::Representation:
        m_representation = representationOf(textOf(child));
        return true;
    case Tag::DisplayNotation:
        m_notation = displayNotationOf(textOf(child));
        return true;
    case Tag::DisplayPrecision:
        m_precision = integerOfDescription(textOf(child)).value_or(-1);
        return true;
    default:
        return PublicNode::take(tag, child, loader);
    }
}

bool FloatValue::HasInc()
{
    const GenApi::AutoLock lock(m_context.lock);
    return hasIncrement();
}

double FloatValue::GetInc()
{
    const GenApi::AutoLock lock(m_context.lock);
    if (!hasIncrement())
        throw GenICam::RuntimeException("node does not have an increment.", __FILE__, __LINE__, "", name().c_str(),
                                        "RuntimeException");
    return publicLimit(Limit::Inc);
}

GenICam::gcstring FloatValue::GetUnit() const
{
    const GenApi::AutoLock lock(m_context.lock);
    return gcstringOf(unit());
}

GenApi::EDisplayNotation FloatValue::GetDisplayNotation() const
{
    const GenApi::AutoLock lock(m_context.lock);
    const GenApi::EDisplayNotation known = displayNotation();
    return known == GenApi::_UndefinedEDisplayNotation ? GenApi::fnAutomatic : known;
}

int64_t FloatValue::GetDisplayPrecision() const
{
    const GenApi::AutoLock lock(m_context.lock);
    const int64_t known = displayPrecision();
    return known < 0 ? DefaultPrecision : known;
}

std::string FloatValue::textValue(bool verify, bool fresh)
{
    const double value = floatValue(fresh);
    if (verify)
        requireInRange(value, "GetValue()");
    const int64_t precision = displayPrecision();
    return floatText(value, formOf(displayNotation()), precision < 0 ? DefaultPrecision : precision);
}

void FloatValue::setTextValue(const std::string &text, bool verify)
{
    const std::optional<double> value = floatOfText(text);
    if (!value)
        throw INVALID_ARGUMENT_EXCEPTION("Node '%s' : cannot convert string '%s' to double.", name().c_str(),
                                         text.c_str());
    setFloat(*value, verify);
}

double FloatValue::typeLimit(Limit limit) const
{
    constexpr double Most = std::numeric_limits<double>::max();
    if (limit == Limit::Inc)
        return 1;
    return limit == Limit::Min ? -Most : Most;
}

int64_t FloatValue::integerLimit(Limit limit) const
{
    return saturatedInteger(floatLimit(limit));
}

void FloatValue::requireInRange(double value, const char *call) const
{
    const double min = floatLimit(Limit::Min);
    if (!(value >= min))
        refuseRange(*this, call, "Value %f must be greater than or equal %f.", value, min);
    const double max = floatLimit(Limit::Max);
    if (!(value <= max))
        refuseRange(*this, call, "Value %f must be smaller than or equal %f.", value, max);
}

} // namespace NodeEngine
