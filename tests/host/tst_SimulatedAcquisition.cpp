// SPDX-License-Identifier: MIT
#include <QElapsedTimer>
#include <QSignalSpy>
#include <QtTest>

#include "host/OpenDevice.h"

namespace {

QImage lastFrame(const QSignalSpy &frames)
{
    return frames.last().first().value<QImage>();
}

} // namespace

class tst_SimulatedAcquisition : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void acquisitionLocksAndUnlocks();
    void startedByTheFeatureItself();
    void framesFollowTheSize();
    void framesComeAtTheRate_data();
    void framesComeAtTheRate();
    void numberedAcquisitionsEndByThemselves_data();
    void numberedAcquisitionsEndByThemselves();
    void countersCountFrames();
    void triggerKindsKeepTheirModesApart();
    void oneTriggerMakesOneFrame();
    void triggersWaitForTheirDelay();
    void linesTriggerUnlessDebounced();
    void outputLinesCarryTheirSource();
    void slowReceiversLoseFrames();
    void framesEndWithClosing();
};

void tst_SimulatedAcquisition::acquisitionLocksAndUnlocks()
{
    const OpenDevice device("SIM-AREA-01");
    const auto locked = {"Width", "Height", "PixelFormat", "BinningHorizontal", "GevSCPSPacketSize"};
    QSignalSpy changed(device.operator->(), &Device::acquiringChanged);
    QString error;
    QVERIFY(device->startAcquisition(&error));
    QVERIFY(device->isAcquiring());
    for (const char *name : locked)
        QCOMPARE(device.access(name), GenApi::RO);
    QCOMPARE(device.access("UserSetLoad"), GenApi::NA);
    QCOMPARE(device.access("ExposureTime"), GenApi::RW);
    QCOMPARE(device.access("OffsetX"), GenApi::RW);
    device->stopAcquisition();
    for (const char *name : locked)
        QCOMPARE(device.access(name), GenApi::RW);
    QTRY_COMPARE(changed.count(), 2);
    QCOMPARE(changed.at(0).first().toBool(), true);
    QCOMPARE(changed.at(1).first().toBool(), false);
}

void tst_SimulatedAcquisition::startedByTheFeatureItself()
{
    const OpenDevice device("SIM-AREA-02");
    QSignalSpy changed(device.operator->(), &Device::acquiringChanged);
    QSignalSpy frames(device.operator->(), &Device::frameReady);
    device.command("AcquisitionStart")->Execute();
    QTRY_VERIFY(frames.count() > 0);
    QVERIFY(device->isAcquiring());
    QCOMPARE(device.access("Width"), GenApi::RO);
    device.command("AcquisitionStop")->Execute();
    QTRY_COMPARE(changed.count(), 2);
    QCOMPARE(device.access("Width"), GenApi::RW);
}

void tst_SimulatedAcquisition::framesFollowTheSize()
{
    const OpenDevice device("SIM-AREA-01");
    device.setAll("Width=320 Height=200 PixelFormat=RGB8");
    QSignalSpy frames(device.operator->(), &Device::frameReady);
    QString error;
    QVERIFY(device->startAcquisition(&error));
    QTRY_VERIFY(frames.count() > 0);
    QCOMPARE(lastFrame(frames).size(), QSize(320, 200));
    QCOMPARE(lastFrame(frames).format(), QImage::Format_RGB888);
    device->stopAcquisition();
    device.set("PixelFormat", "Mono8");
    device.set("BinningVertical", "2");
    QCoreApplication::processEvents();
    frames.clear();
    QVERIFY(device->startAcquisition(&error));
    QTRY_VERIFY(frames.count() > 1);
    QCOMPARE(lastFrame(frames).size(), QSize(320, 1024));
    QCOMPARE(lastFrame(frames).format(), QImage::Format_Grayscale8);
}

void tst_SimulatedAcquisition::framesComeAtTheRate_data()
{
    QTest::addColumn<int>("wanted");
    QTest::newRow("slow") << 10;
    QTest::newRow("fast") << 40;
}

