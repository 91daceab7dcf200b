// SPDX-License-Identifier: MIT
#include "IntegerValue.h"

#include "NodeLoader.h"
#include "NumberText.h"
#include "WordTables.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace NodeEngine {

namespace {

std::vector<int64_t> listOf(std::string_view text)
{
    std::vector<int64_t> values;
    while (!text.empty()) {
        const std::size_t end = std::min(text.find(';'), text.size());
        if (const auto value = integerOfDescription(text.substr(0, end)))
            values.push_back(*value);
        text.remove_prefix(std::min(end + 1, text.size()));
    }
    return values;
}

} // namespace

bool IntegerValue::take(Tag tag, pugi::xml_node child, NodeLoader &loader)
{
    switch (tag) {
    case Tag::Representation:
        m_representation = representationOf(textOf(child));
        return true;
    case Tag::ValidValueSet:
        m_validValues = listOf(textOf(child));
        return true;
    default:
        return PublicNode::take(tag, child, loader);
    }
}

GenApi::int64_autovector_t IntegerValue::GetListOfValidValues(bool bounded)
{
    const GenApi::AutoLock lock(m_context.lock);
    GenApi::int64_autovector_t list;
    for (const int64_t value : m_validValues) {
        if (!bounded || (value >= integerLimit(Limit::Min) && value <= integerLimit(Limit::Max)))
            list.push_back(value);
    }
    return list;
}

GenICam::gcstring IntegerValue::GetUnit()
{
    const GenApi::AutoLock lock(m_context.lock);
    return gcstringOf(unit());
}

std::string IntegerValue::textValue(bool verify, bool fresh)
{
    const int64_t value = integerValue(fresh);
    if (verify)
        requireInRange(value, "GetValue()");
    switch (representation()) {
    case GenApi::HexNumber:
        return hexText(value);
    case GenApi::IPV4Address:
        return ipv4Text(value);
    case GenApi::MACAddress:
        return macText(value);
    case GenApi::Boolean:
        return value != 0 ? "true" : "false";
    default:
        return decimalText(value);
    }
}

void IntegerValue::setFloat(double value, bool verify)
{
    if (std::isnan(value))
        throw INVALID_ARGUMENT_EXCEPTION("Node '%s' : the value is not a number.", name().c_str());
    setInteger(saturatedInteger(value), verify);
}

void IntegerValue::setTextValue(const std::string &text, bool verify)
{
    const GenApi::ERepresentation form = representation();
    std::optional<int64_t> value;
    if (form == GenApi::IPV4Address)
        value = ipv4OfText(text);
    else if (form == GenApi::MACAddress)
        value = macOfText(text);
    else if (form == GenApi::Boolean && (text == "true" || text == "false"))
        value = text == "true";
    else
        value = integerOfText(text);
    if (!value)
        throw INVALID_ARGUMENT_EXCEPTION("Node '%s' : cannot convert string '%s' to int.", name().c_str(),
                                         text.c_str());
    setInteger(*value, verify);
}

void IntegerValue::requireInRange(int64_t value, const char *call) const
{
    const auto number = [](int64_t v) { return static_cast<long long>(v); };
    const int64_t min = integerLimit(Limit::Min);
    if (value < min)
        refuseRange(*this, call, "Value = %lld must be equal or greater than Min = %lld.", number(value), number(min));
    const int64_t max = integerLimit(Limit::Max);
    if (value > max)
        refuseRange(*this, call, "Value = %lld must be equal or smaller than Max = %lld.", number(value), number(max));
    if (incrementMode() == GenApi::listIncrement)
        return;
    const int64_t inc = integerLimit(Limit::Inc);
    if (inc <= 0)
        throw LOGICAL_ERROR_EXCEPTION("Increment must be larger than 0.");
    // Exact although the difference may exceed the range of int64.
    if ((static_cast<uint64_t>(value) - static_cast<uint64_t>(min)) % static_cast<uint64_t>(inc) != 0)
        refuseRange(*this, call,
                    "The difference between Value = %lld and Min = %lld must be dividable without rest "
                    "by Inc = %lld.",
                    number(value), number(min), number(inc));
}

} // namespace NodeEngine
