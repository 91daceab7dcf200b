// SPDX-License-Identifier: MIT
#include "FormulaArithmetic.h"

#include <cmath>
#include <limits>

#include "FormulaProgram.h"

namespace NodeEngine {

namespace {

constexpr double TwoTo63 = 9223372036854775808.0;
constexpr int64_t Lowest = std::numeric_limits<int64_t>::min();
constexpr int64_t Highest = std::numeric_limits<int64_t>::max();

// Two's complement arithmetic that wraps: unsigned inside, since signed overflow is undefined.
uint64_t bits(int64_t value)
{
    return static_cast<uint64_t>(value);
}
int64_t wrapped(uint64_t value)
{
    return static_cast<int64_t>(value);
}

// The whole part; from 2^63 to 2^64 the bit pattern of an unsigned register, beyond it the end of the range.
int64_t truncated(double value)
{
    if (std::isnan(value))
        throw FormulaError("not a number where an integer is needed");
    if (value >= TwoTo63)
        return value < 2 * TwoTo63 ? wrapped(static_cast<uint64_t>(value)) : Highest;
    return value < -TwoTo63 ? Lowest : static_cast<int64_t>(value);
}

template <class Number>
Number nonZero(Number divisor)
{
    if (divisor == 0)
        throw FormulaError("division by zero");
    return divisor;
}

template <class Number>
Number sign(Number value)
{
    return static_cast<Number>((value > 0) - (value < 0));
}

int64_t quotient(int64_t left, int64_t right)
{
    return nonZero(right) == -1 ? wrapped(0 - bits(left)) : left / right;
}

int64_t remainder(int64_t left, int64_t right)
{
    return nonZero(right) == -1 ? 0 : left % right;
}

int64_t power(int64_t base, int64_t exponent)
{
    if (exponent < 0) {
        const int64_t inverse = base == 1 || base == -1 ? base : quotient(1, base);
        return exponent % 2 == 0 ? inverse * inverse : inverse;
    }
    uint64_t result = 1;
    for (uint64_t factor = bits(base); exponent != 0; exponent >>= 1, factor *= factor) {
        if (exponent & 1)
            result *= factor;
    }
    return wrapped(result);
}

bool shiftsEverythingOut(int64_t count)
{
    return count < 0 || count > 63;
}

int64_t shiftedLeft(int64_t value, int64_t count)
{
    return shiftsEverythingOut(count) ? 0 : wrapped(bits(value) << count);
}

int64_t shiftedRight(int64_t value, int64_t count)
{
    return value >> (shiftsEverythingOut(count) ? 63 : count);
}

double roundedTo(double value, double decimals)
{
    const double scale = std::pow(10.0, std::trunc(decimals));
    const double scaled = std::round(value * scale) / scale;
    return std::isfinite(scaled) ? scaled : value;
}

// What C++ writes alike for both number systems.
template <class Number>
Number compared(FormulaOp op, Number left, Number right)
{
    switch (op) {
    case FormulaOp::Equal:
        return left == right;
    case FormulaOp::NotEqual:
        return left != right;
    case FormulaOp::Less:
        return left < right;
    case FormulaOp::Greater:
        return left > right;
    case FormulaOp::LessOrEqual:
        return left <= right;
    default:
        return left >= right;
    }
}

double transcendental(FormulaOp op, double value)
{
    switch (op) {
    case FormulaOp::Sqrt:
        return std::sqrt(value);
    case FormulaOp::Exp:
        return std::exp(value);
    case FormulaOp::Ln:
        return std::log(value);
    case FormulaOp::Lg:
        return std::log10(value);
    case FormulaOp::Sin:
        return std::sin(value);
    case FormulaOp::Cos:
        return std::cos(value);
    case FormulaOp::Tan:
        return std::tan(value);
    case FormulaOp::Asin:
        return std::asin(value);
    case FormulaOp::Acos:
        return std::acos(value);
    default:
        return std::atan(value);
    }
}

} // namespace

int64_t nearestInteger(double value)
{
    const double rounded = std::round(value);
    return rounded >= TwoTo63 ? Highest : truncated(rounded);
}

int64_t applied(FormulaOp op, int64_t value)
{
    switch (op) {
    case FormulaOp::Minus:
        return wrapped(0 - bits(value));
    case FormulaOp::BitNot:
        return ~value;
    case FormulaOp::Not:
        return value == 0;
    case FormulaOp::IsTrue:
        return value != 0;
    case FormulaOp::Sign:
        return sign(value);
    case FormulaOp::Abs:
        return value < 0 ? wrapped(0 - bits(value)) : value;
    case FormulaOp::Trunc:
    case FormulaOp::Floor:
    case FormulaOp::Ceil:
    case FormulaOp::Round:
        return value;
    default:
        return nearestInteger(transcendental(op, static_cast<double>(value)));
    }
}

double applied(FormulaOp op, double value)
{
    switch (op) {
    case FormulaOp::Minus:
        return -value;
    case FormulaOp::BitNot:
        return static_cast<double>(~truncated(value));
    case FormulaOp::Not:
        return value == 0;
    case FormulaOp::IsTrue:
        return value != 0;
    case FormulaOp::Sign:
        return sign(value);
    case FormulaOp::Abs:
        return std::fabs(value);
    case FormulaOp::Trunc:
        return std::trunc(value);
    case FormulaOp::Floor:
        return std::floor(value);
    case FormulaOp::Ceil:
        return std::ceil(value);
    case FormulaOp::Round:
        return std::round(value);
    default:
        return transcendental(op, value);
    }
}

int64_t applied(FormulaOp op, int64_t left, int64_t right)
{
    switch (op) {
    case FormulaOp::Add:
        return wrapped(bits(left) + bits(right));
    case FormulaOp::Subtract:
        return wrapped(bits(left) - bits(right));
    case FormulaOp::Multiply:
        return wrapped(bits(left) * bits(right));
    case FormulaOp::Divide:
        return quotient(left, right);
    case FormulaOp::Remainder:
        return remainder(left, right);
    case FormulaOp::Power:
        return power(left, right);
    case FormulaOp::BitAnd:
        return left & right;
    case FormulaOp::BitOr:
        return left | right;
    case FormulaOp::BitXor:
        return left ^ right;
    case FormulaOp::ShiftLeft:
        return shiftedLeft(left, right);
    case FormulaOp::ShiftRight:
        return shiftedRight(left, right);
    case FormulaOp::RoundTo:
        return left;
    default:
        return compared(op, left, right);
    }
}

double applied(FormulaOp op, double left, double right)
{
    switch (op) {
    case FormulaOp::Add:
        return left + right;
    case FormulaOp::Subtract:
        return left - right;
    case FormulaOp::Multiply:
        return left * right;
    case FormulaOp::Divide:
        return left / nonZero(right);
    case FormulaOp::Remainder:
        return std::fmod(left, nonZero(right));
    case FormulaOp::Power:
        return std::pow(left, right);
    case FormulaOp::BitAnd:
    case FormulaOp::BitOr:
    case FormulaOp::BitXor:
    case FormulaOp::ShiftLeft:
    case FormulaOp::ShiftRight:
        return static_cast<double>(applied(op, truncated(left), truncated(right)));
    case FormulaOp::RoundTo:
        return roundedTo(left, right);
    default:
        return compared(op, left, right);
    }
}

} // namespace NodeEngine
