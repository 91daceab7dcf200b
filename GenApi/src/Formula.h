// SPDX-License-Identifier: MIT
#pragma once

#include "FormulaProgram.h"

#include <cstddef>
#include <cstdint>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

namespace NodeEngine {

/// An expression of a SwissKnife, IntSwissKnife, Converter or IntConverter, in the formula language of the GenICam
/// standard with the operator precedence of C.
///
/// Parsed once, evaluated any number of times, in exact 64-bit integers or in double. Immutable after parsing: one
/// formula may be evaluated by several threads, and a variable callback may evaluate any formula, this one included.
/// A formula that was not parsed is the constant 0.
class Formula
{
public:
    /// Value of the variable in a slot, an index into variables(). Whatever it throws leaves the evaluation.
    template <class Number>
    using Variable = std::function<Number(std::size_t slot)>;

    /// Parses a formula as it reads in the description, XML entities already replaced.
    /// \param declaredNames names that are variables even where they read like a constant (E, PI). Every other name
    ///        that is no constant and no function call becomes a variable as well, dotted names in one piece.
    /// \throws FormulaError if the text is no formula, or nested deeper than 256 levels.
    static Formula parse(std::string_view text, const std::vector<std::string> &declaredNames = {});

    /// The variables that occur in the formula, each once, in order of first mention; "X.Max" is one of its own.
    const std::vector<std::string> &variables() const { return m_program.variables; }

    /// The value in 64-bit integers: never through double but for the transcendental functions, whose results round
    /// like literals with a fraction do. Overflow wraps, shifts by 64 and more move everything out.
    /// Reads only what the taken branches of ?:, && and || need, each variable at most once.
    /// \throws FormulaError on a division by zero.
    int64_t integerValue(const Variable<int64_t> &variable) const;

    /// The value in double; bitwise operators work on the whole numbers nearest to zero. Infinities pass.
    /// Reads only what the taken branches of ?:, && and || need, each variable at most once.
    /// \throws FormulaError on a division by zero.
    double floatValue(const Variable<double> &variable) const;

private:
    template <class Number>
    Number run(const Variable<Number> &variable) const;

    FormulaProgram m_program;
};

} // namespace NodeEngine
