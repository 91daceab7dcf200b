// SPDX-License-Identifier: MIT
#include <QFile>
#include <QTemporaryDir>
#include <QtTest>

#include "Devices/DescriptionDevice.h"
#include "Features/NodeText.h"

namespace {

QByteArray description(const QByteArray &features, const QByteArray &names)
{
    QByteArray list;
    for (const QByteArray &name : names.split(' '))
        list += "<pFeature>" + name + "</pFeature>";
    return R"(<?xml version="1.0" encoding="utf-8"?>
<RegisterDescription ModelName="M" VendorName="V" StandardNameSpace="None" SchemaMajorVersion="1"
    SchemaMinorVersion="1" SchemaSubMinorVersion="0" MajorVersion="1" MinorVersion="0" SubMinorVersion="0"
    ToolTip="" ProductGuid="0" VersionGuid="0" xmlns="http://www.genicam.org/GenApi/Version_1_1">
  <Category Name="Root" NameSpace="Standard">)"
        + list + "</Category>" + features + R"(<Port Name="Device"/></RegisterDescription>)";
}

QByteArray integerRegister(const QByteArray &name, const QByteArray &address)
{
    return "<IntReg Name=\"" + name + "\"><Address>" + address
        + "</Address><Length>4</Length><AccessMode>RW</AccessMode><pPort>Device</pPort>"
          "<Sign>Unsigned</Sign><Endianess>BigEndian</Endianess></IntReg>";
}

} // namespace

class tst_DescriptionDevice : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void featuresWorkOnMemory();
    void refusesWithAReason_data();
    void refusesWithAReason();

private:
    QString write(const QByteArray &content);

    QTemporaryDir m_folder;
};

QString tst_DescriptionDevice::write(const QByteArray &content)
{
    const QString path = m_folder.filePath(QStringLiteral("camera.xml"));
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly))
        qFatal("no temporary file");
    file.write(content);
    return path;
}

void tst_DescriptionDevice::featuresWorkOnMemory()
{
    DescriptionDevice device(
        write(description(integerRegister("Low", "0") + integerRegister("High", "0xFFFFFFFFFFFF"), "Low High")));
    QString error;
    QVERIFY2(device.open(&error), qPrintable(error));
    QVERIFY(device.open(&error));
    QCOMPARE(readNodeText(*device.nodeMap(), QStringLiteral("High")), QStringLiteral("0"));
    writeNodeText(*device.nodeMap(), QStringLiteral("High"), QStringLiteral("4294967295"));
    device.nodeMap()->InvalidateNodes();
    QCOMPARE(readNodeText(*device.nodeMap(), QStringLiteral("High")), QStringLiteral("4294967295"));
    QCOMPARE(readNodeText(*device.nodeMap(), QStringLiteral("Low")), QStringLiteral("0"));
    QVERIFY(!device.startAcquisition(&error));
    device.close();
    QVERIFY(!device.nodeMap());
    QVERIFY(device.open(&error));
    QCOMPARE(readNodeText(*device.nodeMap(), QStringLiteral("High")), QStringLiteral("0"));
}

void tst_DescriptionDevice::refusesWithAReason_data()
{
    QTest::addColumn<QByteArray>("content");
    QTest::newRow("empty") << QByteArray();
    QTest::newRow("no XML") << QByteArray("Width = 640");
    QTest::newRow("broken archive") << QByteArray("PK\3\4 and no more");
    QTest::newRow("unfinished") << description("", "Width").left(300);
}

void tst_DescriptionDevice::refusesWithAReason()
{
    QFETCH(QByteArray, content);
    DescriptionDevice device(write(content));
    QString error;
    QVERIFY(!device.open(&error));
    QVERIFY(!error.isEmpty());
    QVERIFY(!device.isOpen());

    QVERIFY(QFile::remove(m_folder.filePath(QStringLiteral("camera.xml"))));
    QString missing;
    QVERIFY(!device.open(&missing));
    QVERIFY(!missing.isEmpty());
}

QTEST_GUILESS_MAIN(tst_DescriptionDevice)
#include "tst_DescriptionDevice.moc"