void tst_SimulatedAcquisition::framesComeAtTheRate()
{
    QFETCH(int, wanted);
    const OpenDevice device("SIM-AREA-02");
    device.set("AcquisitionFrameRate", QByteArray::number(wanted).constData());
    QSignalSpy frames(device.operator->(), &Device::frameReady);
    QString error;
    QVERIFY(device->startAcquisition(&error));
    QTRY_VERIFY(frames.count() > 0);
    const int before = frames.count();
    QElapsedTimer clock;
    clock.start();
    QTRY_VERIFY(frames.count() >= before + wanted);
    const double rate = (frames.count() - before) * 1000.0 / double(clock.elapsed());
    // A busy machine may be late, but never early.
    QVERIFY2(rate > wanted * 0.4 && rate < wanted * 1.25, qPrintable(QString::number(rate)));
}

void tst_SimulatedAcquisition::numberedAcquisitionsEndByThemselves_data()
{
    QTest::addColumn<QByteArray>("mode");
    QTest::addColumn<int>("count");
    QTest::newRow("single") << QByteArray("SingleFrame") << 1;
    QTest::newRow("multi") << QByteArray("MultiFrame") << 3;
}

void tst_SimulatedAcquisition::numberedAcquisitionsEndByThemselves()
{
    QFETCH(QByteArray, mode);
    QFETCH(int, count);
    const OpenDevice device("SIM-AREA-02");
    device.setAll("AcquisitionMode=MultiFrame AcquisitionFrameCount=3");
    device.set("AcquisitionMode", mode.constData());
    QSignalSpy frames(device.operator->(), &Device::frameReady);
    QSignalSpy changed(device.operator->(), &Device::acquiringChanged);
    QString error;
    for (int acquisition : {1, 2}) { // each counts from 0
        QVERIFY(device->startAcquisition(&error));
        QTRY_COMPARE(changed.count(), 2 * acquisition);
        QTRY_COMPARE(frames.count(), count * acquisition);
        QVERIFY(!device->isAcquiring());
        QCOMPARE(device.access("Width"), GenApi::RW);
        QCOMPARE(device.integer("AcquiredFrameCount")->GetValue(false, true), int64_t(count));
    }
}

void tst_SimulatedAcquisition::countersCountFrames()
{
    const OpenDevice device("SIM-AREA-02");
    device.setAll("AcquisitionMode=SingleFrame CounterSelector=Counter1 CounterEventSource=FrameStart");
    QString error;
    QVERIFY(device->startAcquisition(&error));
    QTRY_VERIFY(!device->isAcquiring());
    const auto counted = [&](const char *value) { return device.integer(value)->GetValue(false, true); };
    QCOMPARE(counted("CounterValue"), int64_t(1));
    device.command("CounterReset")->Execute();
    QCOMPARE(counted("CounterValue"), int64_t(0));
    QCOMPARE(counted("CounterValueAtReset"), int64_t(1));
    device.set("CounterSelector", "Counter0");
    QCOMPARE(counted("CounterValueAtReset"), int64_t(0));
}

/// A trigger that is taken for one of another kind is missed, as three images wait after a burst.
void tst_SimulatedAcquisition::triggerKindsKeepTheirModesApart()
{
    const OpenDevice device("SIM-AREA-02");
    device.setAll("AcquisitionBurstFrameCount=3 TriggerSelector=FrameStart TriggerMode=On TriggerSource=Software"
                  " TriggerSelector=FrameBurstStart TriggerSource=Line1");
    QCOMPARE(device.text("TriggerMode"), QStringLiteral("Off"));
    QSignalSpy frames(device.operator->(), &Device::frameReady);
    QString error;
    for (const char *burst : {"TriggerMode=Off TriggerSource=Software", "TriggerMode=On TriggerSource=Line1"}) {
        device.setAll(QByteArray("TriggerSelector=FrameBurstStart ") + burst);
        frames.clear();
        QVERIFY(device->startAcquisition(&error));
        device.command("TriggerSoftware")->Execute();
        device.set("TriggerSelector", "FrameStart");
        device.command("TriggerSoftware")->Execute();
        QTRY_VERIFY(frames.count() > 0);
        QCOMPARE(device.integer("MissedTriggerCount")->GetValue(false, true), int64_t(0));
        device->stopAcquisition();
    }
}

