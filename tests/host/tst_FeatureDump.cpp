// SPDX-License-Identifier: MIT
#include <QTextStream>
#include <QtTest>

#include "TestDevice.h"
#include "Viewer/FeatureDump.h"

class tst_FeatureDump : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void printsOneRowALine();
    void printsWhatCannotBeRead();

private:
    static QStringList dump(const Device &device);
};

/// The lines below the root category, without its path.
QStringList tst_FeatureDump::dump(const Device &device)
{
    QString text;
    QTextStream stream(&text);
    dumpFeatures(*device.nodeMap(), stream);
    QStringList lines = text.split(QLatin1Char('\n'), Qt::SkipEmptyParts);
    const QString root = lines.isEmpty() ? QString() : lines.takeFirst().section(QLatin1Char('\t'), 0, 0);
    for (QString &line : lines)
        line =
            line.startsWith(root + QLatin1Char('/')) ? line.mid(root.size() + 1) : QStringLiteral("outside: ") + line;
    return lines;
}

void tst_FeatureDump::printsOneRowALine()
{
    TestDevice device(QStringLiteral("cam"));
    QString error;
    QVERIFY2(device.open(&error), qPrintable(error));
    device.port.poke(TestDevice::WidthAddress, 64);
    device.port.poke(0x14, 640);
    GenApi::CFloatPtr(device.nodeMap()->GetNode("Gain"))->SetValue(1000000);
    QCOMPARE(dump(device),
             QStringList({
                 QStringLiteral("Width\tInteger\tRW\tBeginner\t64\tnumber box"),
                 QStringLiteral("Gain\tFloat\tRW\tBeginner\t1000000\tfloat box"),
                 QStringLiteral("ReverseX\tBoolean\tRW\tBeginner\tFalse\tboolean"),
                 QStringLiteral("PixelFormat\tEnumeration\tRW\tBeginner\tMono8\tlist"),
                 QStringLiteral("DeviceUserID\tString\tRW\tBeginner\tleft\ttext"),
                 QStringLiteral("TriggerSoftware\tCommand\tWO\tBeginner\t{Execute}\tbutton"),
                 QStringLiteral("SensorWidth\tInteger\tRO\tBeginner\t640\t-"),
             }));
}

void tst_FeatureDump::printsWhatCannotBeRead()
{
    TestDevice device(QStringLiteral("cam"));
    QString error;
    QVERIFY2(device.open(&error), qPrintable(error));
    device.port.readFault = MemoryPort::Fault::Timeout;
    const QStringList lines = dump(device);
    QCOMPARE(lines.size(), 7);
    QVERIFY(lines.contains(QStringLiteral("DeviceUserID\tString\tRW\tBeginner\tleft\ttext")));
}

QTEST_MAIN(tst_FeatureDump)
#include "tst_FeatureDump.moc"
