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
constexpr auto Profiler = "SIM-PROFILER-01";
constexpr auto StructuredLight = "SIM-SL-01";
constexpr auto Card = "SIM-CARD-01";

void addDevices()
{
    QTest::addColumn<QByteArray>("id");
    for (const char *id : {AreaScan, "SIM-AREA-02", Profiler, StructuredLight, Card})
        QTest::newRow(id) << QByteArray(id);
}

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
    if (!GenApi::IsReadable(node))
        return {};
    try {
        switch (node->GetPrincipalInterfaceType()) {
        case GenApi::intfIInteger:
            GenApi::CIntegerPtr(node)->GetValue(true, true);
            break;
        case GenApi::intfIFloat:
            GenApi::CFloatPtr(node)->GetValue(true, true);
            break;
        case GenApi::intfIEnumeration:
            if (!GenApi::CEnumerationPtr(node)->GetCurrentEntry(true, true))
                return QStringLiteral("no current entry");
            break;
        case GenApi::intfICommand:
            break;
        default:
            GenApi::CValuePtr(node)->ToString(true, true);
        }
    } catch (const GenICam::GenericException &exception) {
        return QString::fromUtf8(exception.GetDescription());
    }
    return {};
}

} // namespace

class tst_SimulatedDevice : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void descriptionsLoadWithoutComplaint_data() { addDevices(); }
    void descriptionsLoadWithoutComplaint();
    void everyFeatureStartsWithASaneValue_data() { addDevices(); }
    void everyFeatureStartsWithASaneValue();
    void everyFeatureIsDescribed_data() { addDevices(); }
    void everyFeatureIsDescribed();
    void devicesDiffer();
    void reopenedDevicesWork();
    void busyCommandsEndByThemselves();
    void measuredValuesMove();
    void refusalsCarryTheDevicesWords_data();
    void refusalsCarryTheDevicesWords();
    void aSilentDeviceCostsOneDeadline();
    void faultsAndTheirEnd_data();
    void faultsAndTheirEnd();
    void latencyIsPaidPerAccess();
    void aDroppedLinkIsAnnounced();
    void aRestartForgetsSettings();
    void textsOfSelectorPositions();
    void bitsOfOneRegisterKeepTheirNeighbours();
    void theCardCountsPulses();
};

void tst_SimulatedDevice::descriptionsLoadWithoutComplaint()
{
    QFETCH(QByteArray, id);
    FatalMessages messages;
    const OpenDevice device(id.constData());
    QCOMPARE(device->inside().oddLines(), QByteArrayList());
    const size_t count = features(device.nodes()).size();
    const size_t least = id == Card ? 36 : id == Profiler ? 85 : id == StructuredLight ? 65 : 290;
    QVERIFY2(count >= least && count <= least + 40, qPrintable(QString::number(count)));
}

void tst_SimulatedDevice::everyFeatureStartsWithASaneValue()
{
    QFETCH(QByteArray, id);
    const OpenDevice device(id.constData());
    for (GenApi::INode *node : features(device.nodes())) {
        const QString problem = complaint(node);
        QVERIFY2(problem.isEmpty(),
                 qPrintable(QString::fromUtf8(node->GetName().c_str()) + QLatin1String(": ") + problem));
    }
}

void tst_SimulatedDevice::everyFeatureIsDescribed()
{
    QFETCH(QByteArray, id);
    const OpenDevice device(id.constData());
    std::set<int> levels;
    for (GenApi::INode *node : features(device.nodes())) {
        QVERIFY2(node->GetToolTip().size() > 10 && node->GetDescription().size() > 10, node->GetName().c_str());
        levels.insert(node->GetVisibility());
    }
    QVERIFY(levels.count(GenApi::Beginner) && levels.count(GenApi::Expert) && levels.count(GenApi::Guru));
}

