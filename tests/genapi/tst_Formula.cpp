// SPDX-License-Identifier: MIT
#include <QtTest>

#include <cmath>
#include <limits>
#include <map>

#include "GenApi/src/Formula.h"

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
    void integers_data();
    void integers();
    void floats_data();
    void floats();
    void bothModes_data();
    void bothModes();
    void divisionByZeroThrows_data();
    void divisionByZeroThrows();
    void noIntegerThrows();
    void readsOnlyWhatTheBranchNeeds_data();
    void readsOnlyWhatTheBranchNeeds();
    void variableErrorsLeaveUnchanged();
    void namesOfConstantsAndFunctions();
    void slotsFollowFirstMention();
    void errorsNameThePosition_data();
    void errorsNameThePosition();
    void depthIsBounded();
    void longFormulas();
    void evaluatesInsideAnEvaluation();
};

// What exact 64-bit arithmetic must give where double, or C's undefined cases, would not.
void tst_Formula::integers_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<qlonglong>("expected");
    const auto row = [](const char *text, int64_t expected) {
        QTest::newRow(text) << QString::fromLatin1(text) << qlonglong(expected);
    };
    row("9007199254740993 + 0", 9007199254740993);
    row("X * 3 / 3", 1234567890123456789);
    row("0x7FFFFFFFFFFFFFFF", Highest);
    row("9223372036854775807 - 1", Highest - 1);
    row("18446744073709551615", -1);
    row("0xFFFFFFFFFFFFFFFF", -1);
    row("HIGH + 1", Lowest);
    row("LOW - 1", Highest);
    row("HIGH * 2", -2);
    row("-LOW", Lowest);
    row("ABS(LOW)", Lowest);
    row("LOW / -1", Lowest);
    row("LOW % -1", 0);
    row("7 / 2", 3);
    row("-7 / 2", -3);
    row("-7 % 3", -1);
    row("7 % -3", 1);
    row("1 << 31", 2147483648);
    row("1 << 32", 4294967296);
    row("1 << 63", Lowest);
    row("1 << 64", 0);
    row("1 << -1", 0);
    row("0xFFFFFFFF00000000 >> 32", -1);
    row("LOW >> 63", -1);
    row("LOW >> 64", -1);
    row("HIGH >> 64", 0);
    row("HIGH >> 62", 1);
    row("3 ** 39", 4052555153018976267);
    row("2 ** 63", Lowest);
    row("2 ** 64", 0);
    row("7 ** 0", 1);
    row("2 ** -1", 0);
    row("(-1) ** -3", -1);
    row("(-1) ** -2", 1);
    row("~0", -1);
    row("2.5", 3);
    row("-2.4", -2);
    row("1e3", 1000);
    row("1e30", Highest);
    row("SQRT(17)", 4);
    row("LG(1000)", 3);
    row("SIN(0) + COS(0)", 1);
    row("ROUND(X, 2)", 1234567890123456789);
    row("TRUNC(X) = X && FLOOR(X) = X && CEIL(X) = X", 1);
    row("LN(0)", Lowest);
}

void tst_Formula::integers()
{
    QFETCH(QString, text);
    Variables variables;
    variables.integers = {{"X", 1234567890123456789}, {"HIGH", Highest}, {"LOW", Lowest}};
    QTEST(qlonglong(variables.integerValue(text.toStdString())), "expected");
}

void tst_Formula::floats_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<double>("expected");
    const auto row = [](const char *text, double expected) {
        QTest::newRow(text) << QString::fromLatin1(text) << expected;
    };
    row("7 / 2", 3.5);
    row("1.5e2 + .5", 150.5);
    row("2E-3", 0.002);
    row("7.5 % 2", 1.5);
    row("-7.5 % 2", -1.5);
    row("2 ** 0.5", std::sqrt(2.0));
    row("0 ** -1", Infinity);
    row("1e308 * 10", Infinity);
    row("LN(0)", -Infinity);
    row("ROUND(2.5)", 3);
    row("ROUND(-2.5)", -3);
    row("ROUND(3.14159, 2)", 3.14);
    row("ROUND(1234.5, -2)", 1200);
    row("ROUND(1.5e300, 300)", 1.5e300);
    row("TRUNC(-2.7)", -2);
    row("FLOOR(-2.1)", -3);
    row("CEIL(-2.9)", -2);
    row("SGN(-0.1)", -1);
    row("NEG(2)", -2);
    row("ABS(-2.5)", 2.5);
    row("EXP(1)", std::exp(1.0));
    row("LN(E)", 1);
    row("LG(0.01)", -2);
    row("SIN(PI / 2)", 1);
    row("SIN(PI() / 2) + LN(E ())", 2);
    row("TAN(PI / 4)", std::tan(std::acos(-1.0) / 4));
    row("ASIN(1) * 2", std::acos(-1.0));
    row("ACOS(-1)", std::acos(-1.0));
    row("ATAN(1) * 4", std::acos(-1.0));
    row("7.9 & 3", 3);
    row("-1.5 & 0xFF", 255);
    row("1 << 40", 1099511627776.0);
    row("~0", -1);
    row("0xFFFFFFFFFFFFFFFF & 0xFF", 255);
    row("18446744073709551615", 18446744073709551615.0);
    row("18446744073709551615 & 0xF000", 0xF000);
    row("1e300 & 0xF000", 0xF000);
    row("-1e300 & 0xF000", 0);
    row("9223372036854775808 >> 63", -1);
    row("0.1 + 0.2 = 0.3", 0);
    row("0.5 ? 2 : 3", 2);
    row("0.5 && 0.25", 1);
}

