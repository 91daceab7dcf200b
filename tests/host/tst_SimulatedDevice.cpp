// SPDX-License-Identifier: MIT
#include <set>

#include <QtTest>

#include "Simulation/Firmware.h"
#include "host/OpenDevice.h"
#include "support/FatalMessages.h"

using std::chrono::milliseconds;

namespace {

constexpr auto AreaScan = "SIM-AREA-01";
constexpr auto Card = "SIM-CARD-01";

} // namespace

class tst_SimulatedDevice : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    /// They load without complaint, and each feature starts with a value and is described.
    void descriptionsAreSane()
    {
        for (const auto &[id, least] :
             {std::pair{AreaScan, 290}, {"SIM-AREA-02", 290}, {"SIM-PROFILER-01", 85}, {"SIM-SL-01", 65}, {Card, 36}}) {
            const FatalMessages messages;
            const OpenDevice device(id);
            QVERIFY2(device->inside().oddLines().isEmpty(), id);
            GenApi::NodeList_t nodes;
            device.nodes().GetNodes(nodes);
            std::multiset<int> levels;
            for (GenApi::INode *node : nodes) {
                const GenApi::EInterfaceType type = node->GetPrincipalInterfaceType();
                if (!node->IsFeature() || type == GenApi::intfICategory)
                    continue;
                const QByteArray name = node->GetName().c_str();
                QVERIFY2(node->GetToolTip().size() > 10 && node->GetDescription().size() > 10, name);
                levels.insert(node->GetVisibility());
                if (!GenApi::IsReadable(node) || type == GenApi::intfICommand)
                    continue;
                const auto value = device.failureOf(name + "==?");
                QVERIFY2(value.contains(": it is "), value);
                QVERIFY2(type != GenApi::intfIEnumeration || GenApi::CEnumerationPtr(node)->GetCurrentEntry(), name);
            }
            QVERIFY2(int(levels.size()) >= least && int(levels.size()) <= least + 40, id);
            QVERIFY2(levels.count(GenApi::Beginner) && levels.count(GenApi::Expert) && levels.count(GenApi::Guru), id);
        }
    }

    void devicesDiffer()
    {
        const OpenDevice device(AreaScan);
        QCOMPARE(device->typeCode(), QStringLiteral("0"));
        QCOMPARE(device.failureOf("WidthMax==2448 DeviceSerialNumber==SIM-AREA-01 BalanceWhiteAuto:RW"), QByteArray());
        QCOMPARE(
            OpenDevice("SIM-AREA-02").failureOf("WidthMax==640 DeviceSerialNumber==SIM-AREA-02 BalanceWhiteAuto:NA"),
            QByteArray());
        const OpenDevice input(Card);
        QCOMPARE(input->kind(), Device::Kind::Card);
        QVERIFY(!input->canAcquire());
    }

    void reopenedDevicesWork()
    {
        const OpenDevice device(AreaScan);
        device.start();
        device->close();
        QVERIFY(!device->isOpen() && !device->isAcquiring() && !device->nodeMap());
        QString error;
        QVERIFY(!device->startAcquisition(&error));
        QVERIFY(!error.isEmpty());
        QVERIFY(device->open(&error));
        QSignalSpy frames(device.operator->(), &Device::frameReady);
        device.start();
        QTRY_VERIFY(frames.count() > 1);
    }

    void commandsEndAndValuesMoveByThemselves()
    {
        const OpenDevice device(AreaScan);
        const GenApi::CCommandPtr command = device.command("DeviceRegistersCheck");
        QVERIFY(command->IsDone());
        command->Execute();
        QVERIFY(!command->IsDone());
        QTRY_VERIFY_WITH_TIMEOUT(command->IsDone(), 2000);

        const GenApi::CFloatPtr temperature = device.number("DeviceTemperature");
        const double before = temperature->GetValue(false, true);
        QTRY_VERIFY(!qFuzzyCompare(temperature->GetValue(false, true), before));
        device.nodes().Poll(1000);
        QVERIFY(!qFuzzyCompare(temperature->GetValue(), before));
    }

    void refusalsCarryTheDevicesWords()
    {
        const std::tuple<const char *, const char *, QString> rows[] = {
            {"AcquisitionFrameRate", "300",
             QStringLiteral("300.0 frames per second need 1504.1 MB/s, the link carries 122.0 MB/s")},
            {"AcquisitionFrameRate", "24", {}},
            {"TestEvenNumber", "7", QStringLiteral("7 is odd; this register takes even numbers only")},
            {"TestEvenNumber", "8", {}},
            {"GevPersistentIPAddress", "0",
             QStringLiteral("the address of a camera cannot be 0.0.0.0 or 255.255.255.255")},
            {"UserSetDefault", "UserSet2", QStringLiteral("the user set UserSet2 was never saved")},
        };
        for (const auto &[feature, value, words] : rows) {
            const OpenDevice device(AreaScan);
            const QString before = device.text(feature);
            QCOMPARE(device.refusal(feature, value), words);
            QVERIFY2((device.text(feature) == before) != words.isEmpty(), feature);
        }
    }

    void accessesTakeTheirTime()
    {
        const OpenDevice device(AreaScan);
        device->setLatency(milliseconds(20));
        QElapsedTimer clock;
        clock.start();
        device.integer("Width")->GetValue(false, true);
        QVERIFY(clock.elapsed() >= 20);
        device->setLatency(milliseconds(0));
        device->setFault(SimulatedDevice::Fault::Timeout); // silence costs one deadline
        clock.start();
        for (int i = 0; i < 20; ++i)
            QVERIFY_EXCEPTION_THROWN(device.integer("Width")->GetValue(false, true), GenICam::TimeoutException);
        QVERIFY(clock.elapsed() >= SimulatedPort::Deadline.count());
        QVERIFY(clock.elapsed() < 2 * SimulatedPort::Deadline.count());
    }

    void faultsAndTheirEnd()
    {
        using Fault = SimulatedDevice::Fault;
        for (const Fault fault : {Fault::Timeout, Fault::Refuse, Fault::Drop}) {
            const OpenDevice device(AreaScan);
            device->setFault(fault);
            QVERIFY_EXCEPTION_THROWN(device.integer("OffsetX")->GetValue(false, true), GenICam::GenericException);
            QVERIFY_EXCEPTION_THROWN(device.integer("Width")->SetValue(640, false), GenICam::GenericException);
            QString error;
            QVERIFY(!device->startAcquisition(&error));
            QVERIFY(!error.isEmpty());
            device->setFault(Fault::None);
            QCOMPARE(device.integer("Width")->GetValue(false, true), int64_t(2448));
            QVERIFY2(device->startAcquisition(&error), qPrintable(error));
            device->setFault(fault);
            device->stopAcquisition();
            QVERIFY(!device->isAcquiring());
            device->close();
            QVERIFY(!device->open(&error));
        }
    }

    void aDroppedLinkIsAnnounced()
    {
        const OpenDevice device(AreaScan);
        device.start();
        QSignalSpy lost(device.operator->(), &Device::lost);
        QSignalSpy acquisition(device.operator->(), &Device::acquiringChanged);
        device->setFault(SimulatedDevice::Fault::Drop);
        QCOMPARE(lost.count(), 1);
        QVERIFY(!device->isAcquiring());
        QTRY_VERIFY(acquisition.contains({false}));
        device->close();
        device->setFault(SimulatedDevice::Fault::None);
        QString error;
        QVERIFY(device->open(&error));
        QCOMPARE(device.access("Width"), GenApi::RW); // what the acquisition locked
    }

    void theCardCountsPulses()
    {
        const OpenDevice device(Card);
        QCOMPARE(device.failureOf("TriggerMode=On TriggerSource=Software TriggerRate:NA TriggerDivider=2"),
                 QByteArray());
        for (int i = 0; i < 5; ++i)
            device.command("TriggerSoftware")->Execute();
        QCOMPARE(device.integer("TriggerCount")->GetValue(false, true), int64_t(2));
        device.set("TriggerSource", "Generator");
        QTRY_VERIFY(device.integer("TriggerCount")->GetValue(false, true) > 4);
    }
};

QTEST_GUILESS_MAIN(tst_SimulatedDevice)
#include "tst_SimulatedDevice.moc"
