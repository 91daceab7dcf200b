// SPDX-License-Identifier: MIT
#include <atomic>
#include <functional>

#include <QElapsedTimer>
#include <QScopeGuard>
#include <QSemaphore>
#include <QSharedPointer>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QtTest>

#include "Host/HostContext.h"
#include "TestDevice.h"

namespace {

/// As the panel's bridge does: hands the event to the GUI thread and waits until it has been handled there.
class WaitingListener final : public HostCore::IDeviceListUpdate
{
public:
    using Keys = std::vector<std::string>;
    using Handler = std::function<void(int source, const Keys &cards, const Keys &cameras)>;

    explicit WaitingListener(Handler handler = {}) : m_handle(std::move(handler))
    {
        HostCore::RegisterDeviceListUpdateListener(this);
    }
    ~WaitingListener() { HostCore::UnRegisterDeviceListUpdateListener(this); }

    void OnUpdate(int source, Keys cards, Keys cameras) override
    {
        const auto finished = QSharedPointer<std::atomic_bool>::create(false);
        const auto follow = [=] {
            ++handled;
            if (m_handle)
                m_handle(source, cards, cameras);
            *finished = true;
        };
        thread = QThread::currentThread();
        QMetaObject::invokeMethod(&m_guiObject, follow, Qt::QueuedConnection);
        started = true;
        for (int i = 0; i < 1000 && !*finished; ++i)
            QThread::msleep(5);
        returned = true;
    }

    bool waitForCall() const
    {
        for (int i = 0; i < 5000 && !started; ++i)
            QThread::msleep(1);
        return started;
    }

    int handled = 0;
    std::atomic<QThread *> thread{nullptr}; ///< of the last call
    std::atomic_bool started{false};
    std::atomic_bool returned{false};

private:
    const Handler m_handle;
    QObject m_guiObject;
};

/// Stands for the panel: writes down the host's events as it finds them on the GUI thread.
class Panel final : public HostCore::IFocusUpdate
{
public:
    Panel() { HostCore::RegisterFocusUpdateListener(this); }
    ~Panel() { HostCore::UnRegisterFocusUpdateListener(this); }

    void OnUpdate(HostCore::FOCUS_TYPE type, std::string id) override
    {
        events += QStringLiteral("focus %1 %2").arg(static_cast<int>(type)).arg(QString::fromStdString(id));
    }

    QStringList lists() const { return events.filter(QStringLiteral("list")); }
    QThread *announcingThread() const { return m_listener.thread; }

    QStringList events;
    std::function<void()> onList;

private:
    void follow(int source, const WaitingListener::Keys &cards, const WaitingListener::Keys &cameras)
    {
        const QString cardTexts = describe(cards, true).join(QLatin1Char(' '));
        events += QStringLiteral("list %1 [%2] [%3]")
                      .arg(source)
                      .arg(cardTexts, describe(cameras, false).join(QLatin1Char(' ')));
        if (onList)
            onList();
    }

    /// Ids with "+" when open and "*" when acquiring.
    static QStringList describe(const WaitingListener::Keys &ids, bool areCards)
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

    WaitingListener m_listener{
        [this](int source, const auto &cards, const auto &cameras) { follow(source, cards, cameras); }};
};

/// Lets as many device-list events through as a test allows.
class Gate final : public HostCore::IDeviceListUpdate
{
public:
    Gate() { HostCore::RegisterDeviceListUpdateListener(this); }
    ~Gate()
    {
        pass.release(1000);
        HostCore::UnRegisterDeviceListUpdateListener(this);
    }

    void OnUpdate(int, std::vector<std::string>, std::vector<std::string>) override { pass.acquire(); }

    QSemaphore pass;
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
    void cleanup() { m_context.reset(); }

    void openingTellsThePanel();
    void openingFails();
    void theNodeMapOutlivesThePanels();
    void theNodeMapOutlivesEventsOnTheirWay();
    void closingDevicesCannotBeOpened();
    void lostDevicesAreClosedOnce();
    void cardsAreAnnouncedFirst();
    void acquisitionIsAnnounced();
    void framesOfOpenDevicesAreForwarded();
    void discoveryKeepsTheListUpToDate();
    void closedCamerasAreNamedOnce();
    void eventsWaitForNoSearch();
    void unregisteringEndsAWaitingCall();
    void theEndServesAWaitingCall();
    void theEndWaitsForARunningSearch();
    void onlyTheFocusedDeviceIsPolled();

private:
    TestDevice *addDevice(const char *id, Device::Kind kind = Device::Kind::Camera);

