// SPDX-License-Identifier: MIT
#pragma once

#include <QLocale>
#include <QString>

/// The shortest text that reads back to the value, without group signs, and without an exponent from 1e-4 to 1e15. A
/// value of single precision, as the tree writes them, gets no more digits than that has: 33.1, not 33.099998474121094.
QString floatText(double value, const QLocale &locale = QLocale::c());

/// A float that cannot be written: in single precision, with three digits behind the point.
QString readOnlyFloatText(double value);
