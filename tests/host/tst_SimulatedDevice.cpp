// SPDX-License-Identifier: MIT
#include <set>

#include <QElapsedTimer>
#include <QSignalSpy>
#include <QtTest>

#include "Simulation/Firmware.h"
#include "host/OpenDevice.h"
#include "support/FatalMessages.h"

using std::chrono::milliseconds;

namespace {

constexpr auto AreaScan = "SIM-AREA-01";
constexpr auto Card = "SIM-CARD-01";

std::vector<GenApi::INode *> features(GenApi::INodeMap &map)
{
    GenApi::NodeList_t nodes;
    map.GetNodes(nodes);
    std::vector<GenApi::INode *> result;
    for (GenApi::INode *node : nodes) {
        if (node->IsFeature() && node->GetPrincipalInterfaceType() != GenApi::intfICategory)
            result.push_back(node);
    }
    return result;
}

/// Why the feature's value is no sane value now; empty if it is.
QString complaint(GenApi::INode *node)
{
    const GenApi::EInterfaceType type = node->GetPrincipalInterfaceType();
    if (!GenApi::IsReadable(node) || type == GenApi::intfICommand)
        return {};
    try {
        if (type == GenApi::intfIEnumeration && !GenApi::CEnumerationPtr(node)->GetCurrentEntry(true, true))
            return QStringLiteral(": no current entry");
        GenApi::CValuePtr(node)->ToString(true, true);
    } catch (const GenICam::GenericException &exception) {
        return QLatin1String(": ") + QString::fromUtf8(exception.GetDescription());
    }
    return {};
}

} // namespace

class tst_SimulatedDevice : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void descriptionsAreSane_data()
    {
        QTest::addColumn<size_t>("least");
        for (const auto &[id, least] :
             {std::pair{AreaScan, 290}, {"SIM-AREA-02", 290}, {"SIM-PROFILER-01", 85}, {"SIM-SL-01", 65}, {Card, 36}})
            QTest::newRow(id) << size_t(least);
    }

    /// They load without complaint, and each feature starts with a value and is described.
    void descriptionsAreSane()
    {
        QFETCH(size_t, least);
        FatalMessages messages;
        const OpenDevice device(QTest::currentDataTag());
        QCOMPARE(device->inside().oddLines(), QByteArrayList());
        const std::vector<GenApi::INode *> all = features(device.nodes());
        QVERIFY2(all.size() >= least && all.size() <= least + 40, qPrintable(QString::number(all.size())));
        std::set<int> levels;
        for (GenApi::INode *node : all) {
            const QString problem = complaint(node);
            QVERIFY2(problem.isEmpty(), qPrintable(QLatin1String(node->GetName().c_str()) + problem));
            QVERIFY2(node->GetToolTip().size() > 10 && node->GetDescription().size() > 10, node->GetName().c_str());
            levels.insert(node->GetVisibility());
        }
        QVERIFY(levels.count(GenApi::Beginner) && levels.count(GenApi::Expert) && levels.count(GenApi::Guru));
    }

    void devicesDiffer()
    {
        for (const auto &[id, width, hasColours] : {std::tuple{AreaScan, 2448, true}, {"SIM-AREA-02", 640, false}}) {
            const OpenDevice device(id);
            QCOMPARE(device->typeCode(), QStringLiteral("0"));
            QCOMPARE(device.integer("WidthMax")->GetValue(), int64_t(width));
            QCOMPARE(device.text("DeviceSerialNumber"), device->id());
            QCOMPARE(GenApi::IsAvailable(device.node("BalanceWhiteAuto")), hasColours);
        }
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

    void busyCommandsEndByThemselves()
    {
        const OpenDevice device(AreaScan);
        const GenApi::CCommandPtr command = device.command("DeviceRegistersCheck");
        QVERIFY(command->IsDone());
        command->Execute();
        QVERIFY(!command->IsDone());
        QTRY_VERIFY_WITH_TIMEOUT(command->IsDone(), 2000);
    }

    void measuredValuesMove()
    {
        const OpenDevice device(AreaScan);
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

    void aSilentDeviceCostsOneDeadline()
    {
        const OpenDevice device(AreaScan);
        device->setFault(SimulatedDevice::Fault::Timeout);
        QElapsedTimer clock;
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

    void latencyIsPaidPerAccess()
    {
        const OpenDevice device(AreaScan);
        device->setLatency(milliseconds(20));
        QElapsedTimer clock;
        clock.start();
        device.integer("Width")->GetValue(false, true);
        QVERIFY(clock.elapsed() >= 20);
        device->setLatency(milliseconds(0));
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

    void aRestartForgetsSettings()
    {
        const OpenDevice device(AreaScan);
        device.set("ExposureTime", "777");
        device.set("DeviceUserID", "kept");
        device.command("DeviceReset")->Execute();
        QTRY_COMPARE(device.number("ExposureTime")->GetValue(), 10000.0);
        QCOMPARE(device.text("DeviceUserID"), QStringLiteral("kept"));
    }

    void textsOfSelectorPositions()
    {
        const OpenDevice device(AreaScan);
        device.set("UserSetSelector", "UserSet1");
        QCOMPARE(device.text("UserSetDescription"), QStringLiteral("Night"));
        device.set("UserSetDescription", "Dämmerung 黄昏");
        device.set("UserSetSelector", "UserSet0");
        QCOMPARE(device.text("UserSetDescription"), QStringLiteral("Day"));
        device.set("UserSetSelector", "UserSet1");
        QCOMPARE(device.text("UserSetDescription"), QStringLiteral("Dämmerung 黄昏"));
    }

    void theCardCountsPulses()
    {
        const OpenDevice device(Card);
        device.set("TriggerMode", "On");
        device.set("TriggerSource", "Software");
        QVERIFY(!GenApi::IsAvailable(device.node("TriggerRate")));
        device.set("TriggerDivider", "2");
        for (int i = 0; i < 5; ++i)
            device.command("TriggerSoftware")->Execute();
        QCOMPARE(device.integer("TriggerCount")->GetValue(false, true), int64_t(2));
        device.set("TriggerSource", "Generator");
        QTRY_VERIFY(device.integer("TriggerCount")->GetValue(false, true) > 4);
    }
};

QTEST_GUILESS_MAIN(tst_SimulatedDevice)
#include "tst_SimulatedDevice.moc"
