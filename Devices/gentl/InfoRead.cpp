// SPDX-License-Identifier: MIT
#include "Devices/gentl/InfoRead.h"

#include <algorithm>
#include <cstring>

#include <QTextCodec>

namespace {

constexpr std::size_t LargestAnswer = 16 * 1024 * 1024; // bytes
/// What is offered at least: room for what is told too small, and for a final zero that is not counted.
constexpr std::size_t SmallestOffer = 1024; // bytes
constexpr int MostTries = 3; // for data that grow meanwhile

template <class Number>
std::uint64_t widened(const void *bytes)
{
    Number number;
    std::memcpy(&number, bytes, sizeof number);
    return static_cast<std::uint64_t>(number); // negative ones keep their value as a signed number
}

bool isSigned(GenTL::INFO_DATATYPE type)
{
    return type == GenTL::INFO_DATATYPE_INT16 || type == GenTL::INFO_DATATYPE_INT32
        || type == GenTL::INFO_DATATYPE_INT64 || type == GenTL::INFO_DATATYPE_PTRDIFF;
}

bool isNumber(GenTL::INFO_DATATYPE type)
{
    switch (type) {
    case GenTL::INFO_DATATYPE_STRING:
    case GenTL::INFO_DATATYPE_STRINGLIST:
    case GenTL::INFO_DATATYPE_FLOAT64:
    case GenTL::INFO_DATATYPE_BUFFER:
        return false;
    default:
        return true;
    }
}

} // namespace

QByteArray InfoAnswer::text() const
{
    return isGood() ? bytes.left(static_cast<int>(qstrnlen(bytes.constData(), static_cast<uint>(bytes.size()))))
                    : QByteArray();
}

std::optional<std::uint64_t> InfoAnswer::number() const
{
    return isGood() ? numberOf(type, bytes.constData(), static_cast<std::size_t>(bytes.size())) : std::nullopt;
}

InfoAnswer askInfo(const InfoQuestion &question)
{
    InfoAnswer answer;
    for (int tries = 0; tries < MostTries; ++tries) {
        std::size_t told = 0;
        answer.code = question(&answer.type, nullptr, &told);
        if (!answer.isGood() && answer.code != GenTL::GC_ERR_BUFFER_TOO_SMALL)
            return answer;
        if (told > LargestAnswer)
            return {GenTL::GC_ERR_INVALID_VALUE, answer.type, {}, "an answer of more than 16 MB is announced"};
        QByteArray bytes(static_cast<int>(std::max(told, SmallestOffer)), '\0');
        std::size_t size = static_cast<std::size_t>(bytes.size());
        answer.code = question(&answer.type, bytes.data(), &size);
        if (answer.isGood())
            answer.bytes = bytes.left(static_cast<int>(std::min(size, static_cast<std::size_t>(bytes.size()))));
        if (answer.code != GenTL::GC_ERR_BUFFER_TOO_SMALL)
            return answer;
    }
    return answer;
}

std::optional<std::uint64_t> numberOf(GenTL::INFO_DATATYPE type, const void *bytes, std::size_t size)
{
    if (!isNumber(type))
        return std::nullopt;
    switch (size) {
    case 1:
        return widened<std::uint8_t>(bytes);
    case 2:
        return isSigned(type) ? widened<std::int16_t>(bytes) : widened<std::uint16_t>(bytes);
    case 4:
        return isSigned(type) ? widened<std::int32_t>(bytes) : widened<std::uint32_t>(bytes);
    case 8:
        return widened<std::uint64_t>(bytes);
    default:
        return std::nullopt;
    }
}

QString textForPeople(const QByteArray &text)
{
    QTextCodec::ConverterState state;
    const QString utf8 = QTextCodec::codecForMib(106)->toUnicode(text.constData(), text.size(), &state);
    return state.invalidChars > 0 || state.remainingChars > 0 ? QString::fromLatin1(text) : utf8;
}
