// SPDX-License-Identifier: MIT
#include <thread>

#include <QElapsedTimer>
#include <QPointer>
#include <QSharedPointer>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QtTest>

#include "Host/HostContext.h"
#include "TestDevice.h"

namespace {

/// Stands for the panel: writes down the host's events and deletes its object when the camera is closed.
class Panel final : public HostCore::IDeviceListUpdate, public HostCore::IFocusUpdate
{
public:
    Panel()
    {
        HostCore::RegisterDeviceListUpdateListener(this);
        HostCore::RegisterFocusUpdateListener(this);
    }
    ~Panel()
    {
        HostCore::UnRegisterFocusUpdateListener(this);
        HostCore::UnRegisterDeviceListUpdateListener(this);
    }

    void OnUpdate(int source, std::vector<std::string> cards, std::vector<std::string> cameras) override
    {
        const QMutexLocker lock(&mutex);
        thread = QThread::currentThread();
        const QStringList cardTexts = describe(cards, true);
        events += QStringLiteral("list %1 [%2] [%3]")
                      .arg(source)
                      .arg(cardTexts.join(QLatin1Char(' ')), describe(cameras, false).join(QLatin1Char(' ')));
        if (onList)
            onList();
    }

    void OnUpdate(HostCore::FOCUS_TYPE type, std::string id) override
    {
        const QMutexLocker lock(&mutex);
        events += QStringLiteral("focus %1 %2").arg(static_cast<int>(type)).arg(QString::fromStdString(id));
    }

    QStringList seenEvents()
    {
        const QMutexLocker lock(&mutex);
        return events;
    }

    QStringList takeEvents()
    {
        const QMutexLocker lock(&mutex);
        QStringList taken;
        taken.swap(events);
        return taken;
    }

    std::function<void()> onList;
    QThread *thread = nullptr;

private:
    /// Ids with "+" when open and "*" when acquiring.
    static QStringList describe(const std::vector<std::string> &ids, bool areCards)
    {
        QStringList result;
        for (const std::string &id : ids) {
            const std::string open = areCards ? HostCore::GetCardInfo(id, HostCore::CARD_INFO_OPEN)
                                              : HostCore::GetCameraInfo(id, HostCore::CAM_INFO_OPENED);
            const std::string acquiring = HostCore::GetCameraInfo(id, HostCore::CAM_INFO_ACQUISITION);
            result += QString::fromStdString(id + (open == "1" ? "+" : "") + (acquiring == "1" ? "*" : ""));
        }
        return result;
    }

    QMutex mutex; ///< guards events and thread
    QStringList events;
};

/// As the panel's bridge does: hands the event to the GUI thread and waits until it has been handled there.
class WaitingListener final : public HostCore::IDeviceListUpdate
{
public:
    void OnUpdate(int, std::vector<std::string>, std::vector<std::string>) override
    {
        const auto finished = QSharedPointer<std::atomic_bool>::create(false);
        const auto handle = [this, finished] {
            ++handled;
            *finished = true;
        };
        QMetaObject::invokeMethod(&guiObject, handle, Qt::QueuedConnection);
        started = true;
        for (int i = 0; i < 1000 && !*finished; ++i)
            QThread::msleep(5);
        returned = true;
    }

    QObject guiObject;
    int handled = 0;
    std::atomic_bool started{false};
    std::atomic_bool returned{false};
};

FoundDevice foundCamera(const QString &id)
{
    return {id, [id] { return std::make_unique<TestDevice>(id); }};
}

QString text(const char *utf8)
{
    return QString::fromUtf8(utf8);
}

} // namespace

class tst_HostContext : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup() { context.reset(); }

    void withoutContextNothingHappens();
    void openingTellsThePanel();
    void openingFails();
    void theNodeMapOutlivesThePanels();
    void closingDevicesCannotBeOpened();
    void lostDevicesAreClosedOnce();
    void cardsAreAnnouncedFirst();
    void acquisitionIsAnnounced();
    void framesOfOpenDevicesAreForwarded();
    void grabStartsFromAnyThread();
    void discoveryKeepsTheListUpToDate();
    void discoveryAnnouncesOnItsThread();
    void unregisteringEndsAWaitingCall();
    void theEndWaitsForARunningSearch();
    void infoItemsAreStored();
    void nodesAreReadAsText_data();
    void nodesAreReadAsText();
    void nodesAreWrittenAsText_data();
    void nodesAreWrittenAsText();
    void accessFailuresAreLogged_data();
    void accessFailuresAreLogged();
    void onlyTheFocusedDeviceIsPolled();
    void logLinesArriveFromAnyThread();

