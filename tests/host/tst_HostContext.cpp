// SPDX-License-Identifier: MIT
#include <atomic>
#include <functional>

#include <QtTest>

#include "Features/HandOver.h"
#include "Host/SessionHold.h"
#include "TestHost.h"

namespace {

/// As the panel's bridge does: hands the event to the GUI thread and waits until it has been handled there.
class WaitingListener final : public HostCore::IDeviceListUpdate
{
public:
    using Keys = ListListener::Keys;
    using Handler = ListListener::Handler;

    explicit WaitingListener(Handler handler = {}) : m_handle(std::move(handler))
    {
        HostCore::RegisterDeviceListUpdateListener(this);
    }
    ~WaitingListener() { HostCore::UnRegisterDeviceListUpdateListener(this); }

    void OnUpdate(int source, Keys cards, Keys cameras) override
    {
        const auto finished = QSharedPointer<std::atomic_bool>::create(false);
        const auto adopt = [=] {
            ++handled;
            if (m_handle)
                m_handle(source, cards, cameras);
            *finished = true;
        };
        thread = QThread::currentThread();
        m_gui.post(adopt);
        calls.release();
        for (int i = 0; i < 1000 && !*finished; ++i)
            QThread::msleep(5);
        returned = true;
    }

    int handled = 0;
    std::atomic<QThread *> thread{nullptr}; ///< of the last call
    QSemaphore calls;
    std::atomic_bool returned{false};

private:
    const Handler m_handle;
    HandOver m_gui;
};

/// Stands for the panel: writes down the host's events as it finds them on the GUI thread.
class Panel final : public HostCore::IFocusUpdate
{
public:
    Panel() { HostCore::RegisterFocusUpdateListener(this); }
    ~Panel() { HostCore::UnRegisterFocusUpdateListener(this); }

    void OnUpdate(HostCore::FOCUS_TYPE type, std::string id) override
    {
        events += text("focus %1 %2").arg(static_cast<int>(type)).arg(QString::fromStdString(id));
    }

    QStringList lists() const { return events.filter(text("list")); }
    QThread *announcingThread() const { return m_listener.thread; }

    QStringList events;
    std::function<void()> onList;

private:
    void adopt(int source, const ListListener::Keys &cards, const ListListener::Keys &cameras)
    {
        events += text("list %1 [%2] [%3]").arg(source).arg(describe(cards), describe(cameras));
        if (onList)
            onList();
    }

    /// Ids with "+" when open and "*" when acquiring.
    static QString describe(const ListListener::Keys &ids)
    {
        QStringList result;
        for (const std::string &id : ids) {
            const std::string open = HostCore::GetCardInfo(id, HostCore::CARD_INFO_OPEN)
                + HostCore::GetCameraInfo(id, HostCore::CAM_INFO_OPENED); // one of them is empty
            const std::string acquiring = HostCore::GetCameraInfo(id, HostCore::CAM_INFO_ACQUISITION);
            result += QString::fromStdString(id + (open == "1" ? "+" : "") + (acquiring == "1" ? "*" : ""));
        }
        return result.join(QLatin1Char(' '));
    }

    WaitingListener m_listener{
        [this](int source, const auto &cards, const auto &cameras) { adopt(source, cards, cameras); }};
};

/// Lets as many device-list events through as a test allows.
struct Gate
{
    ~Gate() { pass.release(1000); }

    QSemaphore pass;
    const ListListener listener{[this](int, const auto &, const auto &) { pass.acquire(); }};
};

std::vector<FoundDevice> cameras(const char *ids)
{
    std::vector<FoundDevice> result;
    for (const QString &id : text(ids).split(QLatin1Char(' '), Qt::SkipEmptyParts))
        result.push_back({id, [id] { return std::make_unique<TestDevice>(id); }});
    return result;
}

} // namespace

