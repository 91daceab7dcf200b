// SPDX-License-Identifier: MIT
#include <cmath>
#include <limits>

#include "DataRows.h"
#include "ToolPage/NodeNumbers.h"

namespace {

constexpr int IntMax = std::numeric_limits<int>::max();
constexpr double Infinity = std::numeric_limits<double>::infinity();
constexpr double FloatMax = std::numeric_limits<float>::max();
constexpr double DoubleMax = std::numeric_limits<double>::max();

struct Range
{
    const char *name;
    qint64 minimum;
    qint64 maximum;
    int shownMinimum;
    int shownMaximum;
};

struct Real
{
    const char *name;
    double number;
    double single;
    double finite;
};

} // namespace

Q_DECLARE_METATYPE(Range)
Q_DECLARE_METATYPE(Real)

class tst_NodeNumbers : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void integerRange_data()
    {
        using Limits = std::numeric_limits<qint64>;
        addDataRows<Range>({{"32-bit", -5, 100, -5, 100},
                            {"unsigned 32-bit", 0, 4294967295, 0, IntMax},
                            {"64-bit", Limits::min(), Limits::max(), 0, IntMax},
                            {"low bits of both", 0x100000002, 0x200000009, 2, 9},
                            {"low bits bound nothing", 0, 0x80000000, 0, IntMax},
                            {"negative range", -100, -10, -100, -10}});
    }
    void integerRange()
    {
        QFETCH(Range, row);
        QCOMPARE(NodeNumbers::low32(row.minimum), row.shownMinimum);
        QCOMPARE(NodeNumbers::spinBoxMaximum(row.maximum, row.shownMinimum), row.shownMaximum);
    }

    void floats_data()
    {
        addDataRows<Real>({{"rounded", 0.1, static_cast<double>(0.1f), 0.1},
                           {"beyond single precision", 1e300, FloatMax, 1e300},
                           {"infinity", Infinity, FloatMax, DoubleMax},
                           {"-infinity", -Infinity, -FloatMax, -DoubleMax},
                           {"not a number", std::nan(""), 7, 7}});
    }
    void floats()
    {
        QFETCH(Real, row);
        QCOMPARE(NodeNumbers::singlePrecision(row.number, 7), row.single);
        QCOMPARE(NodeNumbers::finite(row.number, 7), row.finite);
    }
};

QTEST_APPLESS_MAIN(tst_NodeNumbers)
#include "tst_NodeNumbers.moc"
