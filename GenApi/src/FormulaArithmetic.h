// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>

namespace NodeEngine {

/// Steps of a compiled formula: the machine's own ones, then what takes one value, then what takes two.
enum class FormulaOp : uint8_t {
    Constant,
    Variable,
    Jump,
    JumpIfZero,
    JumpIfNotZero,

    Minus,
    BitNot,
    Not,
    IsTrue,
    Sign,
    Abs,
    Sqrt,
    Exp,
    Ln,
    Lg,
    Sin,
    Cos,
    Tan,
    Asin,
    Acos,
    Atan,
    Trunc,
    Floor,
    Ceil,
    Round,

    Add,
    Subtract,
    Multiply,
    Divide,
    Remainder,
    Power,
    BitAnd,
    BitOr,
    BitXor,
    ShiftLeft,
    ShiftRight,
    Equal,
    NotEqual,
    Less,
    Greater,
    LessOrEqual,
    GreaterOrEqual,
    RoundTo
};

constexpr bool takesTwoValues(FormulaOp op)
{
    return op >= FormulaOp::Add;
}

/// The result of an operation on one or two values; truth is 1 or 0. Comparing, rounding and dividing are exact in
/// the number system of the arguments. Divisions by zero throw FormulaError, and so does an integer that is none.
int64_t applied(FormulaOp op, int64_t value);
double applied(FormulaOp op, double value);
int64_t applied(FormulaOp op, int64_t left, int64_t right);
double applied(FormulaOp op, double left, double right);

/// The nearest integer, halves away from zero, the end of the range for what lies outside.
/// \throws FormulaError if the value is not a number.
int64_t nearestInteger(double value);

} // namespace NodeEngine
