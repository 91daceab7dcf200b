// SPDX-License-Identifier: MIT
#include <QTest>

#include <cmath>
#include <limits>

#include "ToolPage/NodeNumbers.h"

class tst_NodeNumbers : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void integerRange_data();
    void integerRange();
    void floats_data();
    void floats();
};

void tst_NodeNumbers::integerRange_data()
{
    QTest::addColumn<qint64>("minimum");
    QTest::addColumn<qint64>("maximum");
    QTest::addColumn<int>("shownMinimum");
    QTest::addColumn<int>("shownMaximum");
    constexpr int Top = std::numeric_limits<int>::max();
    QTest::newRow("32-bit") << qint64(-5) << qint64(100) << -5 << 100;
    QTest::newRow("unsigned 32-bit") << qint64(0) << qint64(4294967295) << 0 << Top;
    QTest::newRow("64-bit") << std::numeric_limits<qint64>::min() << std::numeric_limits<qint64>::max() << 0 << Top;
    QTest::newRow("low bits of both") << qint64(0x100000002) << qint64(0x200000009) << 2 << 9;
    QTest::newRow("low bits bound nothing") << qint64(0) << qint64(0x80000000) << 0 << Top;
    QTest::newRow("negative range") << qint64(-100) << qint64(-10) << -100 << -10;
}

void tst_NodeNumbers::integerRange()
{
    QFETCH(qint64, minimum);
    QFETCH(qint64, maximum);
    QTEST(NodeNumbers::low32(minimum), "shownMinimum");
    QTEST(NodeNumbers::spinBoxMaximum(maximum, NodeNumbers::low32(minimum)), "shownMaximum");
}

void tst_NodeNumbers::floats_data()
{
    constexpr double Infinity = std::numeric_limits<double>::infinity();
    constexpr double FloatMax = std::numeric_limits<float>::max();
    constexpr double DoubleMax = std::numeric_limits<double>::max();
    QTest::addColumn<double>("number");
    QTest::addColumn<double>("single");
    QTest::addColumn<double>("finite");
    QTest::newRow("rounded") << 0.1 << static_cast<double>(0.1f) << 0.1;
    QTest::newRow("beyond single precision") << 1e300 << FloatMax << 1e300;
    QTest::newRow("infinity") << Infinity << FloatMax << DoubleMax;
    QTest::newRow("-infinity") << -Infinity << -FloatMax << -DoubleMax;
    QTest::newRow("not a number") << std::nan("") << 7.0 << 7.0;
}

void tst_NodeNumbers::floats()
{
    QFETCH(double, number);
    QTEST(NodeNumbers::singlePrecision(number, 7.0), "single");
    QTEST(NodeNumbers::finite(number, 7.0), "finite");
}

QTEST_APPLESS_MAIN(tst_NodeNumbers)
#include "tst_NodeNumbers.moc"
