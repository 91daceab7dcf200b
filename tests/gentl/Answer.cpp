// SPDX-License-Identifier: MIT
#include "tests/gentl/Answer.h"

#include <cstring>
#include <utility>

#include "tests/gentl/Failure.h"
#include "tests/gentl/Faults.h"

using namespace GenTL;

namespace TestProducer {

namespace {

using Kind = Faults::Kind;

std::size_t sizeOf(INFO_DATATYPE type)
{
    switch (type) {
    case INFO_DATATYPE_BOOL8:
        return 1;
    case INFO_DATATYPE_INT16:
    case INFO_DATATYPE_UINT16:
        return 2;
    case INFO_DATATYPE_INT32:
    case INFO_DATATYPE_UINT32:
        return 4;
    default:
        return 8;
    }
}

bool isNumber(const Fact &fact)
{
    return fact.type != INFO_DATATYPE_STRING && fact.type != INFO_DATATYPE_BUFFER;
}

/// What the script makes of it.
void distort(Fact &fact)
{
    if (isNumber(fact)) {
        fact.number = Faults::instance().number(Kind::Value).value_or(fact.number);
        fact.type = INFO_DATATYPE(Faults::instance().number(Kind::Type).value_or(std::uint64_t(fact.type)));
        return;
    }
    if (const auto words = Faults::instance().text(); words && fact.type == INFO_DATATYPE_STRING)
        fact.text = *words + '\0';
    if (fact.type == INFO_DATATYPE_STRING && Faults::instance().number(Kind::Unterminated))
        fact.text.pop_back();
}

void write(const Place &place, const void *data, std::size_t length)
{
    if (!place.buffer) {
        *place.size = Faults::instance().number(Kind::Size).value_or(length);
        return;
    }
    const std::size_t needed = length + (Faults::instance().number(Kind::Grow) ? 16 : 0);
    const bool fits = *place.size >= needed;
    *place.size = needed;
    require(fits, GC_ERR_BUFFER_TOO_SMALL, "the buffer is too small");
    std::memcpy(place.buffer, data, length);
}

} // namespace

Fact text(std::string words)
{
    words += '\0';
    return {INFO_DATATYPE_STRING, 0, std::move(words)};
}

Fact number(INFO_DATATYPE type, std::uint64_t value)
{
    return {type, value, {}};
}

void answer(const Place &place, Fact fact)
{
    require(place.size, GC_ERR_INVALID_PARAMETER, "there is no place for the size");
    distort(fact);
    if (place.type)
        *place.type = fact.type;
    if (isNumber(fact))
        write(place, &fact.number, sizeOf(fact.type));
    else
        write(place, fact.text.data(), fact.text.size());
}

void answerText(char *words, std::size_t *size, std::string value)
{
    answer({nullptr, words, size}, text(std::move(value)));
}

void answerCount(std::uint32_t *place, std::uint64_t count)
{
    require(place, GC_ERR_INVALID_PARAMETER, "there is no place for the number");
    *place = std::uint32_t(Faults::instance().number(Kind::Value).value_or(count));
}

} // namespace TestProducer
