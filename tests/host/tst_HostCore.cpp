// SPDX-License-Identifier: MIT
#include <atomic>
#include <thread>

#include <QSignalSpy>
#include <QTemporaryDir>
#include <QtTest>

#include "Host/HostContext.h"
#include "TestDevice.h"

namespace {

QString text(const char *utf8)
{
    return QString::fromUtf8(utf8);
}

} // namespace

/// What HostCore answers and does over a context, without listeners.
class tst_HostCore : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup() { m_context.reset(); }

    void withoutContextNothingHappens();
    void infoItemsAreStored();
    void nodesAreWrittenAsText_data();
    void nodesAreWrittenAsText();
    void accessFailuresAreLogged_data();
    void accessFailuresAreLogged();
    void logLinesArriveFromAnyThread();
    void grabStartsFromAnyThread();
    void contextMayGoWhileGrabsStart();

private:
    TestDevice *addDevice(const char *id);
    void start();

    QTemporaryDir m_folder;
    std::unique_ptr<HostContext> m_context;
};

void tst_HostCore::init()
{
    QFile::remove(m_folder.filePath(text("host.ini")));
    start();
}

void tst_HostCore::start()
{
    m_context.reset();
    m_context = std::make_unique<HostContext>(HostContext::Options{m_folder.filePath(text("host.ini")), {}});
}

TestDevice *tst_HostCore::addDevice(const char *id)
{
    auto device = std::make_unique<TestDevice>(text(id));
    TestDevice *added = device.get();
    return m_context->devices().add(std::move(device)) ? added : nullptr;
}

void tst_HostCore::withoutContextNothingHappens()
{
    addDevice("cam");
    QVERIFY(m_context->sessions().open(text("cam")));
    m_context.reset();
    QVERIFY(!HostContext::current());
    std::string value = "kept";
    QVERIFY(HostCore::GetCameraInfo("cam", HostCore::CAM_INFO_OPENED).empty());
    QVERIFY(!HostCore::GetAttrNodeMap(HostCore::FOCUS_CAMERA, "cam", HostCore::NODE_MAP_DEVICE));
    QVERIFY(HostCore::GetCameraNodeValue("cam", "Width", value) != 0);
    QVERIFY(HostCore::SetCameraNodeValue("cam", "Width", "1") != 0);
    QCOMPARE(value, std::string("kept"));
    HostCore::VLogInfo("module", "message", 0);
}

void tst_HostCore::infoItemsAreStored()
{
    const auto store = [](const char *key, int item, const char *value) {
        HostCore::SetCameraInfo(key, static_cast<HostCore::CAM_INFO>(item), value);
    };
    const auto stored = [](const char *key, int item) {
        return HostCore::GetCameraInfo(key, static_cast<HostCore::CAM_INFO>(item));
    };
    const char *odd = "Gerät/1 %2F";
    addDevice("cam");
    addDevice(odd);
    QVERIFY(HostCore::GetParamterInfo(HostCore::PARAMETER_INFO_ATTRIBUTE_LEVEL).empty());
    HostCore::SetParamterInfo(HostCore::PARAMETER_INFO_ATTRIBUTE_LEVEL, "2");
    store("cam", 50, "first");
    store(odd, 56, "ü, \"x\"");
    store("cam", 57, "no such item");
    store("cam", HostCore::CAM_INFO_OPENED, "1");
    m_context->setLanguage(text("Chinese"));
    start();
    addDevice("cam");
    addDevice(odd);
    QCOMPARE(HostCore::GetParamterInfo(HostCore::PARAMETER_INFO_ATTRIBUTE_LEVEL), std::string("2"));
    QCOMPARE(stored("cam", 50), std::string("first"));
    QCOMPARE(stored(odd, 56), std::string("ü, \"x\""));
    QVERIFY(stored(odd, 50).empty());
    QVERIFY(stored("cam", 57).empty());
    QVERIFY(stored("unknown", 50).empty());
    QCOMPARE(stored("cam", HostCore::CAM_INFO_OPENED), std::string("0"));
    QCOMPARE(m_context->language(), text("Chinese"));
}