void tst_SimulatedDevice::devicesDiffer()
{
    const OpenDevice large(AreaScan);
    const OpenDevice small("SIM-AREA-02");
    QCOMPARE(large->typeCode(), QStringLiteral("0"));
    QCOMPARE(large.integer("WidthMax")->GetValue(), int64_t(2448));
    QCOMPARE(small.integer("WidthMax")->GetValue(), int64_t(640));
    QCOMPARE(large.text("DeviceSerialNumber"), large->id());
    QCOMPARE(small.text("DeviceSerialNumber"), small->id());
    QVERIFY(GenApi::IsAvailable(large.node("BalanceWhiteAuto")));
    QVERIFY(!GenApi::IsAvailable(small.node("BalanceWhiteAuto")));
    const OpenDevice input(Card);
    QCOMPARE(input->kind(), Device::Kind::Card);
    QVERIFY(!input->canAcquire());
}

void tst_SimulatedDevice::reopenedDevicesWork()
{
    const OpenDevice device(AreaScan);
    QString error;
    QVERIFY(device->startAcquisition(&error));
    device->close();
    QVERIFY(!device->isOpen());
    QVERIFY(!device->isAcquiring());
    QVERIFY(!device->nodeMap());
    QVERIFY(!device->startAcquisition(&error));
    QVERIFY(!error.isEmpty());
    QVERIFY(device->open(&error));
    QSignalSpy frames(device.operator->(), &Device::frameReady);
    QVERIFY2(device->startAcquisition(&error), qPrintable(error));
    QTRY_VERIFY(frames.count() > 1);
}

void tst_SimulatedDevice::busyCommandsEndByThemselves()
{
    const OpenDevice device(AreaScan);
    const GenApi::CCommandPtr command = device.command("DeviceRegistersCheck");
    QVERIFY(command->IsDone());
    command->Execute();
    QVERIFY(!command->IsDone());
    QTRY_VERIFY_WITH_TIMEOUT(command->IsDone(), 2000);
}

void tst_SimulatedDevice::measuredValuesMove()
{
    const OpenDevice device(AreaScan);
    const GenApi::CFloatPtr temperature = device.number("DeviceTemperature");
    QVERIFY(temperature->GetNode()->GetPollingTime() > 0 || device.node("DeviceTemperatureReg")->GetPollingTime() > 0);
    const double before = temperature->GetValue(false, true);
    QTRY_VERIFY(!qFuzzyCompare(temperature->GetValue(false, true), before));
    device.nodes().Poll(1000);
    const double polled = temperature->GetValue();
    QVERIFY(!qFuzzyCompare(polled, before));
}

void tst_SimulatedDevice::refusalsCarryTheDevicesWords_data()
{
    QTest::addColumn<QByteArray>("feature");
    QTest::addColumn<QByteArray>("value");
    QTest::addColumn<QString>("words");
    QTest::newRow("rate beyond the link") << QByteArray("AcquisitionFrameRate") << QByteArray("300")
                                          << QStringLiteral("300.0 frames per second need 1504.1 MB/s, "
                                                            "the link carries 122.0 MB/s");
    QTest::newRow("rate that fits") << QByteArray("AcquisitionFrameRate") << QByteArray("24") << QString();
    QTest::newRow("odd") << QByteArray("TestEvenNumber") << QByteArray("7")
                         << QStringLiteral("7 is odd; this register takes even numbers only");
    QTest::newRow("even") << QByteArray("TestEvenNumber") << QByteArray("8") << QString();
    QTest::newRow("address") << QByteArray("GevPersistentIPAddress") << QByteArray("0")
                             << QStringLiteral("the address of a camera cannot be 0.0.0.0 or 255.255.255.255");
    QTest::newRow("start from an empty set") << QByteArray("UserSetDefault") << QByteArray("UserSet2")
                                             << QStringLiteral("the user set UserSet2 was never saved");
}

void tst_SimulatedDevice::refusalsCarryTheDevicesWords()
{
    QFETCH(QByteArray, feature);
    QFETCH(QByteArray, value);
    QFETCH(QString, words);
    const OpenDevice device(AreaScan);
    const QString before = device.text(feature.constData());
    QCOMPARE(device.refusal(feature.constData(), value.constData()), words);
    QCOMPARE(device.text(feature.constData()) == before, !words.isEmpty());
}

