// SPDX-License-Identifier: MIT
#include <functional>
#include <stdexcept>

#include <QtTest>

#include "FaultyNode.h"
#include "FaultyNodeMap.h"
#include "PanelDescription.h"
#include "ParamterWidget/NodeAccess.h"
#include "support/FakeHostCore.h"

namespace {

constexpr int Untouched = -12345;

struct IntReading
{
    int code = 0;
    int value = Untouched;
    int min = Untouched;
    int max = Untouched;
    int inc = Untouched;
};

IntReading readInt(const char *device, const char *node)
{
    IntReading reading;
    reading.code = GetCameraIntNodeInfo(QString::fromUtf8(device), QString::fromUtf8(node), reading.value, reading.min,
                                        reading.max, reading.inc);
    return reading;
}

int readFloatCode(const QString &device, const QString &node)
{
    float ignored = 0;
    return GetCamerFloatNodeValue(device, node, ignored, ignored, ignored, ignored);
}

using Helper = std::function<int(const QString &device, const QString &node)>;

Helper helperNamed(const QByteArray &name)
{
    if (name == "enum")
        return [](const QString &device, const QString &node) { return SetCameraEnumNodeValue(device, node, 1); };
    if (name == "command")
        return ExecCameraCommandNode;
    if (name == "float")
        return readFloatCode;
    if (name == "int set")
        return [](const QString &device, const QString &node) { return SetCameraIntNodeValue(device, node, 64); };
    return [](const QString &device, const QString &node) {
        return readInt(device.toUtf8().constData(), node.toUtf8().constData()).code;
    };
}

} // namespace

class tst_NodeAccess : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void returnCodes_data();
    void returnCodes();
    void exceptions_data();
    void exceptions();
    void readsNumbers();
    void writes();
    void logicalNames_data();
    void logicalNames();

private:
    FakeHostCore &m_host = FakeHostCore::instance();
    std::unique_ptr<PanelCamera> m_camera;
};

void tst_NodeAccess::init()
{
    m_host.reset();
    m_camera = std::make_unique<PanelCamera>();
    m_host.setNodeMap(HostCore::FOCUS_CAMERA, "相机", m_camera->map);
}

void tst_NodeAccess::returnCodes_data()
{
    QTest::addColumn<QByteArray>("helper");
    QTest::addColumn<QString>("device");
    QTest::addColumn<QString>("node");
    QTest::addColumn<int>("code");

    struct Codes
    {
        const char *helper;
        const char *goodNode;
        const char *wrongNode;
        int missing;
        int wrongType;
    };
    const Codes table[] = {{"enum", "Mode", "Width", -4, -6},
                           {"command", "TriggerSoftware", "Mode", -4, -6},
                           {"float", "ExposureTime", "Width", -2, -4},
                           {"int get", "Width", "ExposureTime", -2, 0},
                           {"int set", "Width", "Mode", -2, 0}};
    const QString camera = QStringLiteral("相机");
    for (const Codes &row : table) {
        const auto name = [&](const char *what) { return QByteArray(row.helper) + ": " + what; };
        const auto add = [&](const char *what, const QString &device, const char *node, int code) {
            QTest::newRow(name(what).constData())
                << QByteArray(row.helper) << device << QString::fromUtf8(node) << code;
        };
        add("done", camera, row.goodNode, 0);
        add("unknown device", QStringLiteral("other"), row.goodNode, -1);
        add("missing node", camera, "NoSuchNode", row.missing);
        add("wrong type", camera, row.wrongNode, row.wrongType);
    }
    QTest::newRow("int set: read-only") << QByteArray("int set") << camera << QStringLiteral("WidthMax") << -3;
}

void tst_NodeAccess::returnCodes()
{
    QFETCH(QByteArray, helper);
    QFETCH(QString, device);
    QFETCH(QString, node);
    QTEST(helperNamed(helper)(device, node), "code");
}

void tst_NodeAccess::exceptions_data()
{
    QTest::addColumn<QByteArray>("helper");
    QTest::addColumn<int>("thrown");
    QTest::addColumn<int>("withoutInterface");
    QTest::newRow("enum") << QByteArray("enum") << -7 << -6;
    QTest::newRow("command") << QByteArray("command") << -7 << -6;
    QTest::newRow("float") << QByteArray("float") << -5 << -4;
    QTest::newRow("int get") << QByteArray("int get") << -4 << -3;
    QTest::newRow("int set") << QByteArray("int set") << -4 << -3;
}

