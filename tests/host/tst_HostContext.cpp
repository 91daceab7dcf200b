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

    void openingTellsThePanel();
    void openingFails();
    void theNodeMapOutlivesThePanels();
    void closingDevicesCannotBeOpened();
    void lostDevicesAreClosedOnce();
    void cardsAreAnnouncedFirst();
    void acquisitionIsAnnounced();
    void framesOfOpenDevicesAreForwarded();
    void discoveryKeepsTheListUpToDate();
    void discoveryAnnouncesOnItsThread();
    void unregisteringEndsAWaitingCall();
    void theEndWaitsForARunningSearch();
    void onlyTheFocusedDeviceIsPolled();

private:
    TestDevice *addDevice(const char *id, Device::Kind kind = Device::Kind::Camera);

    QTemporaryDir folder;
    std::unique_ptr<HostContext> context;
    std::vector<FoundDevice> searchResult; ///< read on the discovery thread; changed between searches only
};

void tst_HostContext::init()
{
    searchResult.clear();
    QFile::remove(folder.filePath(text("host.ini")));
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

QTEST_GUILESS_MAIN(tst_HostContext)
#include "tst_HostContext.moc"