void tst_SimulatedAcquisition::oneTriggerMakesOneFrame()
{
    const OpenDevice device("SIM-AREA-02");
    device.set("TriggerMode", "On");
    device.set("AcquisitionFrameRate", "0.5"); // is for cameras without a trigger
    QSignalSpy frames(device.operator->(), &Device::frameReady);
    QString error;
    QVERIFY(device->startAcquisition(&error));
    QTest::qWait(100);
    QCOMPARE(frames.count(), 0);
    QElapsedTimer clock;
    clock.start();
    for (int i = 1; i <= 3; ++i) {
        device.command("TriggerSoftware")->Execute();
        QTRY_COMPARE(frames.count(), i);
    }
    QVERIFY(clock.elapsed() < 2000);
    QTest::qWait(100);
    QCOMPARE(frames.count(), 3);
    device.set("TriggerSource", "Line1");
    device.command("TriggerSoftware")->Execute();
    QTest::qWait(100);
    QCOMPARE(frames.count(), 3);
    device.set("AcquisitionFrameRate", "50");
    device.set("TriggerMode", "Off");
    QTRY_VERIFY(frames.count() > 4);
}

void tst_SimulatedAcquisition::triggersWaitForTheirDelay()
{
    const OpenDevice device("SIM-AREA-02");
    device.setAll("TriggerMode=On TriggerDelay=300000");
    QSignalSpy frames(device.operator->(), &Device::frameReady);
    QString error;
    QVERIFY(device->startAcquisition(&error));
    QElapsedTimer clock;
    clock.start();
    device.command("TriggerSoftware")->Execute();
    QTRY_COMPARE(frames.count(), 1);
    QVERIFY(clock.elapsed() >= 300);
    device.command("TriggerSoftware")->Execute(); // a new start forgets it
    device->stopAcquisition();
    QVERIFY(device->startAcquisition(&error));
    QTest::qWait(400);
    QCOMPARE(frames.count(), 1);
}

void tst_SimulatedAcquisition::linesTriggerUnlessDebounced()
{
    const OpenDevice device("SIM-AREA-02");
    device.setAll("TriggerMode=On TriggerSource=Line0 LineDebouncerTime=400000");
    QSignalSpy frames(device.operator->(), &Device::frameReady);
    QString error;
    QVERIFY(device->startAcquisition(&error));
    QTest::qWait(700);
    QCOMPARE(frames.count(), 0);
    device.set("LineDebouncerTime", "10");
    QTRY_VERIFY(frames.count() >= 2);
}

void tst_SimulatedAcquisition::outputLinesCarryTheirSource()
{
    const OpenDevice device("SIM-AREA-01");
    device.setAll("LineSelector=Line3 LineMode=Output");
    const auto isHigh = [&device] {
        device.nodes().Poll(500);
        return device.boolean("LineStatus")->GetValue();
    };
    device.set("LineSource", "UserOutput0");
    QTRY_VERIFY(!isHigh());
    device.set("UserOutputValue", "1");
    QTRY_VERIFY(isHigh());
    device.set("LineSource", "FrameTriggerWait");
    QTRY_VERIFY(!isHigh());
    device.set("TriggerMode", "On");
    QString error;
    QVERIFY(device->startAcquisition(&error));
    QTRY_VERIFY(isHigh());
    device.set("LineSource", "AcquisitionActive");
    device->stopAcquisition();
    QTRY_VERIFY(!isHigh());
}

void tst_SimulatedAcquisition::slowReceiversLoseFrames()
{
    const OpenDevice device("SIM-AREA-02");
    QSignalSpy frames(device.operator->(), &Device::frameReady);
    QString error;
    QVERIFY(device->startAcquisition(&error));
    const GenApi::CIntegerPtr dropped = device.integer("DroppedFrameCount");
    QElapsedTimer clock;
    clock.start();
    while (dropped->GetValue(false, true) < 3 && clock.elapsed() < 5000)
        QThread::msleep(20);
    QVERIFY(dropped->GetValue(false, true) >= 3);
    device->stopAcquisition();
    QTest::qWait(50);
    QVERIFY(frames.count() == 3 || frames.count() == 4); // one may have been on its way when the first was fetched
}

void tst_SimulatedAcquisition::framesEndWithClosing()
{
    const OpenDevice device("SIM-AREA-02");
    QSignalSpy frames(device.operator->(), &Device::frameReady);
    QString error;
    QVERIFY(device->startAcquisition(&error));
    const GenApi::CIntegerPtr acquired = device.integer("AcquiredFrameCount");
    while (acquired->GetValue(false, true) < 2)
        QThread::msleep(5);
    device->close();
    QVERIFY(device->open(&error));
    QCoreApplication::processEvents();
    QCOMPARE(frames.count(), 0);
}

QTEST_GUILESS_MAIN(tst_SimulatedAcquisition)
#include "tst_SimulatedAcquisition.moc"