/// The faulty node says that it is an integer, so that only the integer helpers find the interface missing.
void tst_NodeAccess::exceptions()
{
    QFETCH(QByteArray, helper);
    QFETCH(int, thrown);
    const Helper call = helperNamed(helper);
    const QString device = QStringLiteral("faulty");

    FaultyNode node([] { throw RUNTIME_EXCEPTION("refused"); });
    FaultyNodeMap map(&node);
    m_host.setNodeMap(HostCore::FOCUS_CAMERA, "faulty", &map);
    QCOMPARE(call(device, QStringLiteral("any")), thrown);
    node.hasShape = true;
    QTEST(call(device, QStringLiteral("any")), "withoutInterface");

    FaultyNodeMap broken(&node, [] { throw std::runtime_error("port is gone"); });
    m_host.setNodeMap(HostCore::FOCUS_CAMERA, "faulty", &broken);
    QCOMPARE(call(device, QStringLiteral("any")), thrown);
    QVERIFY(!FindNodeByLogicalName(QStringLiteral("Gain"), &broken));
    QCOMPARE(m_host.callsTo(QStringLiteral("VLogInfo")), QStringList());
}

void tst_NodeAccess::readsNumbers()
{
    const IntReading width = readInt("相机", "Width");
    QCOMPARE(QVector<int>({width.code, width.value, width.min, width.max, width.inc}),
             QVector<int>({0, 640, 16, 1920, 4}));
    const IntReading exposure = readInt("相机", "ExposureTime");
    QCOMPARE(QVector<int>({exposure.value, exposure.min, exposure.max, exposure.inc}), QVector<int>(4, Untouched));

    float value = 0, min = 0, max = 0, inc = 0;
    QCOMPARE(GetCamerFloatNodeValue(QStringLiteral("相机"), QStringLiteral("ExposureTime"), value, min, max, inc), 0);
    QCOMPARE(QVector<float>({value, min, max, inc}), QVector<float>({5000.F, 10.F, 1000000.F, 0.001F}));
    QCOMPARE(GetCamerFloatNodeValue(QStringLiteral("相机"), QStringLiteral("FrameRate"), value, min, max, inc), 0);
    QCOMPARE(QVector<float>({value, min, max, inc}), QVector<float>({30.F, 1.F, 60.F, 0.5F}));

    m_camera->port.readFault = MemoryPort::Fault::Refused;
    m_camera->map->InvalidateNodes();
    QCOMPARE(readInt("相机", "Width").code, -4);
}

void tst_NodeAccess::writes()
{
    const QString camera = QStringLiteral("相机");
    QCOMPARE(SetCameraIntNodeValue(camera, QStringLiteral("Width"), 1280), 0);
    QCOMPARE(m_camera->port.peek(TestCamera::Width), uint64_t(1280));
    QCOMPARE(SetCameraIntNodeValue(camera, QStringLiteral("Width"), 1281), -4);
    QCOMPARE(m_camera->port.peek(TestCamera::Width), uint64_t(1280));

    QCOMPARE(SetCameraEnumNodeValue(camera, QStringLiteral("Mode"), 4), 0);
    QCOMPARE(m_camera->port.peek(TestCamera::Selector), uint64_t(4));
    QCOMPARE(SetCameraEnumNodeValue(camera, QStringLiteral("Mode"), 3), -7);

    QCOMPARE(ExecCameraCommandNode(camera, QStringLiteral("TriggerSoftware")), 0);
    QCOMPARE(m_camera->port.peek(TestCamera::TriggerSoftware), uint64_t(1));
    m_camera->port.writeFault = MemoryPort::Fault::Foreign;
    QCOMPARE(ExecCameraCommandNode(camera, QStringLiteral("TriggerSoftware")), -7);
}

void tst_NodeAccess::logicalNames_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("found");
    QTest::newRow("plain") << QStringLiteral("ExposureTime") << QStringLiteral("ExposureTime");
    QTest::newRow("Raw variant") << QStringLiteral("Gain") << QStringLiteral("GainRaw");
    QTest::newRow("other case") << QStringLiteral("gain") << QString();
    QTest::newRow("not there") << QStringLiteral("GammaEnable") << QString();
    QTest::newRow("there, but no logical name") << QStringLiteral("Width") << QString();
    QTest::newRow("variant is no logical name") << QStringLiteral("GainRaw") << QString();
}

void tst_NodeAccess::logicalNames()
{
    QFETCH(QString, name);
    GenApi::INode *const node = FindNodeByLogicalName(name, m_camera->map);
    QTEST(node ? QString::fromUtf8(node->GetName().c_str()) : QString(), "found");
}

QTEST_GUILESS_MAIN(tst_NodeAccess)
#include "tst_NodeAccess.moc"
