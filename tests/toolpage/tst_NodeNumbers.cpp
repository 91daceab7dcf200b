// SPDX-License-Identifier: MIT
#include <cmath>
#include <limits>

#include "FailedAt.h"
#include "ToolPage/NodeNumbers.h"

namespace {

constexpr int IntMax = std::numeric_limits<int>::max();
constexpr double Infinity = std::numeric_limits<double>::infinity();
constexpr double FloatMax = std::numeric_limits<float>::max();
constexpr double DoubleMax = std::numeric_limits<double>::max();

} // namespace

class tst_NodeNumbers : public QObject
{
    Q_OBJECT

private Q_SLOTS:
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
            const FailedAt at(name);
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
            const FailedAt at(name);
            QCOMPARE(NodeNumbers::singlePrecision(number, 7), single);
            QCOMPARE(NodeNumbers::finite(number, 7), finite);
        }
    }
};

QTEST_APPLESS_MAIN(tst_NodeNumbers)
#include "tst_NodeNumbers.moc"