private:
    TestDevice *addDevice(const char *id, Device::Kind kind = Device::Kind::Camera);
    void start();

    QTemporaryDir folder;
    std::unique_ptr<HostContext> context;
    std::vector<FoundDevice> searchResult; ///< read on the discovery thread; changed between searches only
};

void tst_HostContext::init()
{
    searchResult.clear();
    QFile::remove(folder.filePath(text("host.ini")));
    start();
}

void tst_HostContext::start()
{
    context.reset();
    HostContext::Options options;
    options.settingsFile = folder.filePath(text("host.ini"));
    options.finder = [this] { return searchResult; };
    context = std::make_unique<HostContext>(std::move(options));
}

TestDevice *tst_HostContext::addDevice(const char *id, Device::Kind kind)
{
    auto device = std::make_unique<TestDevice>(text(id), kind);
    TestDevice *added = device.get();
    return context->addDevice(std::move(device)) ? added : nullptr;
}

void tst_HostContext::withoutContextNothingHappens()
{
    addDevice("cam");
    QVERIFY(context->open(text("cam")));
    context.reset();
    QVERIFY(!HostContext::current());
    std::string value = "kept";
    QVERIFY(HostCore::GetCameraInfo("cam", HostCore::CAM_INFO_OPENED).empty());
    QVERIFY(!HostCore::GetAttrNodeMap(HostCore::FOCUS_CAMERA, "cam", HostCore::NODE_MAP_DEVICE));
    QVERIFY(HostCore::GetCameraNodeValue("cam", "Width", value) != 0);
    QVERIFY(HostCore::SetCameraNodeValue("cam", "Width", "1") != 0);
    QCOMPARE(value, std::string("kept"));
    HostCore::VLogInfo("module", "message", 0);
    const Panel panel;
}

void tst_HostContext::openingTellsThePanel()
{
    addDevice("cam");
    addDevice("other");
    QVERIFY(!addDevice("cam"));
    context->setFocus(text("cam"));
    QCOMPARE(HostCore::GetCameraInfo("cam", HostCore::CAM_INFO_READY), std::string("0"));
    Panel panel;
    QVERIFY(context->open(text("cam")));
    QCOMPARE(panel.takeEvents(), QStringList({text("list 1 [] [cam+ other]"), text("focus 3 cam")}));
    QCOMPARE(panel.thread, thread());
    QCOMPARE(HostCore::GetCameraInfo("cam", HostCore::CAM_INFO_READY), std::string("1"));
    QCOMPARE(HostCore::GetCameraInfo("cam", HostCore::CAM_INFO_TYPE_CODE), std::string("1"));
    QVERIFY(HostCore::GetAttrNodeMap(HostCore::FOCUS_CAMERA, "cam", HostCore::NODE_MAP_DEVICE));
    QVERIFY(!HostCore::GetAttrNodeMap(HostCore::FOCUS_CARD, "cam", HostCore::NODE_MAP_DEVICE));
    QVERIFY(!HostCore::GetAttrNodeMap(HostCore::FOCUS_CAMERA, "other", HostCore::NODE_MAP_DEVICE));
    QVERIFY(context->open(text("cam")));
    QVERIFY(panel.takeEvents().isEmpty());
    context->setFocus(text("unknown"));
    QCOMPARE(panel.takeEvents(), QStringList({text("focus 0 ")}));
}

void tst_HostContext::openingFails()
{
    addDevice("cam")->refusal = text("cable unplugged");
    QSignalSpy log(context.get(), &HostContext::logLine);
    const Panel panel;
    QVERIFY(!context->open(text("cam")));
    QVERIFY(!context->isReady(text("cam")));
    QVERIFY(!context->open(text("unknown")));
    QCOMPARE(log.size(), 2);
    QVERIFY(log.at(0).at(2).toString().contains(text("cable unplugged")));
}

