// SPDX-License-Identifier: MIT
#include <functional>
#include <stdexcept>

#include "FaultyNode.h"
#include "FaultyNodeMap.h"
#include "PanelBase/DeviceReading.h"
#include "PanelDescription.h"
#include "ParamterWidget/NodeAccess.h"
#include "support/FakeHostCore.h"
#include "support/Rows.h"

namespace {

const QString Camera = "相机"_s;

/// A function under test, and what it returns.
struct Helper
{
    const char *name;
    int (*call)(QString device, QString node);
    const char *goodNode, *wrongNode;
    int missing, wrongType;
    int thrown, withoutInterface;
};

const Helper Helpers[] = {{"enum", [](QString device, QString node) { return SetCameraEnumNodeValue(device, node, 1); },
                           "Mode", "Width", -4, -6, -7, -6},
                          {"command", ExecCameraCommandNode, "TriggerSoftware", "Mode", -4, -6, -7, -6},
                          {"float",
                           [](QString device, QString node) {
                               float ignored = 0;
                               return GetCamerFloatNodeValue(device, node, ignored, ignored, ignored, ignored);
                           },
                           "ExposureTime", "Width", -2, -4, -5, -4},
                          {"int get",
                           [](QString device, QString node) {
                               int ignored = 0;
                               return GetCameraIntNodeInfo(device, node, ignored, ignored, ignored, ignored);
                           },
                           "Width", "ExposureTime", -2, 0, -4, -3},
                          {"int set",
                           [](QString device, QString node) { return SetCameraIntNodeValue(device, node, 64); },
                           "Width", "Mode", -2, 0, -4, -3}};

} // namespace

