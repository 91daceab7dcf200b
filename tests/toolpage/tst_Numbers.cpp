// SPDX-License-Identifier: MIT
#include <cmath>
#include <limits>
#include <optional>

#include "PanelBase/NumberText.h"
#include "ToolPage/NodeNumbers.h"
#include "support/Rows.h"

namespace {

constexpr int IntMax = std::numeric_limits<int>::max();
constexpr double Infinity = std::numeric_limits<double>::infinity();
constexpr double FloatMax = std::numeric_limits<float>::max();
constexpr double DoubleMax = std::numeric_limits<double>::max();

} // namespace

/// Numbers as a person types them, NumberText, and as fields can hold them, NodeNumbers.
class tst_Numbers : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void texts()
    {
        const std::tuple<const char *, std::optional<double>, std::optional<qint64>> taken[] = {
            {"33.1", 33.1, {}},
            {"33,1", 33.1, {}},
            {"1,234", 1.234, {}},
            {"1.234", 1.234, {}},
            {"-7", -7.0, -7},
            {"+7", 7.0, 7},
            {" 42 ", 42.0, 42},
            {"1e3", 1000.0, {}},
            {"9223372036854775807", 9223372036854775807.0, 9223372036854775807},
            {"9223372036854775808", 9223372036854775808.0, {}}};
        const char *const refused[] = {"1,234.5", "1.234,5", "1.234.567", "1 234", "1'234", "",
                                       "-",       "4x2",     "0x10",      "inf",   "nan",   "1e999"};
        for (const QLocale &locale : {QLocale::c(), QLocale(QLocale::German), QLocale(QLocale::French)}) {
            for (const auto &[text, real, integer] : taken) {
                QVERIFY2(NumberText::parse<double>(QLatin1String(text), locale) == real, text);
                QVERIFY2(NumberText::parse<qint64>(QLatin1String(text), locale) == integer, text);
            }
            for (const char *text : refused) {
                QVERIFY2(!NumberText::parse<double>(QLatin1String(text), locale), text);
                QVERIFY2(!NumberText::parse<qint64>(QLatin1String(text), locale), text);
            }
        }
    }

    void otherDigits()
    {
        const QLocale arabic(QLocale::Arabic, QLocale::Egypt);
        QCOMPARE(NumberText::parse<double>(QStringLiteral("٣٣٫١"), arabic).value_or(0), 33.1);
        QVERIFY(!NumberText::parse<qint64>(QStringLiteral("٣٣٫١"), arabic));
    }

    void integerRange()
    {
        using Limits = std::numeric_limits<qint64>;
        const std::tuple<const char *, qint64, qint64, int, int> rows[] = {
            {"32-bit", -5, 100, -5, 100},
            {"unsigned 32-bit", 0, 4294967295, 0, IntMax},
            {"64-bit", Limits::min(), Limits::max(), 0, IntMax},
            {"low bits of both", 0x100000002, 0x200000009, 2, 9},
            {"low bits bound nothing", 0, 0x80000000, 0, IntMax},
            {"negative range", -100, -10, -100, -10}};
        for (const auto &[name, minimum, maximum, shownMinimum, shownMaximum] : rows) {
            const InRow at(name);
            QCOMPARE(NodeNumbers::low32(minimum), shownMinimum);
            QCOMPARE(NodeNumbers::spinBoxMaximum(maximum, shownMinimum), shownMaximum);
        }
    }

    void floats()
    {
        const std::tuple<const char *, double, double, double> rows[] = {
            {"rounded", 0.1, static_cast<double>(0.1f), 0.1},
            {"beyond single precision", 1e300, FloatMax, 1e300},
            {"infinity", Infinity, FloatMax, DoubleMax},
            {"-infinity", -Infinity, -FloatMax, -DoubleMax},
            {"not a number", std::nan(""), 7, 7}};
        for (const auto &[name, number, single, finite] : rows) {
            const InRow at(name);
            QCOMPARE(NodeNumbers::singlePrecision(number, 7), single);
            QCOMPARE(NodeNumbers::finite(number, 7), finite);
        }
    }
};

QTEST_MAIN(tst_Numbers)
#include "tst_Numbers.moc"
