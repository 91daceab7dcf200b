// SPDX-License-Identifier: MIT
#include "FeatureTree/IntegerSpinBox.h"

IntegerSpinBox::IntegerSpinBox(QWidget *parent) : NumberField(parent)
{
    setDecimals(0);
}

QString IntegerSpinBox::textOf(double value) const
{
    return QString::number(exact(value));
}
