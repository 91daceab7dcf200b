// SPDX-License-Identifier: MIT
#pragma once

#include <QtGlobal>

/// Where steps lead: by `step`, or along the values minimum + n * step that a feature with a fixed increment can take.
/// They stop at the last value inside the limits. Number is double or qint64.
template <class Number>
struct NumberSteps
{
    Number minimum;
    Number maximum;
    Number step; ///< with one that is not above 0 every value stays as it is
    bool onGrid;

    /// The value `count` steps from another one, downwards for a negative count. From beside the grid the first step
    /// leads to the next value on it.
    Number from(Number value, int count) const;
};

template <>
double NumberSteps<double>::from(double value, int count) const;
template <>
qint64 NumberSteps<qint64>::from(qint64 value, int count) const;
