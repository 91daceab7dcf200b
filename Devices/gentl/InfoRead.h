// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <functional>
#include <optional>

#include <QByteArray>
#include <QString>

#include "Devices/gentl/GenTL.h"

/// One question of a producer that answers with a type and some bytes. With a null buffer it tells how many.
using InfoQuestion = std::function<GenTL::GC_ERROR(GenTL::INFO_DATATYPE *type, void *buffer, std::size_t *size)>;

/// What a producer answered.
struct InfoAnswer
{
    GenTL::GC_ERROR code = GenTL::GC_ERR_SUCCESS;
    GenTL::INFO_DATATYPE type = GenTL::INFO_DATATYPE_UNKNOWN;
    QByteArray bytes{};
    const char *complaint = ""; ///< why an answer cannot be used although the producer is content with it

    bool isGood() const { return code == GenTL::GC_ERR_SUCCESS; }
    /// Up to the first zero, if there is one. Empty without a good answer.
    QByteArray text() const;
    /// Of any type and width that holds a whole number; none without one.
    std::optional<std::uint64_t> number() const;
};

/// Asks for something of any size. Tolerated are sizes that are told as 0 or too small, that change between the
/// question for the size and the one for the data, and that are told larger than the data; more than 16 MB is refused.
InfoAnswer askInfo(const InfoQuestion &question);

/// A number, asked for with one call: for what is asked often.
template <class Question>
std::optional<std::uint64_t> askNumber(Question question);

/// How a person reads a text of a producer: it is UTF-8 or, from elder ones, Latin-1.
QString textForPeople(const QByteArray &text);

/// A number of `size` bytes in the byte order of this machine; none when that is no number.
std::optional<std::uint64_t> numberOf(GenTL::INFO_DATATYPE type, const void *bytes, std::size_t size);

template <class Question>
std::optional<std::uint64_t> askNumber(Question question)
{
    GenTL::INFO_DATATYPE type = GenTL::INFO_DATATYPE_UNKNOWN;
    std::uint64_t bytes = 0;
    std::size_t size = sizeof bytes;
    if (question(&type, static_cast<void *>(&bytes), &size) != GenTL::GC_ERR_SUCCESS)
        return std::nullopt;
    return numberOf(type, &bytes, size);
}
