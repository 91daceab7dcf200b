// SPDX-License-Identifier: MIT
#include <QLineEdit>
#include <QtTest>

#include "FeatureTree/IntegerSpinBox.h"

namespace {

constexpr qint64 Lowest = std::numeric_limits<qint64>::min();
constexpr qint64 Highest = std::numeric_limits<qint64>::max();
constexpr qint64 BeyondDouble = (qint64(1) << 53) + 1;

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
    void keepsWhatWasLoaded_data();
    void keepsWhatWasLoaded();
    void takesTypedText_data();
    void takesTypedText();
    void steps_data();
    void steps();
    void worksAsADoubleSpinBox();
};

void tst_IntegerSpinBox::keepsWhatWasLoaded_data()
{
    QTest::addColumn<qint64>("value");
    QTest::newRow("zero") << qint64(0);
    QTest::newRow("beyond 53 bits") << BeyondDouble;
    QTest::newRow("largest") << Highest;
    QTest::newRow("next to largest") << Highest - 1;
    QTest::newRow("smallest") << Lowest;
    QTest::newRow("next to smallest") << Lowest + 1;
}

void tst_IntegerSpinBox::keepsWhatWasLoaded()
{
    QFETCH(qint64, value);
    IntegerSpinBox box;
    load(box, Lowest, Highest, 1, value);
    box.interpretText();
    QCOMPARE(box.number(), value);
    QCOMPARE(box.text(), QString::number(value));
}

void tst_IntegerSpinBox::takesTypedText_data()
{
    QTest::addColumn<qint64>("minimum");
    QTest::addColumn<qint64>("maximum");
    QTest::addColumn<QString>("typed");
    QTest::addColumn<qint64>("value"); // the box starts with its minimum
    QTest::newRow("in range") << qint64(0) << qint64(100) << "52" << qint64(52);
    QTest::newRow("beyond 53 bits") << Lowest << Highest << "9007199254740993" << BeyondDouble;
    QTest::newRow("largest") << Lowest << Highest << "9223372036854775807" << Highest;
    QTest::newRow("negative") << qint64(-50) << qint64(50) << "-7" << qint64(-7);
    QTest::newRow("below the range on the way") << qint64(16) << qint64(1000) << "640" << qint64(640);
    QTest::newRow("below the range") << qint64(16) << qint64(1000) << "1" << qint64(16);
    QTest::newRow("beyond the range") << qint64(0) << qint64(100) << "500" << qint64(0);
    QTest::newRow("one beyond 63 bits") << qint64(0) << Highest << "9223372036854775808" << qint64(0);
    QTest::newRow("letters") << qint64(0) << qint64(100) << "4x2" << qint64(0);
}

void tst_IntegerSpinBox::takesTypedText()
{
    QFETCH(qint64, minimum);
    QFETCH(qint64, maximum);
    QFETCH(QString, typed);
    QFETCH(qint64, value);
    IntegerSpinBox box;
    load(box, minimum, maximum, 1, minimum);
    box.selectAll();
    QTest::keyClicks(&box, typed);
    QCOMPARE(box.text(), typed);
    QCOMPARE(box.entered().value_or(minimum), value);
}

void tst_IntegerSpinBox::steps_data()
{
    QTest::addColumn<qint64>("minimum");
    QTest::addColumn<qint64>("maximum");
    QTest::addColumn<qint64>("step");
    QTest::addColumn<qint64>("from");
    QTest::addColumn<int>("steps");
    QTest::addColumn<qint64>("to");
    QTest::newRow("up") << qint64(0) << qint64(100) << qint64(4) << qint64(8) << 1 << qint64(12);
    QTest::newRow("down") << qint64(0) << qint64(100) << qint64(4) << qint64(8) << -1 << qint64(4);
    QTest::newRow("stops at the last value") << qint64(0) << qint64(100) << qint64(30) << qint64(60) << 9 << qint64(90);
    QTest::newRow("stops at the first value")
        << qint64(-7) << qint64(100) << qint64(30) << qint64(23) << -9 << qint64(-7);
    QTest::newRow("onto the grid") << qint64(0) << qint64(100) << qint64(4) << qint64(50) << 1 << qint64(52);
    QTest::newRow("onto the grid, down") << qint64(0) << qint64(100) << qint64(4) << qint64(50) << -1 << qint64(48);
    QTest::newRow("the grid begins at the minimum")
        << qint64(3) << qint64(100) << qint64(4) << qint64(8) << 2 << qint64(15);
    QTest::newRow("beyond the last value") << qint64(0) << qint64(100) << qint64(30) << qint64(95) << 1 << qint64(95);
    QTest::newRow("beyond 53 bits") << Lowest << Highest << qint64(1) << BeyondDouble << 1 << BeyondDouble + 1;
    QTest::newRow("at the largest") << Lowest << Highest << qint64(1) << Highest - 1 << 1 << Highest;
    QTest::newRow("at the smallest") << Lowest << Highest << qint64(4) << Lowest + 1 << -1 << Lowest;
    QTest::newRow("step too large to multiply") << Lowest << Highest << Highest << qint64(-1) << 10 << Highest - 1;
    QTest::newRow("no increment") << qint64(0) << qint64(9) << qint64(0) << qint64(5) << 1 << qint64(6);
}

void tst_IntegerSpinBox::steps()
{
    QFETCH(qint64, minimum);
    QFETCH(qint64, maximum);
    QFETCH(qint64, step);
    QFETCH(qint64, from);
    QFETCH(int, steps);
    QFETCH(qint64, to);
    IntegerSpinBox box;
    load(box, minimum, maximum, step, from);
    box.stepBy(steps);
    QCOMPARE(box.number(), to);
    QCOMPARE(box.text(), QString::number(to));
}

void tst_IntegerSpinBox::worksAsADoubleSpinBox()
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

QTEST_MAIN(tst_IntegerSpinBox)
#include "tst_IntegerSpinBox.moc"
