// SPDX-License-Identifier: MIT
#include <optional>

#include "DataRows.h"
#include "PanelBase/NumberText.h"

namespace {

struct Text
{
    const char *name; ///< what is typed
    std::optional<double> real; ///< nothing: refused
    std::optional<qint64> integer;
};

} // namespace

Q_DECLARE_METATYPE(Text)

class tst_NumberText : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void texts_data()
    {
        addDataRows<Text>({{"33.1", 33.1, {}},
                           {"33,1", 33.1, {}},
                           {"1,234", 1.234, {}},
                           {"1.234", 1.234, {}},
                           {"1,234.5", {}, {}},
                           {"1.234,5", {}, {}},
                           {"1.234.567", {}, {}},
                           {"1 234", {}, {}},
                           {"1'234", {}, {}},
                           {"-7", -7.0, -7},
                           {"+7", 7.0, 7},
                           {" 42 ", 42.0, 42},
                           {"1e3", 1000.0, {}},
                           {"", {}, {}},
                           {"-", {}, {}},
                           {"4x2", {}, {}},
                           {"0x10", {}, {}},
                           {"inf", {}, {}},
                           {"nan", {}, {}},
                           {"1e999", {}, {}},
                           {"9223372036854775807", 9223372036854775807.0, 9223372036854775807},
                           {"9223372036854775808", 9223372036854775808.0, {}}});
    }
    void texts()
    {
        QFETCH(Text, row);
        for (const QLocale &locale : {QLocale::c(), QLocale(QLocale::German), QLocale(QLocale::French)}) {
            QVERIFY2(NumberText::parse<double>(QLatin1String(row.name), locale) == row.real, qPrintable(locale.name()));
            QVERIFY2(NumberText::parse<qint64>(QLatin1String(row.name), locale) == row.integer,
                     qPrintable(locale.name()));
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