class tst_NodeAccess : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        m_host.reset();
        m_camera = std::make_unique<PanelCamera>();
        m_host.setNodeMap(HostCore::FOCUS_CAMERA, "相机", m_camera->map);
    }

    void returnCodes()
    {
        for (const Helper &helper : Helpers) {
            const InRow inRow(helper.name);
            QCOMPARE(helper.call(Camera, QLatin1String(helper.goodNode)), 0);
            QCOMPARE(helper.call("other"_s, QLatin1String(helper.goodNode)), -1);
            QCOMPARE(helper.call(Camera, "NoSuchNode"_s), helper.missing);
            QCOMPARE(helper.call(Camera, QLatin1String(helper.wrongNode)), helper.wrongType);
        }
        QCOMPARE(SetCameraIntNodeValue(Camera, "WidthMax"_s, 64), -3); // read-only
    }

    /// The faulty node says that it is an integer, so that only the integer helpers find the interface missing.
    void exceptions()
    {
        for (const Helper &helper : Helpers) {
            const InRow inRow(helper.name);
            FaultyNode node([] { throw RUNTIME_EXCEPTION("refused"); });
            FaultyNodeMap map(&node);
            m_host.setNodeMap(HostCore::FOCUS_CAMERA, "faulty", &map);
            QCOMPARE(helper.call("faulty"_s, "any"_s), helper.thrown);
            node.hasShape = true;
            QCOMPARE(helper.call("faulty"_s, "any"_s), helper.withoutInterface);

            FaultyNodeMap broken(&node, [] { throw std::runtime_error("port is gone"); });
            m_host.setNodeMap(HostCore::FOCUS_CAMERA, "faulty", &broken);
            QCOMPARE(helper.call("faulty"_s, "any"_s), helper.thrown);
            QVERIFY(!FindNodeByLogicalName("Gain"_s, &broken));
            QCOMPARE(m_host.callsTo("VLogInfo"_s), QStringList());
        }
    }

    void readsNumbers()
    {
        int value = 0, min = 0, max = 0, inc = 0;
        QCOMPARE(GetCameraIntNodeInfo(Camera, "Width"_s, value, min, max, inc), 0);
        QCOMPARE(GetCameraIntNodeInfo(Camera, "ExposureTime"_s, value, min, max, inc), 0); // changes nothing
        QCOMPARE(QVector<int>({value, min, max, inc}), QVector<int>({640, 16, 1920, 4}));
        m_camera->port.readFault = MemoryPort::Fault::Refused;
        m_camera->map->InvalidateNodes();
        QCOMPARE(GetCameraIntNodeInfo(Camera, "Width"_s, value, min, max, inc), -4);
        m_camera->port.readFault = MemoryPort::Fault::None;

        float number = 0, lowest = 0, highest = 0, step = 0;
        QCOMPARE(GetCamerFloatNodeValue(Camera, "ExposureTime"_s, number, lowest, highest, step), 0);
        QCOMPARE(QVector<float>({number, lowest, highest, step}), QVector<float>({5000.F, 10.F, 1000000.F, 0.001F}));
        QCOMPARE(GetCamerFloatNodeValue(Camera, "FrameRate"_s, number, lowest, highest, step), 0);
        QCOMPARE(QVector<float>({number, lowest, highest, step}), QVector<float>({30.F, 1.F, 60.F, 0.5F}));
    }

    void writes()
    {
        QCOMPARE(SetCameraIntNodeValue(Camera, "Width"_s, 1280), 0);
        QCOMPARE(m_camera->port.peek(TestCamera::Width), uint64_t(1280));
        QCOMPARE(SetCameraIntNodeValue(Camera, "Width"_s, 1281), -4);
        QCOMPARE(m_camera->port.peek(TestCamera::Width), uint64_t(1280));

        QCOMPARE(SetCameraEnumNodeValue(Camera, "Mode"_s, 4), 0);
        QCOMPARE(m_camera->port.peek(TestCamera::Selector), uint64_t(4));
        QCOMPARE(SetCameraEnumNodeValue(Camera, "Mode"_s, 3), -7);

        QCOMPARE(ExecCameraCommandNode(Camera, "TriggerSoftware"_s), 0);
        QCOMPARE(m_camera->port.peek(TestCamera::TriggerSoftware), uint64_t(1));
        m_camera->port.writeFault = MemoryPort::Fault::Foreign;
        QCOMPARE(ExecCameraCommandNode(Camera, "TriggerSoftware"_s), -7);
    }

    /// With the names of entries. What does not reach the feature is no write.
    void tellOfWrites()
    {
        DeviceReading reading;
        reading.setDeviceName(Camera);
        QStringList told;
        connect(&reading, &DeviceReading::written, this,
                [&](const QString &device, const QString &feature, const QString &value, const QString &refusal) {
                    told << "%1 %2=%3%4"_s.arg(device, feature, value, refusal.isEmpty() ? QString() : ": refused"_s);
                });
        SetCameraEnumNodeValue(&reading, Camera, "Mode"_s, 4);
        SetCameraEnumNodeValue(&reading, Camera, "Mode"_s, 3);
        SetCameraIntNodeValue(&reading, Camera, "Width"_s, 1280);
        SetCameraIntNodeValue(&reading, Camera, "Width"_s, 1281);
        ExecCameraCommandNode(&reading, Camera, "TriggerSoftware"_s);
        ExecCameraCommandNode(&reading, Camera, "Mode"_s);
        SetCameraIntNodeValue(&reading, Camera, "WidthMax"_s, 64);
        SetCameraIntNodeValue(&reading, "other"_s, "Width"_s, 64);
        QCOMPARE(
            told.join("|"_s),
            "相机 Mode=Steady|相机 Mode=3: refused|相机 Width=1280|相机 Width=1281: refused|相机 TriggerSoftware="_s);
    }

    /// Plain or a variant, but by no other name.
    void logicalNames()
    {
        for (const auto &[name, found] :
             {std::pair("ExposureTime", "ExposureTime"), std::pair("Gain", "GainRaw"), std::pair("gain", ""),
              std::pair("GammaEnable", ""), std::pair("Width", ""), std::pair("GainRaw", "")}) {
            GenApi::INode *const node = FindNodeByLogicalName(QLatin1String(name), m_camera->map);
            QCOMPARE(std::pair(name, node ? std::string(node->GetName().c_str()) : std::string()),
                     std::pair(name, std::string(found)));
        }
    }

private:
    FakeHostCore &m_host = FakeHostCore::instance();
    std::unique_ptr<PanelCamera> m_camera;
};

QTEST_GUILESS_MAIN(tst_NodeAccess)
#include "tst_NodeAccess.moc"
