// SPDX-License-Identifier: MIT
#include <QtTest>

#include "FeatureTree/FloatText.h"

class tst_FloatText : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void texts_data();
    void texts();
};

void tst_FloatText::texts_data()
{
    QTest::addColumn<double>("value");
    QTest::addColumn<QString>("text");
    const auto row = [](double value, const char *text) { QTest::newRow(text) << value << QString::fromLatin1(text); };
    row(0, "0");
    row(-12.5, "-12.5");
    row(1000000, "1000000");
    row(123456.789, "123456.789");
    row(0.1, "0.1");
    row(1 / 3., "0.3333333333333333");
    row(1e-4, "0.0001");
    row(0.00001234, "1.234e-05");
    row(1e15, "1000000000000000");
    row(1.5e16, "1.5e+16");
    row(123456792, "123456792"); // of single precision, as the next ones
    row(static_cast<double>(33.1F), "33.1");
    row(static_cast<double>(16777.123F), "16777.123");
    row(static_cast<double>(0.1234567F), "0.1234567");
    row(static_cast<double>(1e-30F), "1e-30");
    row(qInf(), "inf");
}

/// Read back in the precision of the value, the text gives it again.
void tst_FloatText::texts()
{
    QFETCH(double, value);
    QFETCH(QString, text);
    QCOMPARE(floatText(value), text);
    const bool isSingle = static_cast<double>(static_cast<float>(value)) == value;
    QCOMPARE(isSingle ? static_cast<double>(text.toFloat()) : text.toDouble(), value);
    QCOMPARE(floatText(value, QLocale(QLocale::German)), text.replace(QLatin1Char('.'), QLatin1Char(',')));
}

QTEST_MAIN(tst_FloatText)
#include "tst_FloatText.moc"