/// How devices become known, open, close and go, and what panels hear of it.
class tst_HostContext : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        m_searchResult.clear();
        m_host.renew([this] { return m_searchResult; });
    }
    void cleanup() { m_host.end(); }

    void openingTellsThePanel()
    {
        m_host.add("cam");
        m_host.add("other");
        QVERIFY(!m_host.add("cam"));
        m_host->focus().set(text("cam"));
        QCOMPARE(HostCore::GetCameraInfo("cam", HostCore::CAM_INFO_READY), std::string("0"));
        Panel panel;
        QVERIFY(m_host.open("cam"));
        QVERIFY(panel.events.isEmpty());
        QTRY_COMPARE(panel.events, QStringList({text("list 1 [] [cam+]"), text("focus 3 cam")}));
        QVERIFY(panel.announcingThread() != thread());
        QCOMPARE(HostCore::GetCameraInfo("cam", HostCore::CAM_INFO_READY), std::string("1"));
        QCOMPARE(HostCore::GetCameraInfo("cam", HostCore::CAM_INFO_TYPE_CODE), std::string("1"));
        QVERIFY(HostCore::GetAttrNodeMap(HostCore::FOCUS_CAMERA, "cam", HostCore::NODE_MAP_DEVICE));
        QVERIFY(!HostCore::GetAttrNodeMap(HostCore::FOCUS_CARD, "cam", HostCore::NODE_MAP_DEVICE));
        QVERIFY(!HostCore::GetAttrNodeMap(HostCore::FOCUS_CAMERA, "other", HostCore::NODE_MAP_DEVICE));
        QVERIFY(m_host.open("cam")); // tells nothing new
        m_host->focus().set(text("unknown"));
        QTRY_COMPARE(panel.events.mid(2), QStringList({text("focus 0 ")}));

        m_host.add("card 1", Device::Kind::Card);
        m_host.add("card 2", Device::Kind::Card);
        m_host->focus().set(text("card 2"));
        panel.events.clear();
        QVERIFY(m_host.open("card 2"));
        QTRY_COMPARE(panel.events, QStringList({text("list 1 [card 2+] []"), text("focus 2 card 2")}));
        QCOMPARE(HostCore::GetCardInfo("card 1", HostCore::CARD_INFO_STATE), std::string("4"));
        QVERIFY(HostCore::GetCardInfo("unknown", HostCore::CARD_INFO_STATE).empty());
        QVERIFY(HostCore::GetCameraInfo("card 2", HostCore::CAM_INFO_OPENED).empty());
        QVERIFY(HostCore::GetAttrNodeMap(HostCore::FOCUS_CARD, "card 2", HostCore::NODE_MAP_DEVICE));
    }

    void theNodeMapOutlivesThePanels()
    {
        TestDevice *device = m_host.add("cam");
        Panel panel;
        QVERIFY(m_host.open("cam"));
        QTRY_COMPARE(panel.lists().size(), 1);
        QStringList order;
        auto *widget = new QObject;
        connect(widget, &QObject::destroyed, this, [&] { order += text("panel"); });
        connect(device, &TestDevice::closed, this, [&] { order += text("node map"); });
        panel.onList = [&] {
            order += text("event");
            widget->deleteLater();
        };
        m_host.close("cam");
        QVERIFY(!HostCore::GetAttrNodeMap(HostCore::FOCUS_CAMERA, "cam", HostCore::NODE_MAP_DEVICE));
        QCOMPARE(HostCore::SetCameraNodeValue("cam", "Width", "5"), 0); // the panel may not have heard of it yet
        QTRY_VERIFY(!device->isOpen());
        QVERIFY(HostCore::SetCameraNodeValue("cam", "Width", "5") != 0);
        QCOMPARE(panel.lists().last(), text("list 1 [] [cam]"));
        QCOMPARE(order, QStringList({text("event"), text("panel"), text("node map")}));
    }

    /// A panel that opens a card does not look at the cameras of that event: the closed one must not be among them.
    void theNodeMapOutlivesEventsOnTheirWay()
    {
        TestDevice *device = m_host.add("cam");
        m_host.add("card", Device::Kind::Card);
        Gate gate;
        const Panel panel;
        QVERIFY(m_host.open("cam"));
        gate.pass.release();
        QTRY_COMPARE(panel.events.size(), 2);
        QVERIFY(m_host.open("card"));
        m_host.close("cam");
        gate.pass.release();
        QTRY_COMPARE(panel.lists().last(), text("list 1 [card+] []"));
        QTRY_COMPARE(panel.events.size(), 4);
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        QVERIFY(device->isOpen());
        gate.pass.release();
        QTRY_VERIFY(!device->isOpen());
        QCOMPARE(panel.lists().last(), text("list 1 [] [cam]"));
    }

    void closingDevicesCannotBeOpened()
    {
        TestDevice *device = m_host.add("cam");
        QVERIFY(m_host.open("cam"));
        m_host.close("cam");
        QVERIFY(!m_host.open("cam"));
        QVERIFY(m_host.log.value(0).contains(text("still being closed")));
        QTRY_VERIFY(!device->isOpen());
        QVERIFY(m_host.open("cam"));
        m_host.close("cam");
        m_host.end(); // while a release is due
    }

    void lostDevicesAreClosedOnce()
    {
        TestDevice *device = m_host.add("cam");
        const Panel panel;
        QVERIFY(m_host.open("cam"));
        QTRY_COMPARE(panel.lists().size(), 1);
        Q_EMIT device->lost(text("no heartbeat"));
        Q_EMIT device->lost(text("no heartbeat"));
        QTRY_VERIFY(!device->isOpen());
        QCOMPARE(panel.lists().mid(1), QStringList({text("list 1 [] [cam]")}));
        Q_EMIT device->lost(text("no heartbeat"));
        QCOMPARE(m_host.log.size(), 1);
        QVERIFY(m_host.open("cam"));
    }

    void heldDevicesStayOpen()
    {
        const struct
        {
            const char *name;
            bool isLost, isClosed;
            int losses;
        } rows[] = {
            {"used", false, false, 0}, {"closed", false, true, 0}, {"lost", true, false, 1}, {"both", true, true, 1}};
        for (const auto &row : rows) {
            m_host.renew();
            TestDevice *device = m_host.add("cam");
            const SessionHold closed(m_host->sessions(), text("cam"));
            QVERIFY(!closed.isOpen());
            QVERIFY(m_host.open("cam"));
            const QSignalSpy losses(&m_host->sessions(), &DeviceSessions::lost);
            auto outer = std::make_unique<SessionHold>(m_host->sessions(), text("cam"));
            {
                const SessionHold inner(m_host->sessions(), text("cam"));
                if (row.isLost)
                    Q_EMIT device->lost(text("no heartbeat"));
                if (row.isClosed)
                    m_host.close("cam");
                QVERIFY2(inner.isEnding() == (row.isLost || row.isClosed), row.name);
            }
            QCoreApplication::sendPostedEvents();
            QVERIFY2(m_host.isReady("cam") && device->nodeMap() && losses.isEmpty(), row.name);
            QVERIFY2(outer->isOpen() != outer->isEnding(), row.name);
            const bool ends = outer->isEnding();
            outer.reset();
            QVERIFY2(m_host.isReady("cam") != ends && losses.size() == row.losses, row.name);
            if (ends)
                QTRY_VERIFY2(!device->isOpen(), row.name);
        }
    }

    void acquisitionReachesPanelAndViewer()
    {
        TestDevice *device = m_host.add("cam");
        const QSignalSpy frames(&m_host->devices(), &KnownDevices::frameReady);
        QVERIFY(!m_host.acquire("cam"));
        Q_EMIT device->frameReady(QImage()); // not while it is closed
        const Panel panel;
        QVERIFY(m_host.open("cam"));
        QTRY_COMPARE(panel.lists().size(), 1);
        const QImage frame(3, 2, QImage::Format_Grayscale8);
        Q_EMIT device->frameReady(frame);
        QCOMPARE(frames, (QList<QVariantList>{{text("cam"), frame}}));
        QVERIFY(m_host.acquire("cam"));
        QTRY_COMPARE(panel.lists().value(1), text("list 1 [] [cam+*]"));
        m_host->sessions().stopAcquisition(text("cam"));
        QTRY_COMPARE(panel.lists().value(2), text("list 1 [] [cam+]"));
        device->refusal = text("no bandwidth");
        QVERIFY(!m_host.acquire("cam"));
    }

    void discoveryKeepsTheListUpToDate()
    {
        m_host.add("simulated");
        const auto ids = [this] {
            QStringList result;
            for (const Device *device : m_host->devices().all())
                result += device->id();
            return result.join(QLatin1Char(' '));
        };
        const auto search = [this](const char *result) {
            m_searchResult = cameras(result);
            m_host->devices().refresh();
            QVERIFY(m_host->devices().isRefreshing());
            QTRY_VERIFY(!m_host->devices().isRefreshing());
        };
        const QSignalSpy changes(&m_host->devices(), &KnownDevices::listChanged);
        search("a b simulated");
        QCOMPARE(ids(), text("simulated a b"));
        const Device *a = m_host.device("a");
        QVERIFY(m_host.open("b"));
        search("a");
        QCOMPARE(changes.size(), 1);
        search("c a");
        QCOMPARE(ids(), text("simulated a b c"));
        QCOMPARE(m_host.device("a"), a);
        m_host.close("b");
        QTRY_VERIFY(!m_host.device("b")->isOpen());
        search("");
        QCOMPARE(ids(), text("simulated"));
    }

    /// The panel shows nothing for a moment for each closed camera that an event names.
    void closedCamerasAreNamedOnce()
    {
        for (const char *id : {"never opened", "first", "second", "third"})
            m_host.add(id);
        const Panel panel;
        for (const char *id : {"first", "second", "third"})
            QVERIFY(m_host.open(id));
        QTRY_COMPARE(panel.lists().size(), 3);
        m_host.close("second");
        QTRY_VERIFY(!m_host.device("second")->isOpen());
        m_searchResult = cameras("found");
        m_host->devices().refresh();
        QTRY_VERIFY(m_host.device("found"));
        QVERIFY(m_host.acquire("third"));
        QTRY_COMPARE(panel.lists().mid(3),
                     QStringList({text("list 1 [] [second first+ third+]"), text("list 1 [] [third+* first+]")}));
    }

    void eventsWaitForNoSearch()
    {
        QSemaphore end;
        m_host.start([&end] {
            end.acquire();
            return std::vector<FoundDevice>();
        });
        const auto release = qScopeGuard([&] {
            end.release();
            m_host.end(); // the search uses the semaphore
        });
        TestDevice *device = m_host.add("cam");
        const Panel panel;
        m_host->devices().refresh();
        QVERIFY(m_host.open("cam"));
        QTRY_COMPARE(panel.events.value(0), text("list 1 [] [cam+]"));
        m_host.close("cam");
        QTRY_VERIFY(!device->isOpen());
        QVERIFY(m_host->devices().isRefreshing());
    }

    /// By unregistering the listener, or by the host's end when nobody does. What still waits is dropped.
    void waitingCallsAreEnded()
    {
        for (const bool byTheHost : {false, true}) {
            m_host.renew();
            for (const char *id : {"cam", "other"})
                QVERIFY(m_host.add(id));
            WaitingListener listener;
            QVERIFY(m_host.open("cam"));
            QVERIFY(m_host.open("other"));
            QVERIFY(m_host.acquire("other"));
            m_host.close("cam");
            QVERIFY(listener.calls.tryAcquire(1, 5000));
            QElapsedTimer timer;
            timer.start();
            if (byTheHost)
                m_host.end();
            else
                HostCore::UnRegisterDeviceListUpdateListener(&listener);
            QVERIFY(listener.returned);
            QCOMPARE(listener.handled, 1);
            QVERIFY2(timer.elapsed() < 2000, "the listener must not wait for its full five seconds");
        }
    }

    void theEndWaitsForARunningSearch()
    {
        QSemaphore started;
        std::atomic_bool ended{false};
        m_host.start([&] {
            started.release();
            QThread::msleep(50);
            ended = true;
            return cameras("cam");
        });
        const Panel panel;
        m_host->devices().refresh();
        started.acquire();
        m_host.end();
        QVERIFY(ended);
        QCoreApplication::processEvents();
    }

    void onlyTheFocusedDeviceIsPolled()
    {
        const auto width = [this](const char *id) {
            QString value;
            m_host->values().read(text(id), text("Width"), &value);
            return value;
        };
        for (const char *id : {"focused", "other"}) {
            TestDevice *device = m_host.add(id);
            QVERIFY(m_host.open(id));
            device->port.poke(TestDevice::WidthAddress, 1);
            QCOMPARE(width(id), text("1"));
            device->port.poke(TestDevice::WidthAddress, 2);
        }
        m_host->focus().set(text("focused"));
        QTRY_COMPARE(width("focused"), text("2"));
        QCOMPARE(width("other"), text("1"));
    }

private:
    TestHost m_host;
    std::vector<FoundDevice> m_searchResult; ///< read on the discovery thread; changed between searches only
};

QTEST_GUILESS_MAIN(tst_HostContext)
#include "tst_HostContext.moc"
