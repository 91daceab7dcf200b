// SPDX-License-Identifier: MIT
#include <QtTest>

#include "host/OpenDevice.h"

namespace {

/// The frames of an acquisition that starts with these settings.
struct Frames : QSignalSpy
{
    explicit Frames(const OpenDevice &device, const QByteArray &settings = "TriggerMode=Off")
        : QSignalSpy(device.operator->(), &Device::frameReady)
    {
        device.setAll(settings);
        device.start();
    }
};

} // namespace

class tst_SimulatedAcquisition : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void acquisitionLocksAndUnlocks()
    {
        const OpenDevice device("SIM-AREA-01");
        const QByteArray locked = "Width:RO Height:RO PixelFormat:RO BinningHorizontal:RO GevSCPSPacketSize:RO ";
        QSignalSpy changed(device.operator->(), &Device::acquiringChanged);
        device.start();
        QVERIFY(device->isAcquiring());
        QCOMPARE(device.failureOf(locked + "UserSetLoad:NA ExposureTime:RW OffsetX:RW"), QByteArray());
        device->stopAcquisition();
        QCOMPARE(device.failureOf(QByteArray(locked).replace("RO", "RW").trimmed()), QByteArray());
        QTRY_COMPARE(changed, (QList<QList<QVariant>>{{true}, {false}}));
    }

    void startedByTheFeatureItself()
    {
        const OpenDevice device("SIM-AREA-01");
        device.setAll("Width=320 BinningVertical=2 PixelFormat=RGB8");
        QSignalSpy changed(device.operator->(), &Device::acquiringChanged);
        QSignalSpy frames(device.operator->(), &Device::frameReady);
        QCOMPARE(device.failureOf("AcquisitionStart= Width:RO"), QByteArray());
        QVERIFY(device->isAcquiring());
        QTRY_VERIFY(frames.count() > 0);
        const QImage frame = frames.last().first().value<QImage>();
        QCOMPARE(frame.size(), QSize(320, 1024));
        QCOMPARE(frame.format(), QImage::Format_RGB888);
        QCOMPARE(device.failureOf("AcquisitionStop= Width:RW"), QByteArray());
        QTRY_COMPARE(changed.count(), 2);
    }

    void framesComeAtTheRate()
    {
        for (const int wanted : {10, 40}) {
            const OpenDevice device("SIM-AREA-02");
            Frames frames(device, "AcquisitionFrameRate=" + QByteArray::number(wanted));
            QTRY_VERIFY(frames.count() > 0);
            const int before = frames.count();
            QElapsedTimer clock;
            clock.start();
            QTRY_VERIFY(frames.count() >= before + wanted);
            const double rate = (frames.count() - before) * 1000.0 / double(clock.elapsed());
            // A busy machine may be late, but never early.
            QVERIFY2(rate > wanted * 0.4 && rate < wanted * 1.25, qPrintable(QString::number(rate)));
        }
    }

    void numberedAcquisitionsEndByThemselves()
    {
        for (const auto &[mode, count] : {std::pair{"SingleFrame", 1}, {"MultiFrame", 3}}) {
            const OpenDevice device("SIM-AREA-02");
            device.setAll("AcquisitionMode=MultiFrame AcquisitionFrameCount=3");
            device.set("AcquisitionMode", mode);
            QSignalSpy frames(device.operator->(), &Device::frameReady);
            QSignalSpy changed(device.operator->(), &Device::acquiringChanged);
            for (int acquisition : {1, 2}) { // each counts from 0
                device.start();
                QTRY_COMPARE(changed.count(), 2 * acquisition);
                QTRY_COMPARE(frames.count(), count * acquisition);
                QVERIFY(!device->isAcquiring());
                QCOMPARE(device.access("Width"), GenApi::RW);
                QCOMPARE(device.integer("AcquiredFrameCount")->GetValue(false, true), int64_t(count));
            }
        }
    }

    void countersCountFrames()
    {
        const OpenDevice device("SIM-AREA-02");
        device.setAll("AcquisitionMode=SingleFrame CounterSelector=Counter1 CounterEventSource=FrameStart");
        device.start();
        QTRY_VERIFY(!device->isAcquiring());
        QCOMPARE(device.failureOf("CounterValue==1 CounterReset= CounterValue==0 CounterValueAtReset==1 "
                                  "CounterSelector=Counter0 CounterValueAtReset==0"),
                 QByteArray());
    }

    /// A trigger that is taken for one of another kind is missed, as three images wait after a burst.
    void triggerKindsKeepTheirModesApart()
    {
        const OpenDevice device("SIM-AREA-02");
        device.setAll("AcquisitionBurstFrameCount=3 TriggerSelector=FrameStart TriggerMode=On TriggerSource=Software"
                      " TriggerSelector=FrameBurstStart TriggerSource=Line1");
        QCOMPARE(device.text("TriggerMode"), QStringLiteral("Off"));
        QSignalSpy frames(device.operator->(), &Device::frameReady);
        for (const char *burst : {"TriggerMode=Off TriggerSource=Software", "TriggerMode=On TriggerSource=Line1"}) {
            device.setAll(QByteArray("TriggerSelector=FrameBurstStart ") + burst);
            frames.clear();
            device.start();
            device.command("TriggerSoftware")->Execute();
            device.set("TriggerSelector", "FrameStart");
            device.command("TriggerSoftware")->Execute();
            QTRY_VERIFY(frames.count() > 0);
            QCOMPARE(device.integer("MissedTriggerCount")->GetValue(false, true), int64_t(0));
            device->stopAcquisition();
        }
    }

    void oneTriggerMakesOneFrame()
    {
        const OpenDevice device("SIM-AREA-02");
        Frames frames(device, "TriggerMode=On AcquisitionFrameRate=0.5"); // the rate is for cameras without a trigger
        QTest::qWait(100);
        QCOMPARE(frames.count(), 0);
        QElapsedTimer clock;
        clock.start();
        for (int i = 1; i <= 3; ++i) {
            device.command("TriggerSoftware")->Execute();
            QTRY_COMPARE(frames.count(), i);
        }
        QVERIFY(clock.elapsed() < 2000);
        device.set("TriggerSource", "Line1");
        device.command("TriggerSoftware")->Execute();
        QTest::qWait(100);
        QCOMPARE(frames.count(), 3);
        device.setAll("AcquisitionFrameRate=50 TriggerMode=Off");
        QTRY_VERIFY(frames.count() > 4);
    }

    void triggersWaitForDelayAndDebouncer()
    {
        const OpenDevice device("SIM-AREA-02");
        Frames frames(device, "TriggerMode=On TriggerDelay=300000");
        QElapsedTimer clock;
        clock.start();
        device.command("TriggerSoftware")->Execute();
        QTRY_COMPARE(frames.count(), 1);
        QVERIFY(clock.elapsed() >= 300);
        device.command("TriggerSoftware")->Execute(); // a new start forgets it
        device->stopAcquisition();
        device.start();
        QTest::qWait(400);
        QCOMPARE(frames.count(), 1);
        device->stopAcquisition();

        Frames byLine(device, "TriggerDelay=0 TriggerSource=Line0 LineDebouncerTime=400000");
        QTest::qWait(700);
        QCOMPARE(byLine.count(), 0);
        device.set("LineDebouncerTime", "10");
        QTRY_VERIFY(byLine.count() >= 2);
    }

    void outputLinesCarryTheirSource()
    {
        const OpenDevice device("SIM-AREA-01");
        device.setAll("LineSelector=Line3 LineMode=Output");
        const auto isHigh = [&device] {
            device.nodes().Poll(500);
            return device.boolean("LineStatus")->GetValue();
        };
        for (const auto &[setting, high] : {std::pair{"LineSource=UserOutput0", false},
                                            {"UserOutputValue=1", true},
                                            {"LineSource=FrameTriggerWait", false},
                                            {"TriggerMode=On AcquisitionStart=", true},
                                            {"LineSource=AcquisitionActive", true},
                                            {"AcquisitionStop=", false}}) {
            device.setAll(setting);
            QTRY_VERIFY2(isHigh() == high, setting);
        }
    }

    void slowReceiversLoseFrames()
    {
        const OpenDevice device("SIM-AREA-02");
        Frames frames(device);
        const GenApi::CIntegerPtr dropped = device.integer("DroppedFrameCount");
        QElapsedTimer clock;
        clock.start();
        while (dropped->GetValue(false, true) < 3 && clock.elapsed() < 5000)
            QThread::msleep(20);
        QVERIFY(dropped->GetValue(false, true) >= 3);
        device->stopAcquisition();
        QTest::qWait(50);
        QVERIFY(frames.count() == 3 || frames.count() == 4); // one may have been on its way when the first was fetched
        frames.clear();
        device.start(); // and none after closing
        const GenApi::CIntegerPtr acquired = device.integer("AcquiredFrameCount");
        while (acquired->GetValue(false, true) < 2)
            QThread::msleep(5);
        device->close();
        QString error;
        QVERIFY(device->open(&error));
        QCoreApplication::processEvents();
        QCOMPARE(frames.count(), 0);
    }
};

QTEST_GUILESS_MAIN(tst_SimulatedAcquisition)
#include "tst_SimulatedAcquisition.moc"