void tst_HostContext::theNodeMapOutlivesThePanels()
{
    TestDevice *device = addDevice("cam");
    QVERIFY(context->open(text("cam")));
    QStringList order;
    auto *widget = new QObject;
    connect(widget, &QObject::destroyed, this, [&] { order += text("panel"); });
    connect(device, &TestDevice::closed, this, [&] { order += text("node map"); });
    Panel panel;
    panel.onList = [&] {
        order += text("event");
        widget->deleteLater();
    };
    context->close(text("cam"));
    panel.onList = nullptr;
    QCOMPARE(order, QStringList({text("event")}));
    QVERIFY(!HostCore::GetAttrNodeMap(HostCore::FOCUS_CAMERA, "cam", HostCore::NODE_MAP_DEVICE));
    QVERIFY(device->isOpen());
    QCOMPARE(panel.takeEvents().first(), text("list 1 [] [cam]"));
    QTRY_VERIFY(!device->isOpen());
    QCOMPARE(order, QStringList({text("event"), text("panel"), text("node map")}));
}

void tst_HostContext::closingDevicesCannotBeOpened()
{
    TestDevice *device = addDevice("cam");
    QVERIFY(context->open(text("cam")));
    context->close(text("cam"));
    QVERIFY(!context->open(text("cam")));
    QTRY_VERIFY(!device->isOpen());
    QVERIFY(context->open(text("cam")));
    context->close(text("cam"));
    context.reset(); // while a release is due
}

void tst_HostContext::lostDevicesAreClosedOnce()
{
    TestDevice *device = addDevice("cam");
    QVERIFY(context->open(text("cam")));
    QSignalSpy log(context.get(), &HostContext::logLine);
    Panel panel;
    Q_EMIT device->lost(text("no heartbeat"));
    Q_EMIT device->lost(text("no heartbeat"));
    QCOMPARE(panel.takeEvents().filter(text("list")), QStringList({text("list 1 [] [cam]")}));
    QTRY_VERIFY(!device->isOpen());
    Q_EMIT device->lost(text("no heartbeat"));
    QCOMPARE(log.size(), 1);
    QVERIFY(context->open(text("cam")));
}

void tst_HostContext::cardsAreAnnouncedFirst()
{
    addDevice("card 1", Device::Kind::Card);
    addDevice("card 2", Device::Kind::Card);
    context->setFocus(text("card 2"));
    Panel panel;
    QVERIFY(context->open(text("card 2")));
    QCOMPARE(panel.takeEvents(), QStringList({text("list 1 [card 2+ card 1] []"), text("focus 2 card 2")}));
    QCOMPARE(HostCore::GetCardInfo("card 1", HostCore::CARD_INFO_STATE), std::string("4"));
    QVERIFY(HostCore::GetCardInfo("unknown", HostCore::CARD_INFO_STATE).empty());
    QVERIFY(HostCore::GetCameraInfo("card 2", HostCore::CAM_INFO_OPENED).empty());
    QVERIFY(HostCore::GetAttrNodeMap(HostCore::FOCUS_CARD, "card 2", HostCore::NODE_MAP_DEVICE));
}

void tst_HostContext::acquisitionIsAnnounced()
{
    TestDevice *device = addDevice("cam");
    QVERIFY(!context->startAcquisition(text("cam")));
    QVERIFY(context->open(text("cam")));
    Panel panel;
    QVERIFY(context->startAcquisition(text("cam")));
    QCOMPARE(panel.takeEvents().first(), text("list 1 [] [cam+*]"));
    context->stopAcquisition(text("cam"));
    QCOMPARE(panel.takeEvents().first(), text("list 1 [] [cam+]"));
    device->refusal = text("no bandwidth");
    QVERIFY(!context->startAcquisition(text("cam")));
}

void tst_HostContext::framesOfOpenDevicesAreForwarded()
{
    TestDevice *device = addDevice("cam");
    QSignalSpy frames(context.get(), &HostContext::frameReady);
    Q_EMIT device->frameReady(QImage());
    QCOMPARE(frames.size(), 0);
    QVERIFY(context->open(text("cam")));
    Q_EMIT device->frameReady(QImage(3, 2, QImage::Format_Grayscale8));
    QCOMPARE(frames.size(), 1);
    QCOMPARE(frames.at(0).at(0).toString(), text("cam"));
    QCOMPARE(frames.at(0).at(1).value<QImage>().width(), 3);
}

void tst_HostContext::grabStartsFromAnyThread()
{
    TestDevice *device = addDevice("cam");
    QVERIFY(context->open(text("cam")));
    std::thread([] { HostCore::StartGrab("cam"); }).join();
    QVERIFY(!device->isAcquiring());
    QTRY_VERIFY(device->isAcquiring());
}

