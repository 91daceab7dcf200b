// SPDX-License-Identifier: MIT
#include <QtTest>

#include "PanelBase/NumberText.h"

class tst_NumberText : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void texts_data();
    void texts();
};

void tst_NumberText::texts_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QLocale>("locale");
    QTest::addColumn<QVariant>("real"); // invalid: refused
    QTest::addColumn<QVariant>("integer");
    const QVariant none;
    const auto row = [](const char *text, const QVariant &real, const QVariant &integer) {
        for (const QLocale &locale : {QLocale::c(), QLocale(QLocale::German), QLocale(QLocale::French)})
            QTest::addRow("%s, %s", text, qPrintable(locale.name()))
                << QString::fromUtf8(text) << locale << real << integer;
    };
    row("33.1", 33.1, none);
    row("33,1", 33.1, none);
    row("1,234", 1.234, none);
    row("1.234", 1.234, none);
    row("1,234.5", none, none);
    row("1.234,5", none, none);
    row("1.234.567", none, none);
    row("1 234", none, none);
    row("1'234", none, none);
    row("-7", -7.0, -7);
    row("+7", 7.0, 7);
    row(" 42 ", 42.0, 42);
    row("1e3", 1000.0, none);
    row("", none, none);
    row("-", none, none);
    row("4x2", none, none);
    row("0x10", none, none);
    row("inf", none, none);
    row("nan", none, none);
    row("1e999", none, none);
    row("9223372036854775807", 9223372036854775807.0, Q_INT64_C(9223372036854775807));
    row("9223372036854775808", 9223372036854775808.0, none);
    QTest::newRow("other digits") << QStringLiteral("٣٣٫١") << QLocale(QLocale::Arabic, QLocale::Egypt)
                                  << QVariant(33.1) << none;
}

void tst_NumberText::texts()
{
    QFETCH(QString, text);
    QFETCH(QLocale, locale);
    const auto real = NumberText::parse<double>(text, locale);
    QTEST(real ? QVariant(*real) : QVariant(), "real");
    const auto integer = NumberText::parse<qint64>(text, locale);
    QTEST(integer ? QVariant(*integer) : QVariant(), "integer");
}

QTEST_MAIN(tst_NumberText)
#include "tst_NumberText.moc"
