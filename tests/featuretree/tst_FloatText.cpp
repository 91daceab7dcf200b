// SPDX-License-Identifier: MIT
#include "FeatureTree/FloatText.h"
#include "TestRows.h"

namespace {

const struct
{
    const char *name; ///< the text
    double value;
} Texts[] = {
    {"0", 0},
    {"-12.5", -12.5},
    {"1000000", 1000000},
    {"0.3333333333333333", 1 / 3.},
    {"0.0001", 1e-4},
    {"1.234e-05", 0.00001234},
    {"1000000000000000", 1e15},
    {"1.5e+16", 1.5e16},
    {"123456792", 123456792}, // of single precision, as the next ones
    {"33.1", static_cast<double>(33.1F)},
    {"16777.123", static_cast<double>(16777.123F)},
    {"0.1234567", static_cast<double>(0.1234567F)},
    {"1e-30", static_cast<double>(1e-30F)},
    {"inf", qInf()},
};

} // namespace

class tst_FloatText : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void texts_data() { addRows(Texts); }

    /// Read back in the precision of the value, the text gives it again.
    void texts()
    {
        const auto &[name, value] = currentRow(Texts);
        QString text = QLatin1String(name);
        QCOMPARE(floatText(value), text);
        const bool isSingle = static_cast<double>(static_cast<float>(value)) == value;
        QCOMPARE(isSingle ? static_cast<double>(text.toFloat()) : text.toDouble(), value);
        QCOMPARE(floatText(value, QLocale(QLocale::German)), text.replace(QLatin1Char('.'), QLatin1Char(',')));
    }
};

QTEST_MAIN(tst_FloatText)
#include "tst_FloatText.moc"
