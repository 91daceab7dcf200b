// SPDX-License-Identifier: MIT
#include "FeatureTree/AddressText.h"

#include <QStringList>

namespace {

/// The lowest `count` bytes of `value`, most significant first.
QString bytesText(unsigned long long value, int count)
{
    QStringList bytes;
    for (int shift = 8 * (count - 1); shift >= 0; shift -= 8)
        bytes.append(QString::number((value >> shift) & 0xff));
    return bytes.join(QLatin1Char('.'));
}

} // namespace

QString IPV4IntegerToString(unsigned int value)
{
    return bytesText(value, 4);
}

QString MACIntegerToString(unsigned long long value)
{
    return bytesText(value, 6);
}

int IPV4StringToInteger(const QString &text)
{
    const QStringList parts = text.split(QLatin1Char('.'));
    if (parts.size() != 4)
        return 0;
    unsigned int value = 0;
    for (int i = 0; i < 4; ++i)
        value |= static_cast<unsigned int>(parts.at(i).toInt()) << (24 - 8 * i);
    return static_cast<int>(value);
}