void tst_HostContext::discoveryKeepsTheListUpToDate()
{
    addDevice("simulated");
    const auto ids = [this] {
        QStringList result;
        for (const Device *device : context->devices())
            result += device->id();
        return result;
    };
    const auto search = [this](std::vector<FoundDevice> result) {
        searchResult = std::move(result);
        context->refreshDevices();
        QVERIFY(context->isRefreshing());
        QTRY_VERIFY(!context->isRefreshing());
    };
    QSignalSpy changes(context.get(), &HostContext::deviceListChanged);
    search({foundCamera(text("a")), foundCamera(text("b")), foundCamera(text("simulated"))});
    QCOMPARE(ids(), QStringList({text("simulated"), text("a"), text("b")}));
    const Device *a = context->device(text("a"));
    QVERIFY(context->open(text("b")));
    search({foundCamera(text("a"))});
    QCOMPARE(changes.size(), 1);
    search({foundCamera(text("c")), foundCamera(text("a"))});
    QCOMPARE(ids(), QStringList({text("simulated"), text("a"), text("b"), text("c")}));
    QCOMPARE(context->device(text("a")), a);
    context->close(text("b"));
    QTRY_VERIFY(!context->device(text("b"))->isOpen());
    search({});
    QCOMPARE(ids(), QStringList({text("simulated")}));
}

void tst_HostContext::discoveryAnnouncesOnItsThread()
{
    Panel panel;
    searchResult = {foundCamera(text("cam"))};
    context->refreshDevices();
    QTRY_COMPARE(panel.seenEvents(), QStringList({text("list 1 [] [cam]"), text("focus 0 ")}));
    QVERIFY(panel.thread != thread());
}

void tst_HostContext::unregisteringEndsAWaitingCall()
{
    auto listener = std::make_unique<WaitingListener>();
    HostCore::RegisterDeviceListUpdateListener(listener.get());
    std::thread caller([this] { context->listeners().raiseDeviceList({}, {text("cam")}); });
    while (!listener->started)
        QThread::msleep(1);
    QElapsedTimer timer;
    timer.start();
    HostCore::UnRegisterDeviceListUpdateListener(listener.get());
    const bool returned = listener->returned;
    caller.join();
    QVERIFY(returned);
    QCOMPARE(listener->handled, 1);
    QVERIFY2(timer.elapsed() < 2000, "the listener must not wait for its full five seconds");
}

void tst_HostContext::theEndWaitsForARunningSearch()
{
    std::atomic_bool started{false};
    std::atomic_bool ended{false};
    HostContext::Options options;
    options.settingsFile = folder.filePath(text("host.ini"));
    options.finder = [&] {
        started = true;
        QThread::msleep(50);
        ended = true;
        return std::vector<FoundDevice>{foundCamera(text("cam"))};
    };
    context = std::make_unique<HostContext>(std::move(options));
    const Panel panel;
    context->refreshDevices();
    while (!started)
        QThread::msleep(1);
    context.reset();
    QVERIFY(ended);
    QCoreApplication::processEvents();
}

void tst_HostContext::infoItemsAreStored()
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
    context->setLanguage(text("Chinese"));
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
    QCOMPARE(context->language(), text("Chinese"));
}

void tst_HostContext::nodesAreReadAsText_data()
{
    QTest::addColumn<QString>("node");
    QTest::addColumn<QString>("value");
    QTest::newRow("integer") << "SensorWidth"
                             << "640";
    QTest::newRow("float") << "Gain"
                           << "1.5";
    QTest::newRow("boolean") << "ReverseX"
                             << "False";
    QTest::newRow("enumeration") << "PixelFormat"
                                 << "Mono8";
    QTest::newRow("string") << "DeviceUserID"
                            << "left";
}

void tst_HostContext::nodesAreReadAsText()
{
    QFETCH(QString, node);
    QFETCH(QString, value);
    TestDevice *device = addDevice("cam");
    device->port.poke(0x14, 640);
    QVERIFY(context->open(text("cam")));
    std::string read;
    QCOMPARE(HostCore::GetCameraNodeValue("cam", node.toStdString(), read), 0);
    QCOMPARE(QString::fromStdString(read), value);
}