    QTemporaryDir m_folder;
    std::unique_ptr<HostContext> m_context;
    std::vector<FoundDevice> m_searchResult; ///< read on the discovery thread; changed between searches only
};

void tst_HostContext::init()
{
    m_searchResult.clear();
    QFile::remove(m_folder.filePath(text("host.ini")));
    HostContext::Options options;
    options.settingsFile = m_folder.filePath(text("host.ini"));
    options.finder = [this] { return m_searchResult; };
    m_context = std::make_unique<HostContext>(std::move(options));
}

TestDevice *tst_HostContext::addDevice(const char *id, Device::Kind kind)
{
    auto device = std::make_unique<TestDevice>(text(id), kind);
    TestDevice *added = device.get();
    return m_context->devices().add(std::move(device)) ? added : nullptr;
}

void tst_HostContext::openingTellsThePanel()
{
    addDevice("cam");
    addDevice("other");
    QVERIFY(!addDevice("cam"));
    m_context->focus().set(text("cam"));
    QCOMPARE(HostCore::GetCameraInfo("cam", HostCore::CAM_INFO_READY), std::string("0"));
    Panel panel;
    QVERIFY(m_context->sessions().open(text("cam")));
    QVERIFY(panel.events.isEmpty());
    QTRY_COMPARE(panel.events, QStringList({text("list 1 [] [cam+]"), text("focus 3 cam")}));
    QVERIFY(panel.announcingThread() != thread());
    QCOMPARE(HostCore::GetCameraInfo("cam", HostCore::CAM_INFO_READY), std::string("1"));
    QCOMPARE(HostCore::GetCameraInfo("cam", HostCore::CAM_INFO_TYPE_CODE), std::string("1"));
    QVERIFY(HostCore::GetAttrNodeMap(HostCore::FOCUS_CAMERA, "cam", HostCore::NODE_MAP_DEVICE));
    QVERIFY(!HostCore::GetAttrNodeMap(HostCore::FOCUS_CARD, "cam", HostCore::NODE_MAP_DEVICE));
    QVERIFY(!HostCore::GetAttrNodeMap(HostCore::FOCUS_CAMERA, "other", HostCore::NODE_MAP_DEVICE));
    QVERIFY(m_context->sessions().open(text("cam"))); // tells nothing new
    m_context->focus().set(text("unknown"));
    QTRY_COMPARE(panel.events.mid(2), QStringList({text("focus 0 ")}));
}

void tst_HostContext::openingFails()
{
    addDevice("cam")->refusal = text("cable unplugged");
    QSignalSpy log(&m_context->log(), &HostLog::lineAdded);
    const Panel panel;
    QVERIFY(!m_context->sessions().open(text("cam")));
    QVERIFY(!m_context->devices().isReady(text("cam")));
    QVERIFY(!m_context->sessions().open(text("unknown")));
    QCOMPARE(log.size(), 2);
    QVERIFY(log.at(0).at(2).toString().contains(text("cable unplugged")));
}

void tst_HostContext::theNodeMapOutlivesThePanels()
{
    TestDevice *device = addDevice("cam");
    Panel panel;
    QVERIFY(m_context->sessions().open(text("cam")));
    QTRY_COMPARE(panel.lists().size(), 1);
    QStringList order;
    auto *widget = new QObject;
    connect(widget, &QObject::destroyed, this, [&] { order += text("panel"); });
    connect(device, &TestDevice::closed, this, [&] { order += text("node map"); });
    panel.onList = [&] {
        order += text("event");
        widget->deleteLater();
    };
    m_context->sessions().close(text("cam"));
    QVERIFY(!HostCore::GetAttrNodeMap(HostCore::FOCUS_CAMERA, "cam", HostCore::NODE_MAP_DEVICE));
    QVERIFY(m_context->values().write(text("cam"), text("Width"), text("5"))); // the panel may not have followed yet
    QTRY_VERIFY(!device->isOpen());
    QVERIFY(!m_context->values().write(text("cam"), text("Width"), text("5")));
    QCOMPARE(panel.lists().last(), text("list 1 [] [cam]"));
    QCOMPARE(order, QStringList({text("event"), text("panel"), text("node map")}));
}

/// A panel that opens a card does not look at the cameras of that event: the closed one must not be among them.
void tst_HostContext::theNodeMapOutlivesEventsOnTheirWay()
{
    TestDevice *device = addDevice("cam");
    addDevice("card", Device::Kind::Card);
    Gate gate;
    const Panel panel;
    QVERIFY(m_context->sessions().open(text("cam")));
    gate.pass.release();
    QTRY_COMPARE(panel.events.size(), 2);
    QVERIFY(m_context->sessions().open(text("card")));
    m_context->sessions().close(text("cam"));
    gate.pass.release();
    QTRY_COMPARE(panel.lists().last(), text("list 1 [card+] []"));
    QTRY_COMPARE(panel.events.size(), 4);
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    QVERIFY(device->isOpen());
    gate.pass.release();
    QTRY_VERIFY(!device->isOpen());
    QCOMPARE(panel.lists().last(), text("list 1 [] [cam]"));
}

void tst_HostContext::closingDevicesCannotBeOpened()
{
    TestDevice *device = addDevice("cam");
    QVERIFY(m_context->sessions().open(text("cam")));
    m_context->sessions().close(text("cam"));
    QSignalSpy log(&m_context->log(), &HostLog::lineAdded);
    QVERIFY(!m_context->sessions().open(text("cam")));
    QVERIFY(log.value(0).value(2).toString().contains(text("still being closed")));
    QTRY_VERIFY(!device->isOpen());
    QVERIFY(m_context->sessions().open(text("cam")));
    m_context->sessions().close(text("cam"));
    m_context.reset(); // while a release is due
}

void tst_HostContext::lostDevicesAreClosedOnce()
{
    TestDevice *device = addDevice("cam");
    const Panel panel;
    QVERIFY(m_context->sessions().open(text("cam")));
    QTRY_COMPARE(panel.lists().size(), 1);
    QSignalSpy log(&m_context->log(), &HostLog::lineAdded);
    Q_EMIT device->lost(text("no heartbeat"));
    Q_EMIT device->lost(text("no heartbeat"));
    QTRY_VERIFY(!device->isOpen());
    QCOMPARE(panel.lists().mid(1), QStringList({text("list 1 [] [cam]")}));
    Q_EMIT device->lost(text("no heartbeat"));
    QCOMPARE(log.size(), 1);
    QVERIFY(m_context->sessions().open(text("cam")));
}

void tst_HostContext::cardsAreAnnouncedFirst()
{
    addDevice("card 1", Device::Kind::Card);
    addDevice("card 2", Device::Kind::Card);
    m_context->focus().set(text("card 2"));
    Panel panel;
    QVERIFY(m_context->sessions().open(text("card 2")));
    QTRY_COMPARE(panel.events, QStringList({text("list 1 [card 2+] []"), text("focus 2 card 2")}));
    QCOMPARE(HostCore::GetCardInfo("card 1", HostCore::CARD_INFO_STATE), std::string("4"));
    QVERIFY(HostCore::GetCardInfo("unknown", HostCore::CARD_INFO_STATE).empty());
    QVERIFY(HostCore::GetCameraInfo("card 2", HostCore::CAM_INFO_OPENED).empty());
    QVERIFY(HostCore::GetAttrNodeMap(HostCore::FOCUS_CARD, "card 2", HostCore::NODE_MAP_DEVICE));
}

void tst_HostContext::acquisitionIsAnnounced()
{
    TestDevice *device = addDevice("cam");
    QVERIFY(!m_context->sessions().startAcquisition(text("cam")));
    const Panel panel;
    QVERIFY(m_context->sessions().open(text("cam")));
    QTRY_COMPARE(panel.lists().size(), 1);
    QVERIFY(m_context->sessions().startAcquisition(text("cam")));
    QTRY_COMPARE(panel.lists().value(1), text("list 1 [] [cam+*]"));
    m_context->sessions().stopAcquisition(text("cam"));
    QTRY_COMPARE(panel.lists().value(2), text("list 1 [] [cam+]"));
    device->refusal = text("no bandwidth");
    QVERIFY(!m_context->sessions().startAcquisition(text("cam")));
}

void tst_HostContext::framesOfOpenDevicesAreForwarded()
{
    TestDevice *device = addDevice("cam");
    QSignalSpy frames(&m_context->devices(), &KnownDevices::frameReady);
    Q_EMIT device->frameReady(QImage());
    QCOMPARE(frames.size(), 0);
    QVERIFY(m_context->sessions().open(text("cam")));
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
        for (const Device *device : m_context->devices().all())
            result += device->id();
        return result;
    };
    const auto search = [this](std::vector<FoundDevice> result) {
        m_searchResult = std::move(result);
        m_context->devices().refresh();
        QVERIFY(m_context->devices().isRefreshing());
        QTRY_VERIFY(!m_context->devices().isRefreshing());
    };
    QSignalSpy changes(&m_context->devices(), &KnownDevices::listChanged);
    search({foundCamera(text("a")), foundCamera(text("b")), foundCamera(text("simulated"))});
    QCOMPARE(ids(), QStringList({text("simulated"), text("a"), text("b")}));
    const Device *a = m_context->devices().device(text("a"));
    QVERIFY(m_context->sessions().open(text("b")));
    search({foundCamera(text("a"))});
    QCOMPARE(changes.size(), 1);
    search({foundCamera(text("c")), foundCamera(text("a"))});
    QCOMPARE(ids(), QStringList({text("simulated"), text("a"), text("b"), text("c")}));
    QCOMPARE(m_context->devices().device(text("a")), a);
    m_context->sessions().close(text("b"));
    QTRY_VERIFY(!m_context->devices().device(text("b"))->isOpen());
    search({});
    QCOMPARE(ids(), QStringList({text("simulated")}));
}

