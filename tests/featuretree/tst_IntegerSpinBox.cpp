// SPDX-License-Identifier: MIT
#include "FeatureTree/IntegerSpinBox.h"
#include "TestRows.h"

namespace {

constexpr qint64 Lowest = std::numeric_limits<qint64>::min();
constexpr qint64 Highest = std::numeric_limits<qint64>::max();
constexpr qint64 BeyondDouble = (qint64(1) << 53) + 1;

const struct
{
    const char *name;
    qint64 minimum, maximum, step, from;
    int steps;
    qint64 to;
} Steps[] = {
    {"stops at the last value", 0, 100, 30, 60, 9, 90},
    {"stops at the first value", -7, 100, 30, 23, -9, -7},
    {"onto the grid", 0, 100, 4, 50, 1, 52},
    {"onto the grid, down", 0, 100, 4, 50, -1, 48},
    {"the grid begins at the minimum", 3, 100, 4, 8, 2, 15},
    {"beyond the last value", 0, 100, 30, 95, 1, 95},
    {"beyond 53 bits", Lowest, Highest, 1, BeyondDouble, 1, BeyondDouble + 1},
    {"at the largest", Lowest, Highest, 1, Highest - 1, 1, Highest},
    {"at the smallest", Lowest, Highest, 4, Lowest + 1, -1, Lowest},
    {"step too large to multiply", Lowest, Highest, Highest, -1, 10, Highest - 1},
    {"no increment", 0, 9, 0, 5, 1, 6},
};

void load(IntegerSpinBox &box, qint64 minimum, qint64 maximum, qint64 step, qint64 value)
{
    box.setLimits(minimum, maximum);
    box.setSteps(1, step);
    box.load(value);
}

} // namespace

class tst_IntegerSpinBox : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void keepsAllDigits()
    {
        for (const qint64 value : {qint64(0), BeyondDouble, Highest, Highest - 1, Lowest, Lowest + 1}) {
            IntegerSpinBox box;
            load(box, Lowest, Highest, 1, value);
            box.interpretText();
            QCOMPARE(box.number(), value);
            QCOMPARE(box.text(), QString::number(value));
            box.load(16);
            box.selectAll();
            QTest::keyClicks(&box, QString::number(value));
            QCOMPARE(box.entered().value_or(16), value);
        }
    }

    void steps_data() { addRows(Steps); }

    void steps()
    {
        const auto &row = currentRow(Steps);
        IntegerSpinBox box;
        load(box, row.minimum, row.maximum, row.step, row.from);
        box.stepBy(row.steps);
        QCOMPARE(box.number(), row.to);
        QCOMPARE(box.text(), QString::number(row.to));
    }

    void worksAsADoubleSpinBox()
    {
        IntegerSpinBox box;
        load(box, 0, 100, 4, 8);
        QCOMPARE(box.value(), 8.0);
        box.setValue(40.0);
        QCOMPARE(box.number(), qint64(40));
        box.setLocale(QLocale(QLocale::German));
        box.setLimits(0, 1000000);
        box.load(123456);
        QCOMPARE(box.text(), QStringLiteral("123456"));
    }
};

QTEST_MAIN(tst_IntegerSpinBox)
#include "tst_IntegerSpinBox.moc"
