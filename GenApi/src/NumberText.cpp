// SPDX-License-Identifier: MIT
#include "NumberText.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <cstdio>
#include <limits>

namespace NodeEngine {

namespace {

bool isBlank(char c)
{
    return c == ' ' || (c >= '\t' && c <= '\r');
}

std::string_view trimmed(std::string_view text)
{
    while (!text.empty() && isBlank(text.front()))
        text.remove_prefix(1);
    while (!text.empty() && isBlank(text.back()))
        text.remove_suffix(1);
    return text;
}

bool takeSign(std::string_view &text)
{
    const bool negative = !text.empty() && text.front() == '-';
    if (!text.empty() && (text.front() == '-' || text.front() == '+'))
        text.remove_prefix(1);
    return negative;
}

int takeBase(std::string_view &text)
{
    if (text.size() < 2 || text[0] != '0' || (text[1] != 'x' && text[1] != 'X'))
        return 10;
    text.remove_prefix(2);
    return 16;
}

struct Magnitude
{
    uint64_t value;
    std::size_t length; // characters used
    bool overflow;
};

Magnitude magnitudeOf(std::string_view digits, int base)
{
    uint64_t value = 0;
    const auto result = std::from_chars(digits.data(), digits.data() + digits.size(), value, base);
    return {value, static_cast<std::size_t>(result.ptr - digits.data()), result.ec == std::errc::result_out_of_range};
}

int64_t negatedIf(bool negative, uint64_t magnitude)
{
    return static_cast<int64_t>(negative ? ~magnitude + 1 : magnitude);
}

} // namespace

std::optional<int64_t> integerOfDescription(std::string_view text)
{
    std::string_view digits = trimmed(text);
    const bool negative = takeSign(digits);
    const int base = takeBase(digits);
    const Magnitude magnitude = magnitudeOf(digits, base);
    if (magnitude.length == digits.size() && magnitude.length > 0 && !magnitude.overflow)
        return negatedIf(negative, magnitude.value);
    const std::optional<double> real = floatOfDescription(text);
    if (!real || std::isnan(*real))
        return std::nullopt;
    return saturatedInteger(*real);
}

std::optional<double> floatOfDescription(std::string_view text)
{
    return floatOfText(trimmed(text));
}

std::optional<int64_t> integerOfText(std::string_view text)
{
    std::string_view digits = trimmed(text);
    const bool negative = takeSign(digits);
    const int base = takeBase(digits);
    const Magnitude magnitude = magnitudeOf(digits, base);
    if (magnitude.length == 0)
        return std::nullopt;
    constexpr uint64_t Most = std::numeric_limits<int64_t>::max();
    if (magnitude.overflow || magnitude.value > Most)
        return negative ? std::numeric_limits<int64_t>::min() : std::numeric_limits<int64_t>::max();
    return negatedIf(negative, magnitude.value);
}

std::optional<double> floatOfText(std::string_view text)
{
    std::string_view digits = trimmed(text);
    const bool negative = takeSign(digits);
    if (takeBase(digits) == 16) {
        const Magnitude magnitude = magnitudeOf(digits, 16);
        const auto value = static_cast<double>(magnitude.value);
        return magnitude.length == 0 ? std::nullopt : std::optional<double>(negative ? -value : value);
    }
    double value = 0;
    const auto result = std::from_chars(digits.data(), digits.data() + digits.size(), value);
    if (result.ec == std::errc::invalid_argument)
        return std::nullopt;
    if (result.ec == std::errc::result_out_of_range)
        value = std::find(digits.data(), result.ptr, '-') == result.ptr ? std::numeric_limits<double>::infinity() : 0;
    return negative ? -value : value;
}

std::optional<int64_t> ipv4OfText(std::string_view text)
{
    text = trimmed(text);
    int64_t address = 0;
    for (int part = 0; part < 4; ++part) {
        const Magnitude magnitude = magnitudeOf(text, 10);
        if (magnitude.length == 0 || magnitude.length > 3 || magnitude.value > 255)
            return std::nullopt;
        address = address << 8 | static_cast<int64_t>(magnitude.value);
        text.remove_prefix(magnitude.length);
        if (part < 3 && (text.empty() || text.front() != '.'))
            return std::nullopt;
        text.remove_prefix(part < 3 ? 1 : 0);
    }
    return text.empty() ? std::optional<int64_t>(address) : std::nullopt;
}

std::optional<int64_t> macOfText(std::string_view text)
{
    text = trimmed(text);
    if (text.size() != 17)
        return std::nullopt;
    int64_t address = 0;
    for (std::size_t at = 0; at < text.size(); at += 3) {
        const Magnitude magnitude = magnitudeOf(text.substr(at, 2), 16);
        if (magnitude.length != 2 || (at + 2 < text.size() && text[at + 2] != ':'))
            return std::nullopt;
        address = address << 8 | static_cast<int64_t>(magnitude.value);
    }
    return address;
}

int64_t saturatedInteger(double value)
{
    if (value >= 9223372036854775807.0)
        return std::numeric_limits<int64_t>::max();
    return value <= -9223372036854775808.0 ? std::numeric_limits<int64_t>::min() : std::llround(value);
}

std::string decimalText(int64_t value)
{
    return std::to_string(value);
}

std::string hexText(int64_t value)
{
    char buffer[24]; // 0 stands without a prefix
    std::snprintf(buffer, sizeof buffer, "%#llx", static_cast<unsigned long long>(value));
    return buffer;
}

std::string ipv4Text(int64_t value)
{
    std::string text;
    for (int shift = 24; shift >= 0; shift -= 8)
        text += (text.empty() ? "" : ".") + std::to_string(value >> shift & 0xff);
    return text;
}

std::string macText(int64_t value)
{
    std::string text;
    for (int shift = 40; shift >= 0; shift -= 8) {
        char part[8];
        std::snprintf(part, sizeof part, "%s%02x", text.empty() ? "" : ":",
                      static_cast<unsigned>(value >> shift & 0xff));
        text += part;
    }
    return text;
}

std::string floatText(double value, FloatForm form, int64_t precision)
{
    const std::chars_format format = form == FloatForm::Fixed ? std::chars_format::fixed
        : form == FloatForm::Scientific                       ? std::chars_format::scientific
                                                              : std::chars_format::general;
    char buffer[400]; // the longest double has 309 digits before the point
    const int digits = static_cast<int>(std::clamp<int64_t>(precision, 0, 60));
    const auto result = std::to_chars(buffer, buffer + sizeof buffer, value, format, digits);
    return std::string(buffer, result.ptr);
}

} // namespace NodeEngine
