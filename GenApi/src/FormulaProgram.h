// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <cstdint>
#include <stdexcept>
#include <string>
#include <vector>

namespace NodeEngine {

enum class FormulaOp : uint8_t;

/// A formula that cannot be parsed (the text says what and at which position) or evaluated (division by zero).
class FormulaError : public std::runtime_error
{
public:
    using std::runtime_error::runtime_error;
};

/// A formula as the parser leaves it: steps of a stack machine.
struct FormulaProgram
{
    /// What the operand means depends on the operation: index of a constant, slot of a variable, or the step to jump
    /// to.
    struct Step
    {
        FormulaOp op;
        uint32_t operand;
    };
    /// A literal in both number systems.
    struct Constant
    {
        int64_t integer;
        double real;
    };

    std::vector<Step> steps;
    std::vector<Constant> constants;
    std::vector<std::string> variables;
    std::size_t stackSize = 0;
};

} // namespace NodeEngine
