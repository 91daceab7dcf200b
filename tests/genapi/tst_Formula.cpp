// SPDX-License-Identifier: MIT
#include <QtTest>

#include <cmath>
#include <cstring>
#include <limits>
#include <map>

#include "GenApi/src/Formula.h"
#include "TableRows.h"

using NodeEngine::Formula;
using NodeEngine::FormulaError;

namespace {

constexpr int64_t Lowest = std::numeric_limits<int64_t>::min();
constexpr int64_t Highest = std::numeric_limits<int64_t>::max();
const double Infinity = std::numeric_limits<double>::infinity();

// Variables by name; counts how often each is read, and throws for a name that it does not have.
class Variables
{
public:
    std::map<std::string, double> reals;
    std::map<std::string, int64_t> integers;
    std::map<std::string, int> reads;

    int64_t integerValue(const std::string &text, const std::vector<std::string> &declared = {})
    {
        const Formula formula = Formula::parse(text, declared);
        return formula.integerValue([&](std::size_t slot) { return read(integers, formula.variables().at(slot)); });
    }
    double floatValue(const std::string &text, const std::vector<std::string> &declared = {})
    {
        const Formula formula = Formula::parse(text, declared);
        return formula.floatValue([&](std::size_t slot) { return read(reals, formula.variables().at(slot)); });
    }

private:
    template <class Number>
    Number read(const std::map<std::string, Number> &values, const std::string &name)
    {
        ++reads[name];
        return values.at(name);
    }
};

std::string errorOf(const std::string &text)
{
    try {
        Formula::parse(text);
    } catch (const FormulaError &error) {
        return error.what();
    }
    return {};
}

std::string repeated(const std::string &text, int times)
{
    std::string all;
    for (int i = 0; i < times; ++i)
        all += text;
    return all;
}

} // namespace

