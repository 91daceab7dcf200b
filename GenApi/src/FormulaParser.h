// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "FormulaProgram.h"

namespace NodeEngine {

/// Compiles the text of one formula to the steps of a stack machine, in one pass. One object parses one formula.
class FormulaParser
{
public:
    FormulaParser(std::string_view text, const std::vector<std::string> &declaredNames);

    FormulaProgram parse();

private:
    struct Operator;
    struct Function;
    static const Operator Operators[];
    static const Function Functions[];

    void parseExpression();
    void parseBinary(int lowestPrecedence);
    void parseLogical(const Operator &logical);
    void parseUnary();
    void parseOperand();
    void parseNumber();
    void parseHexNumber();
    void parseName();
    void parseConstant(std::string_view name);
    void parseCall(std::string_view name);

    void skipBlanks();
    char peek() const { return m_position < m_text.size() ? m_text[m_position] : '\0'; }
    bool accept(char symbol);
    void expect(char symbol);
    const Operator *nextOperator();
    std::string_view takeName();

    std::size_t emit(FormulaOp op, std::size_t operand = 0);
    void emitConstant(int64_t integer, double real);
    void emitVariable(std::string_view name);
    void jumpFromHere(std::size_t step);
    void enterLevel();
    bool isDeclared(std::string_view name) const;
    [[noreturn]] void fail(const std::string &what) const;

    std::string_view m_text;
    const std::vector<std::string> &m_declaredNames;
    std::size_t m_position = 0;
    std::size_t m_stackDepth = 0;
    int m_level = 0;
    FormulaProgram m_program;
};

} // namespace NodeEngine