/// The panel shows nothing for a moment for each closed camera that an event names.
void tst_HostContext::closedCamerasAreNamedOnce()
{
    for (const char *id : {"never opened", "first", "second", "third"})
        addDevice(id);
    const Panel panel;
    for (const char *id : {"first", "second", "third"})
        QVERIFY(m_context->sessions().open(text(id)));
    QTRY_COMPARE(panel.lists().size(), 3);
    m_context->sessions().close(text("second"));
    QTRY_VERIFY(!m_context->devices().device(text("second"))->isOpen());
    m_searchResult = {foundCamera(text("found"))};
    m_context->devices().refresh();
    QTRY_VERIFY(m_context->devices().device(text("found")));
    QVERIFY(m_context->sessions().startAcquisition(text("third")));
    QTRY_COMPARE(panel.lists().mid(3),
                 QStringList({text("list 1 [] [second first+ third+]"), text("list 1 [] [third+* first+]")}));
}

void tst_HostContext::eventsWaitForNoSearch()
{
    QSemaphore end;
    HostContext::Options options;
    options.settingsFile = m_folder.filePath(text("host.ini"));
    options.finder = [&end] {
        end.acquire();
        return std::vector<FoundDevice>();
    };
    m_context.reset();
    m_context = std::make_unique<HostContext>(std::move(options));
    const auto release = qScopeGuard([&] {
        end.release();
        m_context.reset(); // the search uses the semaphore
    });
    TestDevice *device = addDevice("cam");
    const Panel panel;
    m_context->devices().refresh();
    QVERIFY(m_context->sessions().open(text("cam")));
    QTRY_COMPARE(panel.events.value(0), text("list 1 [] [cam+]"));
    m_context->sessions().close(text("cam"));
    QTRY_VERIFY(!device->isOpen());
    QVERIFY(m_context->devices().isRefreshing());
}

