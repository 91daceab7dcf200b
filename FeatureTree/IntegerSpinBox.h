// SPDX-License-Identifier: MIT
#pragma once

#include <QDoubleSpinBox>

/// A QDoubleSpinBox without decimals for 64-bit integers: what is loaded, typed or stepped is kept exactly, also beyond
/// the 53 bits that a double holds. Neither the locale nor group separators touch its text.
class IntegerSpinBox : public QDoubleSpinBox
{
    Q_OBJECT

public:
    explicit IntegerSpinBox(QWidget *parent = nullptr);

    /// Range, step and value; a value outside the range is moved to its nearer end.
    void setExactRange(qint64 minimum, qint64 maximum);
    void setExactStep(qint64 step);
    void setExactValue(qint64 value);
    /// What the box shows; typed text that is not finished counts after interpretText().
    qint64 exactValue() const;

    void stepBy(int steps) override;
    QValidator::State validate(QString &text, int &position) const override;
    double valueFromText(const QString &text) const override;
    QString textFromValue(double value) const override;

protected:
    StepEnabled stepEnabled() const override;

private:
    qint64 m_minimum = 0;
    qint64 m_maximum = 99;
    qint64 m_step = 1;
    mutable qint64 m_exact = 0; ///< the integer behind value(), as long as it converts to that
};