void tst_Formula::floats()
{
    QFETCH(QString, text);
    QFETCH(double, expected);
    const double value = Variables().floatValue(text.toStdString());
    QVERIFY2(value == expected || std::fabs(value - expected) < 1e-12 * std::fabs(expected),
             qPrintable(QString::number(value, 'g', 17)));
}

// Precedence and syntax, the same in both number systems. A = 6, B = 3, Z = 0.
void tst_Formula::bothModes_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<int>("expected");
    const auto row = [](const char *text, int expected) {
        QTest::newRow(text) << QString::fromLatin1(text) << expected;
    };
    row("2 + 3 * 4", 14);
    row("(2 + 3) * 4", 20);
    row("2 * 3 ** 2", 18);
    row("2 ** 3 ** 2", 512);
    row("-2 ** 2", 4);
    row("2 ** -1 * 0 + 2 ** 2", 4);
    row("10 - 3 - 2", 5);
    row("100 / 5 / 2", 10);
    row("1 << 2 + 1", 8);
    row("1 << 2 < 5", 1);
    row("1 < 2 = 1", 1);
    row("6 & 3 = 3", 0);
    row("(6 & 3) = 2", 1);
    row("1 | 6 ^ 3 & 2", 5);
    row("1 || 0 && 0", 1);
    row("Z && 1 || 1", 1);
    row("A && B", 1);
    row("Z || B", 1);
    row("Z || Z", 0);
    row("A = 6 && B <> 6 || Z", 1);
    row("A != 6", 0);
    row("A == 6", 1);
    row("A >= 6", 1);
    row("A <= 5", 0);
    row("A>B?A:B", 6);
    row("Z ? 1 : Z ? 2 : B ? 3 : 4", 3);
    row("A ? Z ? 1 : 2 : 3", 2);
    row("(A = 1) ? 10 : (A = 6) ? 60 : 0", 60);
    row("1 + (Z ? 1 : 2) * 3", 7);
    row("- - A", 6);
    row("-~A", 7);
    row("!Z + !A", 1);
    row("+A-+B", 3);
    row("A--B", 9);
    row("0x1f + 0XFF", 286);
    row(" \t\r\nA\n*\nB ", 18);
    row("ABS(SGN(NEG(A)))", 1);
    row("sqrt (9)", 3);
    row("ROUND((A), (B) - 3)", 6);
    row("A.Max + A.Entry.On2", 8);
}

void tst_Formula::bothModes()
{
    QFETCH(QString, text);
    QFETCH(int, expected);
    Variables variables;
    variables.integers = {{"A", 6}, {"B", 3}, {"Z", 0}, {"A.Max", 7}, {"A.Entry.On2", 1}};
    variables.reals.insert(variables.integers.begin(), variables.integers.end());
    QCOMPARE(qlonglong(variables.integerValue(text.toStdString())), qlonglong(expected));
    QCOMPARE(variables.floatValue(text.toStdString()), double(expected));
}

void tst_Formula::divisionByZeroThrows_data()
{
    QTest::addColumn<QString>("text");
    QTest::newRow("quotient") << "1 / Z";
    QTest::newRow("remainder") << "1 % Z";
    QTest::newRow("negative zero") << "1 / (-1 * Z)";
    QTest::newRow("in the taken branch") << "Z = 0 ? 5 / Z : 1";
}

void tst_Formula::divisionByZeroThrows()
{
    QFETCH(QString, text);
    Variables variables;
    variables.integers = {{"Z", 0}};
    variables.reals = {{"Z", 0.0}};
    QVERIFY_EXCEPTION_THROWN(variables.integerValue(text.toStdString()), FormulaError);
    QVERIFY_EXCEPTION_THROWN(variables.floatValue(text.toStdString()), FormulaError);
}

void tst_Formula::noIntegerThrows()
{
    QVERIFY_EXCEPTION_THROWN(Variables().integerValue("0 ** -1"), FormulaError);
    QVERIFY_EXCEPTION_THROWN(Variables().integerValue("SQRT(-1)"), FormulaError);
    QVERIFY(std::isnan(Variables().floatValue("SQRT(-1)")));
    QVERIFY_EXCEPTION_THROWN(Variables().floatValue("SQRT(-1) & 1"), FormulaError);
}

