// SPDX-License-Identifier: MIT
#include "Formula.h"

#include <memory>
#include <optional>
#include <type_traits>

#include "FormulaArithmetic.h"
#include "FormulaParser.h"

namespace NodeEngine {

namespace {

// An array of count values, without an allocation for the usual few.
template <class T, std::size_t Few>
class Room
{
public:
    explicit Room(std::size_t count) : m_many(count > Few ? new T[count]() : nullptr) { }

    T *data() { return m_many ? m_many.get() : m_few; }

private:
    T m_few[Few];
    std::unique_ptr<T[]> m_many;
};

template <class Number>
class VariableValues
{
public:
    VariableValues(const Formula::Variable<Number> &variable, std::size_t count) : m_variable(variable), m_known(count)
    { }

    Number operator[](std::size_t slot)
    {
        std::optional<Number> &known = m_known.data()[slot];
        if (!known)
            known = m_variable(slot);
        return *known;
    }

private:
    const Formula::Variable<Number> &m_variable;
    Room<std::optional<Number>, 8> m_known;
};

} // namespace

Formula Formula::parse(std::string_view text, const std::vector<std::string> &declaredNames)
{
    Formula formula;
    formula.m_program = FormulaParser(text, declaredNames).parse();
    return formula;
}

template <class Number>
Number Formula::run(const Variable<Number> &variable) const
{
    if (m_program.steps.empty())
        return 0;
    VariableValues<Number> variables(variable, m_program.variables.size());
    Room<Number, 24> stack(m_program.stackSize);
    Number *top = stack.data() - 1;
    for (std::size_t next = 0; next < m_program.steps.size();) {
        const FormulaProgram::Step step = m_program.steps[next++];
        switch (step.op) {
        case FormulaOp::Constant:
            if constexpr (std::is_integral_v<Number>)
                *++top = m_program.constants[step.operand].integer;
            else
                *++top = m_program.constants[step.operand].real;
            break;
        case FormulaOp::Variable:
            *++top = variables[step.operand];
            break;
        case FormulaOp::Jump:
            next = step.operand;
            break;
        case FormulaOp::JumpIfZero:
            next = *top-- == 0 ? step.operand : next;
            break;
        case FormulaOp::JumpIfNotZero:
            next = *top-- != 0 ? step.operand : next;
            break;
        default:
            if (takesTwoValues(step.op))
                --top;
            *top = takesTwoValues(step.op) ? applied(step.op, top[0], top[1]) : applied(step.op, *top);
        }
    }
    return *top;
}

int64_t Formula::integerValue(const Variable<int64_t> &variable) const
{
    return run(variable);
}

double Formula::floatValue(const Variable<double> &variable) const
{
    return run(variable);
}

} // namespace NodeEngine
