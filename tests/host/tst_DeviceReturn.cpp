// SPDX-License-Identifier: MIT
#include "TestHost.h"

using namespace std::chrono_literals;

namespace {

const QString Camera = QStringLiteral("cam");

} // namespace

/// Searches that nobody asks for, devices that fall silent, and lost ones that come back.
class tst_DeviceReturn : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        m_now = 0ms;
        m_present = QStringList{Camera};
        m_searches = 0;
        m_host.renew([this] { return search(); }, [this] { return m_now; });
        look();
        QVERIFY(device());
    }
    void cleanup() { m_host.end(); }

    void searchesByItself()
    {
        auto *timer = m_host->automaticSearch().findChild<QTimer *>(text("searchTimer"));
        QSignalSpy lists(&m_host->devices(), &KnownDevices::listChanged);
        const QSignalSpy refreshing(&m_host->devices(), &KnownDevices::refreshingChanged);
        QVERIFY(!timer->isActive());
        m_host->automaticSearch().start();
        QCOMPARE(timer->intervalAsDuration(), 5000ms);
        for (const auto &[present, changes] : {std::pair{QStringList{Camera}, 0},
                                               {QStringList{Camera, text("new")}, 1},
                                               {QStringList{Camera, text("new")}, 1},
                                               {QStringList{Camera}, 2}}) {
            m_present = present;
            const int before = m_searches;
            runOut(timer);
            QTRY_VERIFY(m_searches > before && timer->isActive());
            QCOMPARE(lists.size(), changes);
        }
        QVERIFY(refreshing.isEmpty() && m_host.log.isEmpty());

        m_host->automaticSearch().setPaused(true);
        QVERIFY(!timer->isActive());
        m_host->automaticSearch().setPaused(false);
        QVERIFY2(timer->isActive() && timer->interval() < 1000, "what is new is shown soon");
        m_host->automaticSearch().setEnabled(false);
        QVERIFY(!timer->isActive());
        m_host.start();
        QVERIFY2(!m_host->automaticSearch().isEnabled(), "the setting is kept");
    }

    void neverSearchesWhileADeviceIsOpened()
    {
        QSemaphore isThere;
        device()->onReach = [&isThere](const auto &, const auto &) { isThere.acquire(); };
        m_host->automaticSearch().start();
        auto *timer = m_host->automaticSearch().findChild<QTimer *>(text("searchTimer"));
        m_host->sessions().openLater(Camera);
        const int before = m_searches;
        runOut(timer);
        QCOMPARE(m_searches.load(), before);
        QVERIFY(timer->isActive());
        isThere.release();
        QTRY_VERIFY(m_host.isReady("cam"));
    }

    /// One that was asked for is seen even where another one runs already.
    void searchesByHandAreSeen()
    {
        QSignalSpy refreshing(&m_host->devices(), &KnownDevices::refreshingChanged);
        m_host->devices().searchQuietly();
        QVERIFY(!m_host->devices().isRefreshing());
        m_host->devices().refresh();
        QVERIFY(m_host->devices().isRefreshing());
        QTRY_VERIFY(!m_host->devices().isRefreshing());
        QCOMPARE(refreshing.size(), 2);
    }

    void silentForAHeartbeatIsLost()
    {
        QVERIFY(m_host.open("cam"));
        SilentDevices &silent = m_host->silentDevices();
        QSignalSpy changes(&silent, &SilentDevices::changed);
        Q_EMIT device()->answeringChanged(false);
        QVERIFY(silent.contains(Camera) && m_host.isReady("cam"));
        Q_EMIT device()->answeringChanged(true);
        QVERIFY(!silent.contains(Camera));
        device()->silence = 20ms;
        Q_EMIT device()->answeringChanged(false);
        QVERIFY(silent.contains(Camera) && !m_host->deviceReturn().isLost(Camera));
        QTRY_VERIFY(m_host->deviceReturn().isLost(Camera));
        QCOMPARE(changes.size(), 4);
        QVERIFY(!silent.contains(Camera));
        QCOMPARE(m_host.log.filter(text("has not answered for 20 ms")).size(), 1);
    }

    void lostOnesComeBack()
    {
        const struct
        {
            const char *name;
            bool wasAcquiring, reopens, acquiresAgain, closedByHand;
            KnownDevices::State state;
            bool acquires;
        } rows[] = {
            {"open", false, true, true, false, KnownDevices::State::Ready, false},
            {"acquiring", true, true, true, false, KnownDevices::State::Ready, true},
            {"must not acquire", true, true, false, false, KnownDevices::State::Ready, false},
            {"must not come back", true, false, true, false, KnownDevices::State::Closed, false},
            {"given up", true, true, true, true, KnownDevices::State::Closed, false},
        };
        for (const auto &row : rows) {
            init();
            DeviceReturn &back = m_host->deviceReturn();
            back.setEnabled(row.reopens);
            back.setAcquiringAgain(row.acquiresAgain);
            m_host->focus().set(Camera);
            QVERIFY2(m_host.open("cam") && (!row.wasAcquiring || m_host.acquire("cam")), row.name);
            loseDevice();
            QVERIFY2(back.isLost(Camera) && m_host->focus().id() == Camera, row.name);
            QVERIFY2(back.returning().contains(Camera) == row.reopens, row.name);
            if (row.closedByHand)
                back.giveUp(Camera);
            m_present = QStringList{Camera};
            look();
            if (row.state == KnownDevices::State::Ready)
                QTRY_VERIFY2(m_host.isReady("cam"), row.name);
            look(); // nothing else follows
            QVERIFY2(m_host->devices().state(Camera) == row.state, row.name);
            QVERIFY2(device()->isAcquiring() == row.acquires, row.name);
            QVERIFY2(back.isLost(Camera) == !row.reopens, row.name);
            m_host.close("cam");
            QVERIFY2(back.returning().isEmpty(), row.name);
        }
    }

    /// It stays known although no search finds it, until somebody gives it up.
    void lostOnesStayKnown()
    {
        QVERIFY(m_host.open("cam"));
        loseDevice();
        look();
        QVERIFY(device());
        m_host->deviceReturn().giveUp(Camera);
        look();
        QVERIFY(!device());
    }

    void triesThatFailBecomeRare()
    {
        QVERIFY(m_host.open("cam"));
        QSignalSpy awaiting(&m_host->deviceReturn(), &DeviceReturn::awaitingChanged);
        loseDevice();
        device()->refusal = text("another controller");
        m_present = QStringList{Camera};
        QList<qint64> tries;
        for (; m_now < 100s; m_now += 1s) {
            const int failures = m_host.log.size();
            look();
            QTRY_VERIFY(!m_host->devices().isOpening(Camera));
            if (m_host.log.size() > failures)
                tries += m_now / 1s;
        }
        QCOMPARE(tries, QList<qint64>({0, 1, 3, 7, 15, 31, 61, 91}));
        QCOMPARE(m_host->devices().openingError(Camera), text("another controller"));
        QCOMPARE(awaiting.size(), 2); // hurried for the first minute only
        QCOMPARE(awaiting.last().first().toBool(), false);
    }

private:
    std::vector<FoundDevice> search()
    {
        ++m_searches;
        std::vector<FoundDevice> found;
        for (const QString &id : std::as_const(m_present))
            found.push_back({id, [id] { return std::make_unique<TestDevice>(id); }});
        return found;
    }
    TestDevice *device() const { return static_cast<TestDevice *>(m_host.device("cam")); }

    /// One search, to its end.
    void look()
    {
        QSignalSpy searched(&m_host->devices(), &KnownDevices::searched);
        m_host->devices().searchQuietly();
        QTRY_COMPARE(searched.size(), 1);
    }
    static void runOut(QTimer *timer)
    {
        timer->stop();
        QMetaObject::invokeMethod(timer, "timeout");
    }
    void loseDevice()
    {
        m_present.clear();
        Q_EMIT device()->lost(text("cable"));
        QTRY_VERIFY(!device()->isOpen());
        m_host.log.clear();
    }

    std::chrono::milliseconds m_now{0};
    QStringList m_present; ///< changes between two searches only
    std::atomic_int m_searches{0};
    TestHost m_host;
};

QTEST_MAIN(tst_DeviceReturn)
#include "tst_DeviceReturn.moc"