void tst_HostContext::nodesAreWrittenAsText_data()
{
    QTest::addColumn<QString>("node");
    QTest::addColumn<QString>("written");
    QTest::addColumn<QString>("read");
    QTest::newRow("integer") << "Width"
                             << "64"
                             << "64";
    QTest::newRow("float") << "Gain"
                           << "2.25"
                           << "2.25";
    QTest::newRow("boolean 1") << "ReverseX"
                               << "1"
                               << "True";
    QTest::newRow("boolean True") << "ReverseX"
                                  << "True"
                                  << "True";
    QTest::newRow("boolean 0") << "ReverseX"
                               << "0"
                               << "False";
    QTest::newRow("enumeration") << "PixelFormat"
                                 << "Mono16"
                                 << "Mono16";
    QTest::newRow("enumeration by number") << "PixelFormat"
                                           << "16"
                                           << "Mono16";
    QTest::newRow("string") << "DeviceUserID" << QString::fromUtf8("links ü") << QString::fromUtf8("links ü");
    QTest::newRow("empty string") << "DeviceUserID"
                                  << ""
                                  << "";
}

void tst_HostContext::nodesAreWrittenAsText()
{
    QFETCH(QString, node);
    QFETCH(QString, written);
    QFETCH(QString, read);
    TestDevice *device = addDevice("cam");
    QVERIFY(context->open(text("cam")));
    QCOMPARE(HostCore::SetCameraNodeValue("cam", node.toStdString(), written.toStdString()), 0);
    std::string value;
    QCOMPARE(HostCore::GetCameraNodeValue("cam", node.toStdString(), value), 0);
    QCOMPARE(QString::fromStdString(value), read);
    QCOMPARE(HostCore::SetCameraNodeValue("cam", "TriggerSoftware", ""), 0);
    QCOMPARE(device->port.peek(TestDevice::commandAddress), uint64_t(7));
}

void tst_HostContext::accessFailuresAreLogged_data()
{
    QTest::addColumn<QString>("device");
    QTest::addColumn<QString>("node");
    QTest::addColumn<QString>("value");
    QTest::newRow("unknown device") << "nobody"
                                    << "Width"
                                    << "1";
    QTest::newRow("unknown feature") << "cam"
                                     << "Height"
                                     << "1";
    QTest::newRow("out of range") << "cam"
                                  << "Width"
                                  << "101";
    QTest::newRow("not a number") << "cam"
                                  << "Width"
                                  << "wide";
    QTest::newRow("empty number") << "cam"
                                  << "Width"
                                  << "";
    QTest::newRow("read-only") << "cam"
                               << "SensorWidth"
                               << "1";
    QTest::newRow("no such entry") << "cam"
                                   << "PixelFormat"
                                   << "Mono12";
    QTest::newRow("category") << "cam"
                              << "Root"
                              << "1";
}

void tst_HostContext::accessFailuresAreLogged()
{
    QFETCH(QString, device);
    QFETCH(QString, node);
    QFETCH(QString, value);
    addDevice("cam");
    QVERIFY(context->open(text("cam")));
    QSignalSpy log(context.get(), &HostContext::logLine);
    QVERIFY(HostCore::SetCameraNodeValue(device.toStdString(), node.toStdString(), value.toStdString()) != 0);
    QCOMPARE(log.size(), 1);
    QVERIFY(log.at(0).at(2).toString().contains(node));
}

void tst_HostContext::onlyTheFocusedDeviceIsPolled()
{
    TestDevice *focused = addDevice("focused");
    TestDevice *other = addDevice("other");
    for (TestDevice *device : {focused, other}) {
        QVERIFY(context->open(device->id()));
        device->port.poke(TestDevice::widthAddress, 1);
        context->readNode(device->id(), text("Width"), std::make_unique<QString>().get());
        device->port.poke(TestDevice::widthAddress, 2);
    }
    context->setFocus(text("focused"));
    const auto width = [this](const char *id) {
        QString value;
        context->readNode(text(id), text("Width"), &value);
        return value;
    };
    QTRY_COMPARE(width("focused"), text("2"));
    QCOMPARE(width("other"), text("1"));
}

void tst_HostContext::logLinesArriveFromAnyThread()
{
    QSignalSpy log(context.get(), &HostContext::logLine);
    HostCore::VLogInfo("Module", "Füße", 1);
    QCOMPARE(log.size(), 1);
    QCOMPARE(log.at(0).mid(1), QVariantList({text("Module"), text("Füße"), 1}));
    QThread *receiver = nullptr;
    connect(context.get(), &HostContext::logLine, this, [&] { receiver = QThread::currentThread(); });
    std::thread([] { HostCore::VLogInfo("Worker", "message", 0); }).join();
    QTRY_COMPARE(log.size(), 2);
    QCOMPARE(receiver, thread());
}

QTEST_GUILESS_MAIN(tst_HostContext)
#include "tst_HostContext.moc"
