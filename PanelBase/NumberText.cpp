// SPDX-License-Identifier: MIT
#include "PanelBase/NumberText.h"

#include <cmath>

namespace {

/// Reads the digits and signs of its language, but no groups.
QLocale withoutGroups(QLocale locale)
{
    locale.setNumberOptions(QLocale::RejectGroupSeparator);
    return locale;
}

} // namespace

template <>
std::optional<double> NumberText::parse(const QString &text, const QLocale &locale)
{
    bool isNumber = false;
    double number = QString(text).replace(QLatin1Char(','), QLatin1Char('.')).toDouble(&isNumber);
    if (!isNumber)
        number = withoutGroups(locale).toDouble(text.trimmed(), &isNumber);
    return isNumber && std::isfinite(number) ? std::optional(number) : std::nullopt;
}

template <>
std::optional<qint64> NumberText::parse(const QString &text, const QLocale &locale)
{
    bool isNumber = false;
    qint64 number = text.toLongLong(&isNumber);
    if (!isNumber)
        number = withoutGroups(locale).toLongLong(text.trimmed(), &isNumber);
    return isNumber ? std::optional(number) : std::nullopt;
}

QString NumberText::limit(double number)
{
    constexpr int Digits = 15;
    return QString::number(number, 'g', Digits);
}

QString NumberText::limit(qint64 number)
{
    return QString::number(number);
}
