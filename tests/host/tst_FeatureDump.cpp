// SPDX-License-Identifier: MIT
#include <QTextStream>
#include <QtTest>

#include "TestDevice.h"
#include "Viewer/FeatureDump.h"

class tst_FeatureDump : public QObject
{
    Q_OBJECT

    /// The lines below the root category, without its path.
    static QString dump(const Device &device)
    {
        QString text;
        QTextStream stream(&text);
        dumpFeatures(*device.nodeMap(), stream);
        const QString root = text.section(QLatin1Char('\t'), 0, 0);
        return text.section(QLatin1Char('\n'), 1).remove(root + QLatin1Char('/'));
    }

private Q_SLOTS:
    void printsOneRowALine()
    {
        TestDevice device(QStringLiteral("cam"));
        QString error;
        QVERIFY2(device.open(&error), qPrintable(error));
        device.port.poke(TestDevice::WidthAddress, 64);
        device.port.poke(0x14, 640);
        GenApi::CFloatPtr(device.nodeMap()->GetNode("Gain"))->SetValue(1000000);
        QCOMPARE(dump(device),
                 QStringLiteral("Width\tInteger\tRW\tBeginner\t64\tnumber box\n"
                                "Gain\tFloat\tRW\tBeginner\t1000000\tfloat box\n"
                                "ReverseX\tBoolean\tRW\tBeginner\tFalse\tboolean\n"
                                "PixelFormat\tEnumeration\tRW\tBeginner\tMono8\tlist\n"
                                "DeviceUserID\tString\tRW\tBeginner\tleft\ttext\n"
                                "TriggerSoftware\tCommand\tWO\tBeginner\t{Execute}\tbutton\n"
                                "SensorWidth\tInteger\tRO\tBeginner\t640\t-\n"));
    }

    void printsWhatCannotBeRead()
    {
        TestDevice device(QStringLiteral("cam"));
        QString error;
        QVERIFY2(device.open(&error), qPrintable(error));
        device.port.readFault = MemoryPort::Fault::Timeout;
        const QString lines = dump(device);
        QCOMPARE(lines.count(QLatin1Char('\n')), 7);
        QVERIFY2(lines.contains(QStringLiteral("DeviceUserID\tString\tRW\tBeginner\tleft\ttext\n")), qPrintable(lines));
    }
};

QTEST_MAIN(tst_FeatureDump)
#include "tst_FeatureDump.moc"
