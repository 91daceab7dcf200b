// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>

/// Numbers of features as the row's spin boxes can hold them: 32-bit integers and finite floating-point numbers.
namespace NodeNumbers {

/// The low 32 bits of a feature's minimum, increment or value.
int low32(int64_t number);

/// The low 32 bits of a feature's maximum; 2147483647 when they are all ones (4294967295, 2^63 - 1) or when
/// they lie below `minimum`, the range's own low 32 bits, and so cannot bound anything.
int spinBoxMaximum(int64_t maximum, int minimum);

/// The nearest single-precision number, at most FLT_MAX in magnitude; `ifNan` for a NaN.
double singlePrecision(double number, double ifNan = 0.0);

/// The number itself, at most DBL_MAX in magnitude; `ifNan` for a NaN.
double finite(double number, double ifNan = 0.0);

} // namespace NodeNumbers
