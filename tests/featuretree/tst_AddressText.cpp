// SPDX-License-Identifier: MIT
#include <QtTest>

#include "FeatureTree/AddressText.h"

class tst_AddressText : public QObject
{
    Q_OBJECT

private Q_SLOTS:
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

QTEST_GUILESS_MAIN(tst_AddressText)
#include "tst_AddressText.moc"
