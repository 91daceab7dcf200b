// SPDX-License-Identifier: MIT
#pragma once

#include "PanelBase/NumberField.h"

/// A QDoubleSpinBox without decimals for 64-bit integers: what is loaded, typed or stepped is kept exactly, also beyond
/// the 53 bits that a double holds. Neither the locale nor group separators touch its text.
class IntegerSpinBox : public NumberField<QDoubleSpinBox, qint64>
{
    Q_OBJECT

public:
    explicit IntegerSpinBox(QWidget *parent = nullptr);

protected:
    QString textOf(double value) const override;
};
