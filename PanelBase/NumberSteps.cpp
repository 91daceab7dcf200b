// SPDX-License-Identifier: MIT
#include "PanelBase/NumberSteps.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <limits>

#include <QString>

namespace {

constexpr double MostSteps = 4503599627370496.0; ///< 2^52; beyond it a double cannot tell one step from the next
constexpr double Noise = 1e-6; ///< of a step

/// Without the noise of binary fractions, which a person would see as another number.
double cleaned(double number)
{
    constexpr int Digits = 15;
    return QString::number(number, 'g', Digits).toDouble();
}

} // namespace

template <>
double NumberSteps<double>::from(double value, int count) const
{
    if (!(step > 0.0))
        return value;
    if (!onGrid)
        return std::clamp(value + count * step, minimum, maximum);
    const double origin = std::abs((value - minimum) / step) < MostSteps ? minimum : 0.0;
    const double last = std::floor((maximum - origin) / step + Noise);
    double place = (value - origin) / step;
    if (std::abs(place - std::round(place)) < Noise)
        place = std::round(place);
    place = std::min((count > 0 ? std::floor(place) : std::ceil(place)) + count, last);
    return std::clamp(cleaned(origin + place * step), minimum, maximum);
}

/// Distances are unsigned: they can be larger than the integers themselves.
template <>
qint64 NumberSteps<qint64>::from(qint64 value, int count) const
{
    if (step <= 0)
        return value;
    const auto length = static_cast<quint64>(step);
    const quint64 room = static_cast<quint64>(maximum) - static_cast<quint64>(minimum);
    const quint64 last = onGrid ? room - room % length : room;
    const quint64 place = static_cast<quint64>(std::clamp(value, minimum, maximum)) - static_cast<quint64>(minimum);
    const quint64 beside = onGrid ? place % length : 0;
    quint64 way = 0;
    if (__builtin_mul_overflow(static_cast<quint64>(std::abs(static_cast<qint64>(count))), length, &way))
        way = std::numeric_limits<quint64>::max();
    if (count < 0) {
        way = beside > 0 ? way - length + beside : way;
        return static_cast<qint64>(static_cast<quint64>(minimum) + (place - std::min(way, place)));
    }
    way -= std::min(beside, way);
    return static_cast<qint64>(static_cast<quint64>(minimum) + place + std::min(way, last - std::min(last, place)));
}
