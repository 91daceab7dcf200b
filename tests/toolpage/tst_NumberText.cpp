// SPDX-License-Identifier: MIT
#include <optional>
#include <tuple>

#include <QTest>

#include "PanelBase/NumberText.h"

class tst_NumberText : public QObject
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
};

QTEST_MAIN(tst_NumberText)
#include "tst_NumberText.moc"
