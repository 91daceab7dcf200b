// SPDX-License-Identifier: MIT
#include "DescriptionEncoding.h"

#include <cstddef>

namespace NodeEngine {

namespace {

constexpr char32_t Replacement = 0xFFFD;

// Windows-1252 from 0x80 to 0x9F; unassigned bytes stay control characters.
constexpr char16_t Latin1Extras[32] = {0x20AC, 0x0081, 0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021,
                                       0x02C6, 0x2030, 0x0160, 0x2039, 0x0152, 0x008D, 0x017D, 0x008F,
                                       0x0090, 0x2018, 0x2019, 0x201C, 0x201D, 0x2022, 0x2013, 0x2014,
                                       0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0x009D, 0x017E, 0x0178};

unsigned byteAt(std::string_view bytes, std::size_t index)
{
    return static_cast<unsigned char>(bytes[index]);
}

void appendUtf8(std::string &text, char32_t code)
{
    const auto add = [&text](char32_t byte) { text.push_back(static_cast<char>(byte)); };
    if (code < 0x80)
        return add(code);
    if (code < 0x800) {
        add(0xC0 | code >> 6);
    } else if (code < 0x10000) {
        add(0xE0 | code >> 12);
        add(0x80 | (code >> 6 & 0x3F));
    } else {
        add(0xF0 | code >> 18);
        add(0x80 | (code >> 12 & 0x3F));
        add(0x80 | (code >> 6 & 0x3F));
    }
    add(0x80 | (code & 0x3F));
}

void appendLatin1(std::string &text, unsigned byte)
{
    appendUtf8(text, byte >= 0x80 && byte < 0xA0 ? Latin1Extras[byte - 0x80] : byte);
}

bool isContinued(std::string_view bytes, std::size_t begin, std::size_t length)
{
    if (begin + length > bytes.size())
        return false;
    for (std::size_t i = begin + 1; i < begin + length; ++i) {
        if ((byteAt(bytes, i) & 0xC0) != 0x80)
            return false;
    }
    return true;
}

// Length in bytes of the valid UTF-8 character at an index: no overlong forms, surrogates or codes above U+10FFFF.
// 0 if there is none.
std::size_t utf8Length(std::string_view bytes, std::size_t index)
{
    const unsigned first = byteAt(bytes, index);
    const std::size_t length = first < 0x80 ? 1 : first < 0xC2 ? 0 : first < 0xE0 ? 2 : first < 0xF0 ? 3 : 4;
    if (length < 2)
        return length;
    if (first > 0xF4 || !isContinued(bytes, index, length))
        return 0;
    const unsigned second = byteAt(bytes, index + 1);
    const bool isOutside = (first == 0xE0 && second < 0xA0) || (first == 0xED && second > 0x9F)
        || (first == 0xF0 && second < 0x90) || (first == 0xF4 && second > 0x8F);
    return isOutside ? 0 : length;
}

// One pass without branches, for nearly every description is plain ASCII.
bool isAscii(std::string_view bytes)
{
    unsigned char all = 0;
    for (char byte : bytes)
        all = static_cast<unsigned char>(all | static_cast<unsigned char>(byte));
    return all < 0x80;
}

} // namespace

std::string utf8FromUtf16(std::string_view bytes, bool bigEndian)
{
    const auto unitAt = [&](std::size_t index) -> char32_t {
        const unsigned first = byteAt(bytes, 2 * index);
        const unsigned second = byteAt(bytes, 2 * index + 1);
        return bigEndian ? first << 8 | second : second << 8 | first;
    };
    const auto isHalf = [](char32_t unit, char32_t which) { return (unit & 0xFC00) == which; };
    const std::size_t units = bytes.size() / 2;
    std::string text;
    text.reserve(units);
    for (std::size_t i = 0; i < units; ++i) {
        const char32_t unit = unitAt(i);
        if (!isHalf(unit, 0xD800) && !isHalf(unit, 0xDC00)) {
            appendUtf8(text, unit);
        } else if (isHalf(unit, 0xD800) && i + 1 < units && isHalf(unitAt(i + 1), 0xDC00)) {
            appendUtf8(text, 0x10000 + ((unit & 0x3FF) << 10) + (unitAt(++i) & 0x3FF));
        } else {
            appendUtf8(text, Replacement);
        }
    }
    if (bytes.size() % 2 != 0)
        appendUtf8(text, Replacement);
    return text;
}

std::string utf8FromLatin1(std::string_view bytes)
{
    std::string text;
    text.reserve(bytes.size() + bytes.size() / 16);
    for (std::size_t i = 0; i < bytes.size(); ++i)
        appendLatin1(text, byteAt(bytes, i));
    return text;
}

std::string repairedUtf8(std::string_view bytes)
{
    if (isAscii(bytes))
        return std::string(bytes);
    std::string text;
    text.reserve(bytes.size() + bytes.size() / 16);
    for (std::size_t i = 0; i < bytes.size();) {
        if (const std::size_t length = utf8Length(bytes, i)) {
            text.append(bytes, i, length);
            i += length;
        } else {
            appendLatin1(text, byteAt(bytes, i++));
        }
    }
    return text;
}

} // namespace NodeEngine
