// SPDX-License-Identifier: MIT
#include "FeatureTree/AddressText.h"
#include "FeatureTree/FloatText.h"
#include "TestRows.h"

namespace {

const struct
{
    const char *name; ///< the text
    double value;
} Texts[] = {
    // clang-format off
    {"0", 0}, {"-12.5", -12.5}, {"1000000", 1000000}, {"0.3333333333333333", 1 / 3.}, {"0.0001", 1e-4},
    {"1.234e-05", 0.00001234}, {"1000000000000000", 1e15}, {"1.5e+16", 1.5e16}, {"inf", qInf()},
    // of single precision
    {"123456792", 123456792}, {"33.1", static_cast<double>(33.1F)}, {"16777.123", static_cast<double>(16777.123F)},
    {"0.1234567", static_cast<double>(0.1234567F)}, {"1e-30", static_cast<double>(1e-30F)}
    // clang-format on
};

} // namespace

/// What the tree shows of numbers and addresses.
class tst_ValueTexts : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void floats_data() { addRows(Texts); }

    /// Read back in the precision of the value, the text gives it again.
    void floats()
    {
        const auto &[name, value] = currentRow(Texts);
        QString text = QLatin1String(name);
        QCOMPARE(floatText(value), text);
        const bool isSingle = static_cast<double>(static_cast<float>(value)) == value;
        QCOMPARE(isSingle ? static_cast<double>(text.toFloat()) : text.toDouble(), value);
        QCOMPARE(floatText(value, QLocale(QLocale::German)), text.replace(QLatin1Char('.'), QLatin1Char(',')));
    }

    void ipv4ThereAndBack()
    {
        for (const auto &[value, text] : {std::pair(0xffffff00u, "255.255.255.0"), {0x0a000001u, "10.0.0.1"}}) {
            QCOMPARE(IPV4IntegerToString(value), QLatin1String(text));
            QCOMPARE(IPV4StringToInteger(QLatin1String(text)), static_cast<int>(value));
        }
    }

    void macIsTheLowest48Bits()
    {
        QCOMPARE(MACIntegerToString(0xffff001a2b3c4dff), QStringLiteral("0.26.43.60.77.255"));
    }

    /// Four parts, or 0; too large a part spills over bits that are set and into clear ones.
    void faultyIpv4()
    {
        for (const auto &[text, pattern] : {std::pair("1.2.3", 0),
                                            {"1.2.3.4.5", 0},
                                            {"", 0},
                                            {"a.b.c.d", 0},
                                            {"1..2.3", 0x01000203},
                                            {"1.2.3.300", 0x0102032c},
                                            {"1.2.2.300", 0x0102032c}})
            QCOMPARE(std::pair(text, IPV4StringToInteger(QLatin1String(text))), std::pair(text, pattern));
    }
};

QTEST_MAIN(tst_ValueTexts)
#include "tst_ValueTexts.moc"