void tst_HostCore::nodesAreWrittenAsText_data()
{
    QTest::addColumn<QString>("node");
    QTest::addColumn<QString>("written");
    QTest::addColumn<QString>("read");
    const auto row = [](const char *name, const char *node, const char *written, const char *read) {
        QTest::newRow(name) << text(node) << text(written) << text(read);
    };
    row("integer", "Width", "64", "64");
    row("float", "Gain", "2.25", "2.25");
    row("boolean 1", "ReverseX", "1", "True");
    row("boolean True", "ReverseX", "True", "True");
    row("boolean 0", "ReverseX", "0", "False");
    row("enumeration", "PixelFormat", "Mono16", "Mono16");
    row("enumeration by number", "PixelFormat", "16", "Mono16");
    row("a number that is an entry's name", "PixelFormat", "8", "8"); // and the value of another one
    row("string", "DeviceUserID", "links ü", "links ü");
    row("empty string", "DeviceUserID", "", "");
}

void tst_HostCore::nodesAreWrittenAsText()
{
    QFETCH(QString, node);
    QFETCH(QString, written);
    QFETCH(QString, read);
    TestDevice *device = addDevice("cam");
    QVERIFY(m_context->sessions().open(text("cam")));
    QCOMPARE(HostCore::SetCameraNodeValue("cam", node.toStdString(), written.toStdString()), 0);
    std::string value;
    QCOMPARE(HostCore::GetCameraNodeValue("cam", node.toStdString(), value), 0);
    QCOMPARE(QString::fromStdString(value), read);
    QCOMPARE(HostCore::SetCameraNodeValue("cam", "TriggerSoftware", ""), 0);
    QCOMPARE(device->port.peek(TestDevice::CommandAddress), uint64_t(7));
}

void tst_HostCore::accessFailuresAreLogged_data()
{
    QTest::addColumn<QString>("device");
    QTest::addColumn<QString>("node");
    QTest::addColumn<QString>("value");
    const auto row = [](const char *name, const char *device, const char *node, const char *value) {
        QTest::newRow(name) << text(device) << text(node) << text(value);
    };
    row("unknown device", "nobody", "Width", "1");
    row("unknown feature", "cam", "Height", "1");
    row("out of range", "cam", "Width", "101");
    row("not a number", "cam", "Width", "wide");
    row("empty number", "cam", "Width", "");
    row("read-only", "cam", "SensorWidth", "1");
    row("no such entry", "cam", "PixelFormat", "Mono12");
    row("category", "cam", "Root", "1");
}

void tst_HostCore::accessFailuresAreLogged()
{
    QFETCH(QString, device);
    QFETCH(QString, node);
    QFETCH(QString, value);
    addDevice("cam");
    QVERIFY(m_context->sessions().open(text("cam")));
    QSignalSpy log(&m_context->log(), &HostLog::lineAdded);
    QVERIFY(HostCore::SetCameraNodeValue(device.toStdString(), node.toStdString(), value.toStdString()) != 0);
    QCOMPARE(log.size(), 1);
    QVERIFY(log.at(0).at(2).toString().contains(node));
}

void tst_HostCore::logLinesArriveFromAnyThread()
{
    QSignalSpy log(&m_context->log(), &HostLog::lineAdded);
    HostCore::VLogInfo("Module", "Füße", 1);
    QCOMPARE(log.size(), 1);
    QCOMPARE(log.at(0).mid(1), QVariantList({text("Module"), text("Füße"), 1}));
    QThread *receiver = nullptr;
    connect(&m_context->log(), &HostLog::lineAdded, this, [&] { receiver = QThread::currentThread(); });
    std::thread([] { HostCore::VLogInfo("Worker", "message", 0); }).join();
    QTRY_COMPARE(log.size(), 2);
    QCOMPARE(receiver, thread());
}

void tst_HostCore::grabStartsFromAnyThread()
{
    TestDevice *device = addDevice("cam");
    QVERIFY(m_context->sessions().open(text("cam")));
    std::thread([] { HostCore::StartGrab("cam"); }).join();
    QVERIFY(!device->isAcquiring());
    QTRY_VERIFY(device->isAcquiring());
}

/// Panels start acquisition on a thread that nobody waits for.
void tst_HostCore::contextMayGoWhileGrabsStart()
{
    std::atomic<bool> over{false};
    const auto grab = [&] {
        while (!over)
            HostCore::StartGrab("cam");
    };
    std::thread workers[] = {std::thread(grab), std::thread(grab), std::thread(grab)};
    for (int i = 0; i < 300; ++i) {
        start();
        addDevice("cam");
        std::this_thread::yield();
        m_context.reset();
    }
    over = true;
    for (std::thread &worker : workers)
        worker.join();
    HostCore::StartGrab("cam");
    QCoreApplication::processEvents();
    QVERIFY(!HostContext::current());
}

QTEST_GUILESS_MAIN(tst_HostCore)
#include "tst_HostCore.moc"
