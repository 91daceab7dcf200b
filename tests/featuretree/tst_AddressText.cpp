// SPDX-License-Identifier: MIT
#include <QtTest>

#include "FeatureTree/AddressText.h"

class tst_AddressText : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void ipv4ToText_data();
    void ipv4ToText();
    void macToText_data();
    void macToText();
    void textToIpv4_data();
    void textToIpv4();
};

void tst_AddressText::ipv4ToText_data()
{
    QTest::addColumn<uint>("value");
    QTest::addColumn<QString>("text");
    QTest::newRow("mask") << 0xffffff00u << "255.255.255.0";
    QTest::newRow("class A") << 0x0a000001u << "10.0.0.1";
    QTest::newRow("highest bit") << 0xc0a80101u << "192.168.1.1";
    QTest::newRow("zero") << 0u << "0.0.0.0";
}

void tst_AddressText::ipv4ToText()
{
    QFETCH(uint, value);
    QFETCH(QString, text);
    QCOMPARE(IPV4IntegerToString(value), text);
    QCOMPARE(IPV4StringToInteger(text), static_cast<int>(value));
}

void tst_AddressText::macToText_data()
{
    QTest::addColumn<qulonglong>("value");
    QTest::addColumn<QString>("text");
    QTest::newRow("address") << qulonglong(0x001a2b3c4d5e) << "0.26.43.60.77.94";
    QTest::newRow("bits above 47 are ignored") << qulonglong(0xffff001a2b3c4d5e) << "0.26.43.60.77.94";
    QTest::newRow("all ones") << qulonglong(0xffffffffffff) << "255.255.255.255.255.255";
}

void tst_AddressText::macToText()
{
    QFETCH(qulonglong, value);
    QFETCH(QString, text);
    QCOMPARE(MACIntegerToString(value), text);
}

void tst_AddressText::textToIpv4_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<uint>("pattern");
    QTest::newRow("three parts") << "1.2.3" << 0u;
    QTest::newRow("five parts") << "1.2.3.4.5" << 0u;
    QTest::newRow("empty") << "" << 0u;
    QTest::newRow("no numbers") << "a.b.c.d" << 0u;
    QTest::newRow("empty part is 0") << "1..2.3" << 0x01000203u;
    QTest::newRow("too large a part spills over bits that are set") << "1.2.3.300" << 0x0102032cu;
    QTest::newRow("too large a part spills into clear bits") << "1.2.2.300" << 0x0102032cu;
}

void tst_AddressText::textToIpv4()
{
    QFETCH(QString, text);
    QFETCH(uint, pattern);
    QCOMPARE(IPV4StringToInteger(text), static_cast<int>(pattern));
}

QTEST_GUILESS_MAIN(tst_AddressText)
#include "tst_AddressText.moc"
