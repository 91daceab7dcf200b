// SPDX-License-Identifier: MIT
#include <atomic>

#include <QtTest>

#include "TestHost.h"

/// Devices that take their time until they are reached.
class tst_OpenLater : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        m_found = {{text("cam"), [this] {
                        auto made = std::make_unique<TestDevice>(text("cam"));
                        m_device = made.get();
                        return made;
                    }}};
        m_host.renew([this] { return m_found; });
        m_host->devices().refresh();
        QTRY_VERIFY(m_host.device("cam"));
        m_gate.acquire(m_gate.available());
        m_device->onReach = [this](const auto &, const auto &) { m_gate.acquire(); };
    }
    void cleanup()
    {
        m_gate.release();
        m_host.end();
    }

    void theCallerDoesNotWait()
    {
        const QSignalSpy states(&m_host->sessions(), &DeviceSessions::stateChanged);
        openLater("cam");
        QVERIFY(isOpening("cam") && !m_host.isReady("cam"));
        QCOMPARE(states.count(), 1);
        QVERIFY(!m_host.open("cam")); // it must not be touched
        openLater("cam");
        QCOMPARE(m_host.log.filter(text("already being opened")).size(), 2);
        QVERIFY(isOpening("cam"));
        m_gate.release();
        QTRY_VERIFY(m_host.isReady("cam"));
        QVERIFY(!isOpening("cam"));
        QCOMPARE(states.count(), 2);
    }

    void progressIsShownAndAnOpeningIsGivenUp()
    {
        m_device->onReach = [this](const std::atomic_bool &cancelled, const ReadProgress &progress) {
            progress(2, 5);
            while (!cancelled)
                QThread::yieldCurrentThread();
            m_gate.acquire(); // the access that it is at
        };
        const Openings &openings = m_host->sessions().openings();
        openLater("cam");
        QTRY_COMPARE(openings.percent(text("cam")), 40);
        const QSignalSpy states(&m_host->sessions(), &DeviceSessions::stateChanged);
        m_host.close("cam");
        QVERIFY(isOpening("cam") && openings.isCancelled(text("cam")));
        openLater("cam"); // too early
        QCOMPARE(m_host.log.filter(text("still being given up")).size(), 1);
        m_gate.release();
        QTRY_COMPARE(states.count(), 1);
        QVERIFY(!isOpening("cam") && !m_host.isReady("cam"));
        QVERIFY(m_host->devices().openingError(text("cam")).isEmpty());
        QCOMPARE(m_host.log.size(), 1);
        m_device->onReach = nullptr;
        openLater("cam");
        QTRY_VERIFY(m_host.isReady("cam"));
    }

    void failuresAreLogged()
    {
        m_device->refusal = text("no cable");
        openLater("cam");
        const QSignalSpy states(&m_host->sessions(), &DeviceSessions::stateChanged);
        m_gate.release();
        QTRY_COMPARE(states.count(), 1);
        QVERIFY(!isOpening("cam") && !m_host.isReady("cam"));
        QVERIFY(m_host.log.last().contains(text("no cable")));
        QCOMPARE(m_host->devices().openingError(text("cam")), text("no cable"));
        m_device->refusal.clear();
        openLater("cam");
        m_gate.release();
        QTRY_VERIFY(m_host.isReady("cam"));
        QCOMPARE(states.count(), 3);
        openLater("cam"); // it is open
        QCOMPARE(states.count(), 3);
        QCOMPARE(m_host.log.size(), 1);
        openLater("nobody");
        QVERIFY(!isOpening("nobody"));
        QCOMPARE(m_host.log.size(), 2);
    }

    void searchesAndOthersDoNotDisturb()
    {
        openLater("cam");
        m_found.clear(); // it answers nobody else meanwhile
        const QSignalSpy refreshing(&m_host->devices(), &KnownDevices::refreshingChanged);
        m_host->devices().refresh();
        QTRY_VERIFY(refreshing.contains({false}));
        QCOMPARE(m_host.device("cam"), m_device);
        m_host.add("other"); // goes first, as it is reached at once
        openLater("other");
        QTRY_VERIFY(m_host.isReady("other"));
        QVERIFY(isOpening("cam"));
        m_gate.release();
        QTRY_VERIFY(m_host.isReady("cam"));
    }

    /// A slow panel keeps the context waiting for its last announcement, which handles events.
    void theEndWaits()
    {
        const ListListener slowPanel([](int, const auto &, const auto &) { QThread::msleep(200); });
        std::atomic_bool started{false};
        std::atomic_bool ended{false};
        m_device->onReach = [&](const auto &, const auto &) {
            started = true;
            QThread::msleep(50);
            ended = true;
        };
        m_host.add("other");
        QVERIFY(m_host.open("other")); // is announced
        openLater("cam");
        QTRY_VERIFY(started);
        m_host.end();
        QVERIFY(ended);
        QVERIFY(m_host.log.isEmpty());
    }

private:
    void openLater(const char *id) { m_host->sessions().openLater(text(id)); }
    bool isOpening(const char *id) { return m_host->devices().isOpening(text(id)); }

    TestHost m_host;
    TestDevice *m_device = nullptr;
    QSemaphore m_gate; ///< one device is reached for each release
    std::vector<FoundDevice> m_found;
};

QTEST_GUILESS_MAIN(tst_OpenLater)
#include "tst_OpenLater.moc"
