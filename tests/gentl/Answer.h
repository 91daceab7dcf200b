// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <string>

#include "Devices/gentl/GenTL.h"

namespace TestProducer {

/// Where a call wants its answer: the type (if it wants one), the buffer (null: only the size) and its size.
struct Place
{
    GenTL::INFO_DATATYPE *type;
    void *buffer;
    std::size_t *size;
};

/// What an info function tells.
struct Fact
{
    GenTL::INFO_DATATYPE type;
    std::uint64_t number = 0;
    std::string text; ///< of texts and buffers
};

Fact text(std::string words);
Fact number(GenTL::INFO_DATATYPE type, std::uint64_t value);
inline Fact flag(bool value)
{
    return number(GenTL::INFO_DATATYPE_BOOL8, value);
}
inline Fact size(std::uint64_t value)
{
    return number(GenTL::INFO_DATATYPE_SIZET, value);
}
inline Fact word(std::int64_t value)
{
    return number(GenTL::INFO_DATATYPE_INT32, std::uint64_t(value));
}
inline Fact longWord(std::uint64_t value)
{
    return number(GenTL::INFO_DATATYPE_UINT64, value);
}
inline Fact address(const void *value)
{
    return number(GenTL::INFO_DATATYPE_PTR, reinterpret_cast<std::uintptr_t>(value));
}

/// Writes a fact as the standard says, unless the script has it wrong.
void answer(const Place &place, Fact fact);
/// As answer() for a function that tells a text only.
void answerText(char *text, std::size_t *size, std::string words);
/// Writes a number of things.
void answerCount(std::uint32_t *place, std::uint64_t count);

} // namespace TestProducer
