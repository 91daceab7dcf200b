// SPDX-License-Identifier: MIT
#include "FeatureTree/IntegerSpinBox.h"

#include <limits>

namespace {

constexpr qint64 lowest = std::numeric_limits<qint64>::min();
constexpr qint64 highest = std::numeric_limits<qint64>::max();

/// The nearest 64-bit integer; 2^63 itself is beyond them.
qint64 saturated(double value)
{
    if (value >= 9223372036854775808.0)
        return highest;
    return value <= -9223372036854775808.0 ? lowest : static_cast<qint64>(value);
}

/// value + count * step, stopping at the ends of the 64-bit integers.
qint64 stepped(qint64 value, int count, qint64 step)
{
    qint64 way = 0;
    qint64 result = 0;
    const bool isUp = (count > 0) == (step > 0);
    if (__builtin_mul_overflow(static_cast<qint64>(count), step, &way) || __builtin_add_overflow(value, way, &result))
        return isUp ? highest : lowest;
    return result;
}

} // namespace

IntegerSpinBox::IntegerSpinBox(QWidget *parent) : QDoubleSpinBox(parent)
{
    setDecimals(0);
}

void IntegerSpinBox::setExactRange(qint64 minimum, qint64 maximum)
{
    m_minimum = minimum;
    m_maximum = qMax(minimum, maximum);
    setRange(static_cast<double>(m_minimum), static_cast<double>(m_maximum));
}

void IntegerSpinBox::setExactStep(qint64 step)
{
    m_step = step;
    setSingleStep(static_cast<double>(step));
}

void IntegerSpinBox::setExactValue(qint64 value)
{
    m_exact = qBound(m_minimum, value, m_maximum);
    setValue(static_cast<double>(m_exact));
}

qint64 IntegerSpinBox::exactValue() const
{
    return static_cast<double>(m_exact) == value() ? m_exact : saturated(value());
}

void IntegerSpinBox::stepBy(int steps)
{
    interpretText();
    setExactValue(stepped(exactValue(), steps, m_step));
    selectAll();
}

QValidator::State IntegerSpinBox::validate(QString &text, int &) const
{
    const QString number = text.trimmed();
    if (number.isEmpty() || (number == QLatin1String("-") && m_minimum < 0))
        return QValidator::Intermediate;
    bool isNumber = false;
    const qint64 value = number.toLongLong(&isNumber);
    if (!isNumber || (value > m_maximum && value >= 0) || (value < m_minimum && value < 0))
        return QValidator::Invalid;
    return value < m_minimum || value > m_maximum ? QValidator::Intermediate : QValidator::Acceptable;
}

double IntegerSpinBox::valueFromText(const QString &text) const
{
    bool isNumber = false;
    const qint64 value = text.trimmed().toLongLong(&isNumber);
    if (isNumber)
        m_exact = value;
    return static_cast<double>(isNumber ? value : exactValue());
}

QString IntegerSpinBox::textFromValue(double value) const
{
    return QString::number(static_cast<double>(m_exact) == value ? m_exact : saturated(value));
}

QAbstractSpinBox::StepEnabled IntegerSpinBox::stepEnabled() const
{
    StepEnabled enabled = StepNone;
    if (exactValue() < m_maximum)
        enabled |= StepUpEnabled;
    if (exactValue() > m_minimum)
        enabled |= StepDownEnabled;
    return enabled;
}