class tst_Formula : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    // What exact 64-bit arithmetic must give where double, or C's undefined cases, would not.
    void integers()
    {
        // clang-format off
        const Row<int64_t> rows[] = {
            {"9007199254740993 + 0", 9007199254740993}, {"X * 3 / 3", 1234567890123456789},
            {"0x7FFFFFFFFFFFFFFF", Highest}, {"9223372036854775807 - 1", Highest - 1}, {"18446744073709551615", -1},
            {"0xFFFFFFFFFFFFFFFF", -1}, {"HIGH + 1", Lowest}, {"LOW - 1", Highest}, {"HIGH * 2", -2},
            {"-LOW", Lowest}, {"ABS(LOW)", Lowest}, {"LOW / -1", Lowest}, {"LOW % -1", 0}, {"7 / 2", 3},
            {"-7 / 2", -3}, {"-7 % 3", -1}, {"7 % -3", 1}, {"1 << 31", 2147483648}, {"1 << 32", 4294967296},
            {"1 << 63", Lowest}, {"1 << 64", 0}, {"1 << -1", 0}, {"0xFFFFFFFF00000000 >> 32", -1}, {"LOW >> 63", -1},
            {"LOW >> 64", -1}, {"HIGH >> 64", 0}, {"HIGH >> 62", 1}, {"3 ** 39", 4052555153018976267},
            {"2 ** 63", Lowest}, {"2 ** 64", 0}, {"7 ** 0", 1}, {"2 ** -1", 0}, {"(-1) ** -3", -1},
            {"(-1) ** -2", 1}, {"~0", -1}, {"2.5", 3}, {"-2.4", -2}, {"1e3", 1000}, {"1e30", Highest},
            {"SQRT(17)", 4}, {"LG(1000)", 3}, {"SIN(0) + COS(0)", 1}, {"ROUND(X, 2)", 1234567890123456789},
            {"TRUNC(X) = X && FLOOR(X) = X && CEIL(X) = X", 1}, {"LN(0)", Lowest}
        };
        // clang-format on
        Variables variables;
        variables.integers = {{"X", 1234567890123456789}, {"HIGH", Highest}, {"LOW", Lowest}};
        for (const auto &row : rows)
            COMPARE_ROW(row.text, variables.integerValue(row.text), row.expected);
    }

    void floats()
    {
        // clang-format off
        const Row<double> rows[] = {
            {"7 / 2", 3.5}, {"1.5e2 + .5", 150.5}, {"2E-3", 0.002}, {"7.5 % 2", 1.5}, {"-7.5 % 2", -1.5},
            {"2 ** 0.5", std::sqrt(2.0)}, {"0 ** -1", Infinity}, {"1e308 * 10", Infinity}, {"LN(0)", -Infinity},
            {"ROUND(2.5)", 3}, {"ROUND(-2.5)", -3}, {"ROUND(3.14159, 2)", 3.14}, {"ROUND(1234.5, -2)", 1200},
            {"ROUND(1.5e300, 300)", 1.5e300}, {"TRUNC(-2.7)", -2}, {"FLOOR(-2.1)", -3}, {"CEIL(-2.9)", -2},
            {"SGN(-0.1)", -1}, {"NEG(2)", -2}, {"ABS(-2.5)", 2.5}, {"EXP(1)", std::exp(1.0)}, {"LN(E)", 1},
            {"LG(0.01)", -2}, {"SIN(PI / 2)", 1}, {"SIN(PI() / 2) + LN(E ())", 2},
            {"TAN(PI / 4)", std::tan(std::acos(-1.0) / 4)}, {"ASIN(1) * 2", std::acos(-1.0)},
            {"ACOS(-1)", std::acos(-1.0)}, {"ATAN(1) * 4", std::acos(-1.0)}, {"7.9 & 3", 3}, {"-1.5 & 0xFF", 255},
            {"1 << 40", 1099511627776.0}, {"~0", -1}, {"0xFFFFFFFFFFFFFFFF & 0xFF", 255},
            {"18446744073709551615", 18446744073709551615.0}, {"18446744073709551615 & 0xF000", 0xF000},
            {"1e300 & 0xF000", 0xF000}, {"-1e300 & 0xF000", 0}, {"9223372036854775808 >> 63", -1},
            {"0.1 + 0.2 = 0.3", 0}, {"0.5 ? 2 : 3", 2}, {"0.5 && 0.25", 1}
        };
        // clang-format on
        for (const auto &row : rows) {
            const double value = Variables().floatValue(row.text);
            const bool isNear = std::fabs(value - row.expected) < 1e-12 * std::fabs(row.expected);
            QVERIFY2(value == row.expected || isNear, differingRow(row.text, value, row.expected).c_str());
        }
    }

    // Precedence and syntax, the same in both number systems. A = 6, B = 3, Z = 0.
    void bothModes()
    {
        // clang-format off
        const Row<int> rows[] = {
            {"2 + 3 * 4", 14}, {"(2 + 3) * 4", 20}, {"2 * 3 ** 2", 18}, {"2 ** 3 ** 2", 512}, {"-2 ** 2", 4},
            {"2 ** -1 * 0 + 2 ** 2", 4}, {"10 - 3 - 2", 5}, {"100 / 5 / 2", 10}, {"1 << 2 + 1", 8},
            {"1 << 2 < 5", 1}, {"1 < 2 = 1", 1}, {"6 & 3 = 3", 0}, {"(6 & 3) = 2", 1}, {"1 | 6 ^ 3 & 2", 5},
            {"1 || 0 && 0", 1}, {"Z && 1 || 1", 1}, {"A && B", 1}, {"Z || B", 1}, {"Z || Z", 0},
            {"A = 6 && B <> 6 || Z", 1}, {"A != 6", 0}, {"A == 6", 1}, {"A >= 6", 1}, {"A <= 5", 0}, {"A>B?A:B", 6},
            {"Z ? 1 : Z ? 2 : B ? 3 : 4", 3}, {"A ? Z ? 1 : 2 : 3", 2}, {"(A = 1) ? 10 : (A = 6) ? 60 : 0", 60},
            {"1 + (Z ? 1 : 2) * 3", 7}, {"- - A", 6}, {"-~A", 7}, {"!Z + !A", 1}, {"+A-+B", 3}, {"A--B", 9},
            {"0x1f + 0XFF", 286}, {" \t\r\nA\n*\nB ", 18}, {"ABS(SGN(NEG(A)))", 1}, {"sqrt (9)", 3},
            {"ROUND((A), (B) - 3)", 6}, {"A.Max + A.Entry.On2", 8}
        };
        // clang-format on
        Variables variables;
        variables.integers = {{"A", 6}, {"B", 3}, {"Z", 0}, {"A.Max", 7}, {"A.Entry.On2", 1}};
        variables.reals.insert(variables.integers.begin(), variables.integers.end());
        for (const auto &row : rows) {
            COMPARE_ROW(row.text, variables.integerValue(row.text), row.expected);
            COMPARE_ROW(row.text, variables.floatValue(row.text), row.expected);
        }
    }

    void whatIsNoNumberThrows()
    {
        Variables variables;
        variables.integers = {{"Z", 0}};
        variables.reals = {{"Z", 0.0}};
        for (const char *text : {"1 / Z", "1 % Z", "1 / (-1 * Z)", "Z = 0 ? 5 / Z : 1", "SQRT(-1) & 1"}) {
            QVERIFY_EXCEPTION_THROWN(variables.integerValue(text), FormulaError);
            QVERIFY_EXCEPTION_THROWN(variables.floatValue(text), FormulaError);
        }
        QVERIFY_EXCEPTION_THROWN(variables.integerValue("0 ** -1"), FormulaError);
        QVERIFY_EXCEPTION_THROWN(variables.integerValue("SQRT(-1)"), FormulaError);
        QVERIFY(std::isnan(variables.floatValue("SQRT(-1)")));
    }

    // Only the variable N has no value, so reading it would throw.
    void readsOnlyWhatTheBranchNeeds()
    {
        // clang-format off
        const struct
        {
            const char *text;
            int expected;
            int readsOfA;
        } rows[] = {
            {"A ? 5 : N", 5, 1}, {"A = 0 ? N : A + A * A", 6, 1}, {"A = 0 && N", 0, 1}, {"A || N", 1, 1},
            {"A = 1 ? N : A = 2 ? A : N", 2, 1}, {"A <> 0 ? 8 / A : 8 / 0", 4, 1}, {"1 ? 5 : A", 5, 0}
        };
        // clang-format on
        for (const auto &row : rows) {
            Variables variables;
            variables.integers = {{"A", 2}};
            COMPARE_ROW(row.text, variables.integerValue(row.text), row.expected);
            COMPARE_ROW(row.text, variables.reads["A"], row.readsOfA);
            COMPARE_ROW(row.text, variables.reads["N"], 0);
        }
    }

    void variableErrorsLeaveUnchanged()
    {
        struct PortLost
        { };
        const Formula formula = Formula::parse("1 + A");
        QVERIFY_EXCEPTION_THROWN(formula.integerValue([](std::size_t) -> int64_t { throw PortLost(); }), PortLost);
        QCOMPARE(formula.integerValue([](std::size_t) { return int64_t(4); }), int64_t(5));
    }

    void namesOfConstantsAndFunctions()
    {
        Variables variables;
        variables.integers = {{"E", 40}, {"PI", 2}, {"ROUND", 7}, {"e", 5}, {"LG", 100}};
        QCOMPARE(variables.integerValue("E + PI", {"E", "PI"}), int64_t(42));
        QCOMPARE(variables.integerValue("E + PI", {"PI"}), int64_t(5));
        QCOMPARE(variables.integerValue("e"), int64_t(5));
        QCOMPARE(variables.integerValue("ROUND * 2 + LG(LG)", {"ROUND", "LG"}), int64_t(16));
    }

    void slotsFollowFirstMention()
    {
        const Formula formula = Formula::parse("B + A.Max * B - A + A.Max - E");
        QCOMPARE(formula.variables(), (std::vector<std::string>{"B", "A.Max", "A"}));
        QVERIFY(Formula::parse("1 + PI").variables().empty());
        QCOMPARE(Formula().integerValue(nullptr), int64_t(0));
    }

    void errorsNameThePosition()
    {
        // clang-format off
        const Row<const char *> rows[] = {
            {"", "a value is expected at position 1"}, {"  ", "a value is expected at position 3"},
            {"A +", "a value is expected at position 4"}, {"A + * B", "a value is expected at position 5"},
            {"(A + 1", "\")\" is expected at position 7"}, {"A + 1)", "an operator is expected at position 6"},
            {"A B", "an operator is expected at position 3"}, {"A ? 1", "\":\" is expected at position 6"},
            {"1 : 2", "an operator is expected at position 3"},
            {"GAMMA(1)", "unknown function \"GAMMA\" at position 6"}, {"SIN()", "a value is expected at position 5"},
            {"SIN(1, 2)", "\")\" is expected at position 6"}, {"0x", "a hexadecimal number"},
            {"0x12345678901234567", "a hexadecimal number"}, {"0xFG", "a hexadecimal number"},
            {"1.2.3", "a number is expected at position 1"}, {"12px", "a number is expected at position 1"},
            {".", "a number is expected at position 1"}, {"A $ B", "an operator is expected at position 3"}
        };
        // clang-format on
        for (const auto &row : rows)
            COMPARE_ROW(row.text, errorOf(row.text).substr(0, std::strlen(row.expected)), row.expected);
    }

    // Text that would overflow the stack of a careless parser is an error, long after what real files need.
    void depthIsBounded()
    {
        QCOMPARE(Variables().integerValue(repeated("(1+", 200) + "1" + repeated(")", 200)), int64_t(201));
        QVERIFY(!errorOf(repeated("(", 1000000)).empty());
        QVERIFY(!errorOf(repeated("1?", 1000000)).empty());
        QVERIFY(!errorOf(repeated("2**", 1000000) + "1").empty());
        QVERIFY(!errorOf(repeated("ABS(", 1000000)).empty());
        QVERIFY(errorOf(repeated("(", 1000000)).size() < 300);
    }

    // Chains need no nesting however long they are.
    void longFormulas()
    {
        Variables variables;
        variables.integers = {{"A", 4999}};
        std::string chain;
        for (int i = 0; i < 5000; ++i)
            chain += "(A = " + std::to_string(i) + ") ? " + std::to_string(2 * i) + " : ";
        QCOMPARE(variables.integerValue(chain + "-1"), int64_t(9998));
        QCOMPARE(variables.integerValue(repeated("A - ", 5001) + "0 * 1"), int64_t(4999) * -4999);
        QCOMPARE(variables.integerValue(repeated("-", 100001) + "A"), int64_t(-4999));
        std::string sum;
        for (int i = 0; i < 100; ++i) {
            variables.integers["V" + std::to_string(i)] = i;
            sum += "V" + std::to_string(i) + " + (";
        }
        QCOMPARE(variables.integerValue(sum + "0" + repeated(")", 100)), int64_t(4950));
    }

    void evaluatesInsideAnEvaluation()
    {
        const Formula square = Formula::parse("A * A");
        const auto three = [](std::size_t) { return int64_t(3); };
        QCOMPARE(square.integerValue([&](std::size_t) { return square.integerValue(three); }), int64_t(81));
    }
};

QTEST_APPLESS_MAIN(tst_Formula)
#include "tst_Formula.moc"