// Only the variable N has no value, so reading it would throw.
void tst_Formula::readsOnlyWhatTheBranchNeeds_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<int>("expected");
    QTest::addColumn<int>("readsOfA");
    QTest::newRow("then") << "A ? 5 : N" << 5 << 1;
    QTest::newRow("else") << "A = 0 ? N : A + A * A" << 6 << 1;
    QTest::newRow("and") << "A = 0 && N" << 0 << 1;
    QTest::newRow("or") << "A || N" << 1 << 1;
    QTest::newRow("chain") << "A = 1 ? N : A = 2 ? A : N" << 2 << 1;
    QTest::newRow("division not taken") << "A <> 0 ? 8 / A : 8 / 0" << 4 << 1;
    QTest::newRow("constant") << "1 ? 5 : A" << 5 << 0;
}

void tst_Formula::readsOnlyWhatTheBranchNeeds()
{
    QFETCH(QString, text);
    QFETCH(int, expected);
    QFETCH(int, readsOfA);
    Variables variables;
    variables.integers = {{"A", 2}};
    QCOMPARE(variables.integerValue(text.toStdString()), int64_t(expected));
    QCOMPARE(variables.reads["A"], readsOfA);
    QCOMPARE(variables.reads["N"], 0);
}

void tst_Formula::variableErrorsLeaveUnchanged()
{
    struct PortLost
    { };
    const Formula formula = Formula::parse("1 + A");
    QVERIFY_EXCEPTION_THROWN(formula.integerValue([](std::size_t) -> int64_t { throw PortLost(); }), PortLost);
    QCOMPARE(formula.integerValue([](std::size_t) { return int64_t(4); }), int64_t(5));
}

void tst_Formula::namesOfConstantsAndFunctions()
{
    Variables variables;
    variables.integers = {{"E", 40}, {"PI", 2}, {"ROUND", 7}, {"e", 5}, {"LG", 100}};
    QCOMPARE(variables.integerValue("E + PI", {"E", "PI"}), int64_t(42));
    QCOMPARE(variables.integerValue("E + PI", {"PI"}), int64_t(5));
    QCOMPARE(variables.integerValue("e"), int64_t(5));
    QCOMPARE(variables.integerValue("ROUND * 2 + LG(LG)", {"ROUND", "LG"}), int64_t(16));
}

void tst_Formula::slotsFollowFirstMention()
{
    const Formula formula = Formula::parse("B + A.Max * B - A + A.Max - E");
    QCOMPARE(formula.variables(), (std::vector<std::string>{"B", "A.Max", "A"}));
    QVERIFY(Formula::parse("1 + PI").variables().empty());
    QCOMPARE(Formula().integerValue(nullptr), int64_t(0));
}

void tst_Formula::errorsNameThePosition_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("beginning");
    const auto row = [](const char *text, const char *beginning) {
        QTest::newRow(text) << QString::fromLatin1(text) << QString::fromLatin1(beginning);
    };
    row("", "a value is expected at position 1");
    row("  ", "a value is expected at position 3");
    row("A +", "a value is expected at position 4");
    row("A + * B", "a value is expected at position 5");
    row("(A + 1", "\")\" is expected at position 7");
    row("A + 1)", "an operator is expected at position 6");
    row("A B", "an operator is expected at position 3");
    row("A ? 1", "\":\" is expected at position 6");
    row("1 : 2", "an operator is expected at position 3");
    row("GAMMA(1)", "unknown function \"GAMMA\" at position 6");
    row("SIN()", "a value is expected at position 5");
    row("SIN(1, 2)", "\")\" is expected at position 6");
    row("0x", "a hexadecimal number");
    row("0x12345678901234567", "a hexadecimal number");
    row("0xFG", "a hexadecimal number");
    row("1.2.3", "a number is expected at position 1");
    row("12px", "a number is expected at position 1");
    row(".", "a number is expected at position 1");
    row("A $ B", "an operator is expected at position 3");
}

void tst_Formula::errorsNameThePosition()
{
    QFETCH(QString, text);
    QFETCH(QString, beginning);
    const QString error = QString::fromStdString(errorOf(text.toStdString()));
    QVERIFY2(error.startsWith(beginning), qPrintable(error));
}

// Text that would overflow the stack of a careless parser is an error, long after what real files need.
void tst_Formula::depthIsBounded()
{
    QCOMPARE(Variables().integerValue(repeated("(1+", 200) + "1" + repeated(")", 200)), int64_t(201));
    QVERIFY(!errorOf(repeated("(", 1000000)).empty());
    QVERIFY(!errorOf(repeated("1?", 1000000)).empty());
    QVERIFY(!errorOf(repeated("2**", 1000000) + "1").empty());
    QVERIFY(!errorOf(repeated("ABS(", 1000000)).empty());
    QVERIFY(errorOf(repeated("(", 1000000)).size() < 300);
}

// Chains need no nesting however long they are.
void tst_Formula::longFormulas()
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

void tst_Formula::evaluatesInsideAnEvaluation()
{
    const Formula square = Formula::parse("A * A");
    const auto three = [](std::size_t) { return int64_t(3); };
    QCOMPARE(square.integerValue([&](std::size_t) { return square.integerValue(three); }), int64_t(81));
}

QTEST_APPLESS_MAIN(tst_Formula)
#include "tst_Formula.moc"