void tst_HostContext::unregisteringEndsAWaitingCall()
{
    addDevice("cam");
    auto listener = std::make_unique<WaitingListener>();
    QVERIFY(m_context->sessions().open(text("cam")));
    QVERIFY(m_context->sessions().startAcquisition(text("cam")));
    QVERIFY(listener->waitForCall());
    QElapsedTimer timer;
    timer.start();
    HostCore::UnRegisterDeviceListUpdateListener(listener.get());
    QVERIFY(listener->returned);
    QCOMPARE(listener->handled, 1);
    QVERIFY2(timer.elapsed() < 2000, "the listener must not wait for its full five seconds");
}

/// Whoever forgot to unregister costs no five seconds, and what waits is dropped.
void tst_HostContext::theEndServesAWaitingCall()
{
    addDevice("cam");
    addDevice("other");
    WaitingListener listener;
    QVERIFY(m_context->sessions().open(text("cam")));
    QVERIFY(m_context->sessions().open(text("other")));
    m_context->sessions().close(text("cam"));
    QVERIFY(listener.waitForCall());
    QElapsedTimer timer;
    timer.start();
    m_context.reset();
    QVERIFY2(timer.elapsed() < 2000, "the listener must not wait for its full five seconds");
    QVERIFY(listener.returned);
    QCOMPARE(listener.handled, 1);
}

void tst_HostContext::theEndWaitsForARunningSearch()
{
    std::atomic_bool started{false};
    std::atomic_bool ended{false};
    HostContext::Options options;
    options.settingsFile = m_folder.filePath(text("host.ini"));
    options.finder = [&] {
        started = true;
        QThread::msleep(50);
        ended = true;
        return std::vector<FoundDevice>{foundCamera(text("cam"))};
    };
    m_context.reset();
    m_context = std::make_unique<HostContext>(std::move(options));
    const Panel panel;
    m_context->devices().refresh();
    while (!started)
        QThread::msleep(1);
    m_context.reset();
    QVERIFY(ended);
    QCoreApplication::processEvents();
}

void tst_HostContext::onlyTheFocusedDeviceIsPolled()
{
    TestDevice *focused = addDevice("focused");
    TestDevice *other = addDevice("other");
    for (TestDevice *device : {focused, other}) {
        QVERIFY(m_context->sessions().open(device->id()));
        device->port.poke(TestDevice::WidthAddress, 1);
        m_context->values().read(device->id(), text("Width"), std::make_unique<QString>().get());
        device->port.poke(TestDevice::WidthAddress, 2);
    }
    m_context->focus().set(text("focused"));
    const auto width = [this](const char *id) {
        QString value;
        m_context->values().read(text(id), text("Width"), &value);
        return value;
    };
    QTRY_COMPARE(width("focused"), text("2"));
    QCOMPARE(width("other"), text("1"));
}

QTEST_GUILESS_MAIN(tst_HostContext)
#include "tst_HostContext.moc"
