// SPDX-License-Identifier: MIT
#include "ValueText.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <cstdint>
#include <limits>
#include <optional>

namespace Persistence {

namespace {

template <class Number, class... Format>
std::string numberText(Number number, Format... format)
{
    char buffer[400]; // the longest double has 309 digits before the point
    const auto result = std::to_chars(buffer, buffer + sizeof buffer, number, format...);
    return std::string(buffer, result.ptr);
}

template <class Number, class... Base>
std::optional<Number> numberOf(const std::string &text, Base... base)
{
    Number number{};
    const auto result = std::from_chars(text.data(), text.data() + text.size(), number, base...);
    if (result.ec != std::errc() || result.ptr != text.data() + text.size())
        return std::nullopt;
    return number;
}

/// Decimal, or hexadecimal with 0x; those above the range of int64 wrap.
std::optional<int64_t> integerOf(const std::string &text)
{
    if (text.size() > 2 && text[0] == '0' && (text[1] == 'x' || text[1] == 'X')) {
        const std::optional<uint64_t> bits = numberOf<uint64_t>(text.substr(2), 16);
        return bits ? std::optional<int64_t>(static_cast<int64_t>(*bits)) : std::nullopt;
    }
    return numberOf<int64_t>(text);
}

bool isNarrowRegister(GenApi::INode *node)
{
    constexpr int64_t LengthOfFloat = 4;
    const GenApi::CRegisterPtr content = node;
    return node->GetPrincipalInterfaceType() == GenApi::intfIFloat && content.IsValid()
        && content->GetLength() == LengthOfFloat;
}

/// The value is kept in registers that hold no more than a `float`.
bool isNarrow(GenApi::IFloat &number)
{
    GenApi::NodeList_t ends;
    number.GetNode()->GetChildren(ends, GenApi::ctTerminalNodes);
    if (isNarrowRegister(number.GetNode()))
        return true;
    return !ends.empty() && std::all_of(ends.begin(), ends.end(), isNarrowRegister);
}

std::string displayedText(GenApi::IFloat &number, double value)
{
    const GenApi::EDisplayNotation notation = number.GetDisplayNotation();
    const std::chars_format format = notation == GenApi::fnFixed ? std::chars_format::fixed
        : notation == GenApi::fnScientific                       ? std::chars_format::scientific
                                                                 : std::chars_format::general;
    constexpr int64_t MostDigits = 60;
    return numberText(value, format,
                      static_cast<int>(std::clamp<int64_t>(number.GetDisplayPrecision(), 0, MostDigits)));
}

bool isSameFloat(double left, double right)
{
    return static_cast<float>(left) == static_cast<float>(right);
}

bool isFloat(double value)
{
    return std::fabs(value) <= std::numeric_limits<float>::max()
        && static_cast<double>(static_cast<float>(value)) == value;
}

std::string storedFloat(GenApi::IFloat &number, double value)
{
    const std::string displayed = displayedText(number, value);
    const std::optional<double> readBack = numberOf<double>(displayed);
    if (std::isnan(value) || readBack == value)
        return displayed;
    if (!isFloat(value) || !isNarrow(number))
        return numberText(value);
    return readBack && isSameFloat(*readBack, value) ? displayed : numberText(static_cast<float>(value));
}

bool hasFloat(GenApi::IFloat &number, double value, const std::string &text)
{
    const std::optional<double> wanted = numberOf<double>(text);
    if (wanted == value || text == displayedText(number, value))
        return true;
    return wanted && std::fabs(*wanted) <= std::numeric_limits<float>::max() && isFloat(value)
        && isSameFloat(*wanted, value) && isNarrow(number);
}

std::string lowerCase(std::string text)
{
    std::transform(text.begin(), text.end(), text.begin(),
                   [](char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c; });
    return text;
}

bool isSameText(GenApi::IValue &value, const std::string &left, const std::string &right)
{
    if (left == right)
        return true;
    if (GenApi::CIntegerPtr(&value).IsValid()) {
        const std::optional<int64_t> number = integerOf(left);
        return number && number == integerOf(right);
    }
    if (GenApi::CBooleanPtr(&value).IsValid())
        return left == (right == "true" ? "1" : right == "false" ? "0" : right);
    const GenApi::EInterfaceType type = value.GetNode()->GetPrincipalInterfaceType();
    return type == GenApi::intfIRegister && lowerCase(left) == lowerCase(right);
}

} // namespace

std::string nameOf(GenApi::IValue &value)
{
    return stringOf(value.GetNode()->GetName());
}

std::string storedText(GenApi::IValue &value, bool fresh)
{
    const GenApi::CFloatPtr number = &value;
    if (!number.IsValid())
        return stringOf(value.ToString(false, fresh));
    return storedFloat(*number, number->GetValue(false, fresh));
}

bool hasValue(GenApi::IValue &value, const std::string &text, bool fresh, std::string &found)
{
    const GenApi::CFloatPtr number = &value;
    if (!number.IsValid()) {
        found = stringOf(value.ToString(false, fresh));
        return isSameText(value, found, text);
    }
    const double present = number->GetValue(false, fresh);
    found = storedFloat(*number, present);
    return found == text || hasFloat(*number, present, text);
}

} // namespace Persistence