void tst_SimulatedDevice::aSilentDeviceCostsOneDeadline()
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

void tst_SimulatedDevice::faultsAndTheirEnd_data()
{
    QTest::addColumn<int>("fault");
    QTest::newRow("timeout") << int(SimulatedDevice::Fault::Timeout);
    QTest::newRow("refuse") << int(SimulatedDevice::Fault::Refuse);
    QTest::newRow("drop") << int(SimulatedDevice::Fault::Drop);
}

void tst_SimulatedDevice::faultsAndTheirEnd()
{
    QFETCH(int, fault);
    const OpenDevice device(AreaScan);
    device->setFault(SimulatedDevice::Fault(fault));
    QVERIFY_EXCEPTION_THROWN(device.integer("OffsetX")->GetValue(false, true), GenICam::GenericException);
    QVERIFY_EXCEPTION_THROWN(device.integer("Width")->SetValue(640, false), GenICam::GenericException);
    QString error;
    QVERIFY(!device->startAcquisition(&error));
    QVERIFY(!error.isEmpty());
    device->setFault(SimulatedDevice::Fault::None);
    QCOMPARE(device.integer("Width")->GetValue(false, true), int64_t(2448));
    QVERIFY2(device->startAcquisition(&error), qPrintable(error));
    device->setFault(SimulatedDevice::Fault(fault));
    device->stopAcquisition();
    QVERIFY(!device->isAcquiring());
    device->close();
    QVERIFY(!device->open(&error));
}

void tst_SimulatedDevice::latencyIsPaidPerAccess()
{
    const OpenDevice device(AreaScan);
    device->setLatency(milliseconds(20));
    QElapsedTimer clock;
    clock.start();
    device.integer("Width")->GetValue(false, true);
    QVERIFY(clock.elapsed() >= 20);
    device->setLatency(milliseconds(0));
}

void tst_SimulatedDevice::aDroppedLinkIsAnnounced()
{
    const OpenDevice device(AreaScan);
    QString error;
    QVERIFY(device->startAcquisition(&error));
    QSignalSpy lost(device.operator->(), &Device::lost);
    QSignalSpy acquisition(device.operator->(), &Device::acquiringChanged);
    device->setFault(SimulatedDevice::Fault::Drop);
    QCOMPARE(lost.count(), 1);
    QVERIFY(!device->isAcquiring());
    QTRY_VERIFY(acquisition.contains({false}));
    device->close();
    device->setFault(SimulatedDevice::Fault::None);
    QVERIFY(device->open(&error));
    QCOMPARE(device.access("Width"), GenApi::RW); // what the acquisition locked
}

void tst_SimulatedDevice::aRestartForgetsSettings()
{
    const OpenDevice device(AreaScan);
    device.set("ExposureTime", "777");
    device.set("DeviceUserID", "kept");
    device.command("DeviceReset")->Execute();
    QTRY_COMPARE(device.number("ExposureTime")->GetValue(), 10000.0);
    QCOMPARE(device.text("DeviceUserID"), QStringLiteral("kept"));
}

void tst_SimulatedDevice::textsOfSelectorPositions()
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

void tst_SimulatedDevice::bitsOfOneRegisterKeepTheirNeighbours()
{
    const OpenDevice device(AreaScan);
    device.set("GevSCPSDoNotFragment", "1");
    device.set("GevSCPSPacketSize", "8996");
    QCOMPARE(device.text("GevSCPSDoNotFragment"), QStringLiteral("1"));
    QCOMPARE(device.text("GevSCPSBigEndian"), QStringLiteral("0"));
    QCOMPARE(device.text("GevSCPSPacketSize"), QStringLiteral("8996"));
}

void tst_SimulatedDevice::theCardCountsPulses()
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

QTEST_GUILESS_MAIN(tst_SimulatedDevice)
#include "tst_SimulatedDevice.moc"
