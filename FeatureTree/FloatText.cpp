// SPDX-License-Identifier: MIT
#include "FeatureTree/FloatText.h"

#include <cmath>
#include <limits>

namespace {

constexpr double SmallestPlain = 1e-4;
constexpr double LargestPlain = 1e15;

/// The number with the fewest decimal digits that is the same in single precision; `value` itself if it has more.
double withoutExcessDigits(double value)
{
    const auto single = static_cast<float>(value);
    if (static_cast<double>(single) != value || value == std::trunc(value))
        return value;
    int digits = std::numeric_limits<float>::digits10; // max_digits10 always do
    double rounded = value;
    do
        rounded = QString::number(value, 'g', digits).toDouble();
    while (static_cast<float>(rounded) != single && ++digits <= std::numeric_limits<float>::max_digits10);
    return rounded;
}

} // namespace

QString floatText(double value, const QLocale &locale)
{
    const double magnitude = std::abs(value);
    const bool isPlain = value == 0 || (magnitude >= SmallestPlain && magnitude <= LargestPlain);
    QLocale ungrouped = locale;
    ungrouped.setNumberOptions(locale.numberOptions() | QLocale::OmitGroupSeparator);
    return ungrouped.toString(withoutExcessDigits(value), isPlain ? 'f' : 'g', QLocale::FloatingPointShortest);
}

QString readOnlyFloatText(double value)
{
    return QString::number(static_cast<double>(static_cast<float>(value)), 'f', 3);
}
