// SPDX-License-Identifier: MIT
#include "FormulaParser.h"

#include <algorithm>
#include <charconv>

#include "FormulaArithmetic.h"

namespace NodeEngine {

struct FormulaParser::Operator
{
    std::string_view symbol;
    int precedence;
    FormulaOp op;
};

struct FormulaParser::Function
{
    std::string_view name;
    FormulaOp op;
};

namespace {

constexpr int HighestLevel = 256;
constexpr int PowerPrecedence = 11;
constexpr std::size_t QuotedLength = 120;

bool isDigit(char c)
{
    return c >= '0' && c <= '9';
}
bool isBlank(char c)
{
    return c == ' ' || (c >= '\t' && c <= '\r');
}
bool startsName(char c)
{
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || c == '_' || static_cast<unsigned char>(c) >= 0x80;
}
bool continuesName(char c)
{
    return startsName(c) || isDigit(c) || c == '.';
}

bool equalsIgnoringCase(std::string_view name, std::string_view upper)
{
    const auto same = [](char a, char b) { return (a >= 'a' && a <= 'z' ? a - 'a' + 'A' : a) == b; };
    return std::equal(name.begin(), name.end(), upper.begin(), upper.end(), same);
}

} // namespace

// A symbol stands before those that it begins with. && and || compile to jumps, their op names the jump.
const FormulaParser::Operator FormulaParser::Operators[] = {
    {"**", PowerPrecedence, FormulaOp::Power},
    {"*", 10, FormulaOp::Multiply},
    {"/", 10, FormulaOp::Divide},
    {"%", 10, FormulaOp::Remainder},
    {"+", 9, FormulaOp::Add},
    {"-", 9, FormulaOp::Subtract},
    {"<<", 8, FormulaOp::ShiftLeft},
    {">>", 8, FormulaOp::ShiftRight},
    {"<=", 7, FormulaOp::LessOrEqual},
    {">=", 7, FormulaOp::GreaterOrEqual},
    {"<>", 6, FormulaOp::NotEqual},
    {"<", 7, FormulaOp::Less},
    {">", 7, FormulaOp::Greater},
    {"==", 6, FormulaOp::Equal},
    {"=", 6, FormulaOp::Equal},
    {"!=", 6, FormulaOp::NotEqual},
    {"&&", 2, FormulaOp::JumpIfZero},
    {"||", 1, FormulaOp::JumpIfNotZero},
    {"&", 5, FormulaOp::BitAnd},
    {"^", 4, FormulaOp::BitXor},
    {"|", 3, FormulaOp::BitOr},
};

const FormulaParser::Function FormulaParser::Functions[] = {
    {"SGN", FormulaOp::Sign},    {"NEG", FormulaOp::Minus},   {"ABS", FormulaOp::Abs},     {"SQRT", FormulaOp::Sqrt},
    {"EXP", FormulaOp::Exp},     {"LN", FormulaOp::Ln},       {"LG", FormulaOp::Lg},       {"SIN", FormulaOp::Sin},
    {"COS", FormulaOp::Cos},     {"TAN", FormulaOp::Tan},     {"ASIN", FormulaOp::Asin},   {"ACOS", FormulaOp::Acos},
    {"ATAN", FormulaOp::Atan},   {"TRUNC", FormulaOp::Trunc}, {"FLOOR", FormulaOp::Floor}, {"CEIL", FormulaOp::Ceil},
    {"ROUND", FormulaOp::Round},
};

FormulaParser::FormulaParser(std::string_view text, const std::vector<std::string> &declaredNames)
    : m_text(text), m_declaredNames(declaredNames)
{ }

FormulaProgram FormulaParser::parse()
{
    skipBlanks();
    parseExpression();
    if (m_position != m_text.size())
        fail("an operator is expected");
    return std::move(m_program);
}

void FormulaParser::parseExpression()
{
    enterLevel();
    parseBinary(0);
    std::vector<std::size_t> ends;
    while (accept('?')) {
        const std::size_t toElse = emit(FormulaOp::JumpIfZero);
        parseExpression();
        expect(':');
        ends.push_back(emit(FormulaOp::Jump));
        --m_stackDepth; // only one of the branches leaves its value
        jumpFromHere(toElse);
        parseBinary(0);
    }
    for (std::size_t end : ends)
        jumpFromHere(end);
    --m_level;
}

// Precedence climbing: takes every operator that binds at least that tightly.
void FormulaParser::parseBinary(int lowestPrecedence)
{
    parseUnary();
    const Operator *next;
    while ((next = nextOperator()) && next->precedence >= lowestPrecedence) {
        m_position += next->symbol.size();
        skipBlanks();
        if (!takesTwoValues(next->op)) {
            parseLogical(*next);
        } else if (next->op == FormulaOp::Power) {
            enterLevel();
            parseBinary(PowerPrecedence);
            --m_level;
            emit(next->op);
        } else {
            parseBinary(next->precedence + 1);
            emit(next->op);
        }
    }
}

// The right side of && or ||, skipped where the left side decides.
void FormulaParser::parseLogical(const Operator &logical)
{
    const std::size_t decided = emit(logical.op);
    parseBinary(logical.precedence + 1);
    emit(FormulaOp::IsTrue);
    const std::size_t end = emit(FormulaOp::Jump);
    --m_stackDepth;
    jumpFromHere(decided);
    const int outcome = logical.op == FormulaOp::JumpIfNotZero ? 1 : 0;
    emitConstant(outcome, outcome);
    jumpFromHere(end);
}

void FormulaParser::parseUnary()
{
    std::vector<FormulaOp> signs;
    for (;;) {
        if (accept('-'))
            signs.push_back(FormulaOp::Minus);
        else if (accept('~'))
            signs.push_back(FormulaOp::BitNot);
        else if (accept('!'))
            signs.push_back(FormulaOp::Not);
        else if (!accept('+'))
            break;
    }
    parseOperand();
    for (auto sign = signs.rbegin(); sign != signs.rend(); ++sign)
        emit(*sign);
}

void FormulaParser::parseOperand()
{
    if (accept('(')) {
        parseExpression();
        expect(')');
    } else if (startsName(peek())) {
        parseName();
    } else if (isDigit(peek()) || peek() == '.') {
        parseNumber();
    } else {
        fail("a value is expected");
    }
    skipBlanks();
}

void FormulaParser::parseNumber()
{
    if (equalsIgnoringCase(m_text.substr(m_position, 2), "0X"))
        return parseHexNumber();
    const char *begin = m_text.data() + m_position;
    const char *end = m_text.data() + m_text.size();
    double real = 0;
    const auto [realEnd, error] = std::from_chars(begin, end, real);
    if (error != std::errc() || (realEnd != end && continuesName(*realEnd)))
        fail("a number is expected");
    uint64_t whole = 0;
    const auto [wholeEnd, wholeError] = std::from_chars(begin, end, whole);
    const bool isWhole = wholeEnd == realEnd && wholeError == std::errc();
    emitConstant(isWhole ? static_cast<int64_t>(whole) : nearestInteger(real), real);
    m_position += static_cast<std::size_t>(realEnd - begin);
}

// A bit pattern: with the 64th bit set it is negative in double too, so that masks work there.
void FormulaParser::parseHexNumber()
{
    m_position += 2;
    const char *begin = m_text.data() + m_position;
    const char *end = m_text.data() + m_text.size();
    uint64_t pattern = 0;
    const auto [digitsEnd, error] = std::from_chars(begin, end, pattern, 16);
    if (error != std::errc() || (digitsEnd != end && continuesName(*digitsEnd)))
        fail("a hexadecimal number of at most 64 bits is expected");
    const auto integer = static_cast<int64_t>(pattern);
    emitConstant(integer, static_cast<double>(integer));
    m_position += static_cast<std::size_t>(digitsEnd - begin);
}

// A name before a bracket is a function, for no variable can stand there; so variables may be called like functions.
void FormulaParser::parseName()
{
    const std::string_view name = takeName();
    if (!isDeclared(name) && (name == "PI" || name == "E"))
        parseConstant(name);
    else if (peek() == '(')
        parseCall(name);
    else
        emitVariable(name);
}

// PI or PI(), E or E().
void FormulaParser::parseConstant(std::string_view name)
{
    emitConstant(3, name == "PI" ? 3.14159265358979323846 : 2.71828182845904523536);
    if (accept('('))
        expect(')');
}

void FormulaParser::parseCall(std::string_view name)
{
    const auto isCalled = [name](const Function &function) { return equalsIgnoringCase(name, function.name); };
    const auto *function = std::find_if(std::begin(Functions), std::end(Functions), isCalled);
    if (function == std::end(Functions))
        fail("unknown function \"" + std::string(name) + "\"");
    expect('(');
    parseExpression();
    if (function->op == FormulaOp::Round && accept(',')) {
        parseExpression();
        emit(FormulaOp::RoundTo);
    } else {
        emit(function->op);
    }
    expect(')');
}

void FormulaParser::skipBlanks()
{
    while (isBlank(peek()))
        ++m_position;
}

bool FormulaParser::accept(char symbol)
{
    if (m_position == m_text.size() || m_text[m_position] != symbol)
        return false;
    ++m_position;
    skipBlanks();
    return true;
}

void FormulaParser::expect(char symbol)
{
    if (!accept(symbol))
        fail(std::string("\"") + symbol + "\" is expected");
}

const FormulaParser::Operator *FormulaParser::nextOperator()
{
    const std::string_view rest = m_text.substr(m_position);
    const auto isNext = [rest](const Operator &candidate) {
        return rest.substr(0, candidate.symbol.size()) == candidate.symbol;
    };
    const auto *found = std::find_if(std::begin(Operators), std::end(Operators), isNext);
    return found == std::end(Operators) ? nullptr : found;
}

std::string_view FormulaParser::takeName()
{
    const std::size_t begin = m_position;
    while (continuesName(peek()))
        ++m_position;
    const std::string_view name = m_text.substr(begin, m_position - begin);
    skipBlanks();
    return name;
}

std::size_t FormulaParser::emit(FormulaOp op, std::size_t operand)
{
    if (op <= FormulaOp::Variable)
        ++m_stackDepth;
    else if (op == FormulaOp::JumpIfZero || op == FormulaOp::JumpIfNotZero || takesTwoValues(op))
        --m_stackDepth;
    m_program.stackSize = std::max(m_program.stackSize, m_stackDepth);
    m_program.steps.push_back({op, static_cast<uint32_t>(operand)});
    return m_program.steps.size() - 1;
}

void FormulaParser::emitConstant(int64_t integer, double real)
{
    m_program.constants.push_back({integer, real});
    emit(FormulaOp::Constant, m_program.constants.size() - 1);
}

void FormulaParser::emitVariable(std::string_view name)
{
    std::vector<std::string> &names = m_program.variables;
    const auto known = std::find(names.begin(), names.end(), name);
    const auto slot = static_cast<std::size_t>(known - names.begin());
    if (known == names.end())
        names.emplace_back(name);
    emit(FormulaOp::Variable, slot);
}

void FormulaParser::jumpFromHere(std::size_t step)
{
    m_program.steps[step].operand = static_cast<uint32_t>(m_program.steps.size());
}

void FormulaParser::enterLevel()
{
    if (++m_level > HighestLevel)
        fail("nested too deeply");
}

bool FormulaParser::isDeclared(std::string_view name) const
{
    return std::find(m_declaredNames.begin(), m_declaredNames.end(), name) != m_declaredNames.end();
}

void FormulaParser::fail(const std::string &what) const
{
    throw FormulaError(what + " at position " + std::to_string(m_position + 1) + " of formula \""
                       + std::string(m_text.substr(0, QuotedLength)) + "\"");
}

} // namespace NodeEngine
