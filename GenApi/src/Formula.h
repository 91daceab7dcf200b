// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

namespace NodeEngine {

enum class FormulaOp : uint8_t;

/// A formula that cannot be parsed (the text says what and at which position) or evaluated (division by zero).
class FormulaError : public std::runtime_error
{
public:
    using std::runtime_error::runtime_error;
};

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
    const std::vector<std::string> &variables() const { return m_variables; }

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
    friend class FormulaParser;

    // One step of the stack machine that the formula is compiled to. What the operand means depends on the
    // operation: index of a constant, slot of a variable, or the step to jump to.
    struct Step
    {
        FormulaOp op;
        uint32_t operand;
    };
    // A literal in both number systems.
    struct Constant
    {
        int64_t integer;
        double real;
    };

    template <class Number>
    Number run(const Variable<Number> &variable) const;

    std::vector<Step> m_steps;
    std::vector<Constant> m_constants;
    std::vector<std::string> m_variables;
    std::size_t m_stackSize = 0;
};

} // namespace NodeEngine
