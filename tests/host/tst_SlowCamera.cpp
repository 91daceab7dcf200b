// SPDX-License-Identifier: MIT
#include <QtTest>

#include "Devices/AravisDevice.h"
#include "ParamterWidget/ParamterWidget.h"
#include "ParamterWnd/ParamterWnd.h"
#include "TestHost.h"
#include "Viewer/MeteredApplication.h"
#include "support/FakeCamera.h"
#include "support/UdpRelay.h"

using namespace std::chrono_literals;

namespace {

const QString Slow = QStringLiteral("127.0.0.3"); ///< where the relay stands for the camera, and the id of that device
constexpr quint16 ControlPort = 3956; // of every GigE Vision device

} // namespace

/// A GigE Vision camera whose every access takes 20 ms. The steps build on each other, in this order.
class tst_SlowCamera : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase()
    {
        if (!FakeCamera::isInstalled())
            QSKIP("the fake GigE Vision camera is not installed");
        QVERIFY(m_camera.plug());
        m_relay = std::make_unique<UdpRelay>(Slow.toStdString(), FakeCamera::address().toStdString(), ControlPort);
        m_relay->delay = 20ms;
        m_host.renew();
        const AravisDevice::Identity identity{Slow, Slow, Device::Transport::GigEVision};
        m_host->devices().add(std::make_unique<AravisDevice>(identity));
        m_host->focus().set(Slow);
        m_window = std::make_unique<ParamterWnd>();
        m_window->resize(500, 700);
        m_window->show();
        QVERIFY(QTest::qWaitForWindowExposed(m_window.get()));
    }

    /// Twice: a camera that was given up must be left so that it can be opened.
    void openingsCanBeGivenUp()
    {
        const Openings &openings = m_host->sessions().openings();
        for (int i = 0; i < 2; ++i) {
            openLater();
            QTRY_VERIFY2_WITH_TIMEOUT(openings.percent(Slow) > 0, qPrintable(m_host.log.join(QLatin1Char('\n'))),
                                      20'000);
            QVERIFY(openings.percent(Slow) < 100);
            m_host->sessions().close(Slow);
            QTRY_VERIFY(!m_host->devices().isOpening(Slow));
            QVERIFY(!device().isOpen() && !m_host->devices().isReady(Slow));
        }
        QVERIFY(m_host.log.isEmpty());
    }

    /// The panel finds the values read ahead. It reads sizes, offsets and the exposure past the caches.
    void openingKeepsNobodyWaiting()
    {
        m_relay->delay = 0ms;
        const Opening quick = open();
        m_host->sessions().close(Slow);
        QTRY_VERIFY(!device().isOpen());
        m_relay->delay = 20ms;
        const Opening slow = open();
        qInfo(
            "opening took %d ms and %d accesses, the panel made %d more; longest event %.0f ms, %.0f ms without delay",
            slow.time, slow.readAhead, slow.readLater, slow.longestEvent, quick.longestEvent);
        QVERIFY(slow.readAhead > 0);
        QVERIFY2(slow.readLater <= 5, "what was read ahead is read again");
        const double bound = quick.longestEvent + 20 * slow.readLater + 60;
        QVERIFY2(slow.longestEvent < bound, "an event waits for what was read ahead");
    }

    void aLostRequestCostsOneDeadline()
    {
        m_relay->dropEvery = 3;
        QElapsedTimer timer;
        timer.start();
        int failures = 0;
        for (int i = 0; i < 10; ++i)
            failures += readsWidth() ? 0 : 1;
        QVERIFY(failures > 0);
        QVERIFY2(timer.elapsed() < 1000, QByteArray::number(timer.elapsed()));
        m_relay->dropEvery = 0;
        QTRY_VERIFY(readsWidth());
    }

    void silenceCostsOneDeadline()
    {
        m_host.log.clear();
        m_relay->silent = true;
        QElapsedTimer timer;
        timer.start();
        QVERIFY(!readsWidth());
        QVERIFY2(timer.elapsed() >= 400 && timer.elapsed() < 900, QByteArray::number(timer.elapsed()));
        timer.restart();
        for (int i = 0; i < 100; ++i)
            QVERIFY(!readsWidth());
        QVERIFY2(timer.elapsed() < 100, QByteArray::number(timer.elapsed()));
        m_relay->silent = false;
        QTRY_VERIFY_WITH_TIMEOUT(readsWidth(), 5000);
        QCOMPARE(m_host.log.filter(QStringLiteral("answers again")).size(), 1);
    }

    void cleanupTestCase()
    {
        m_window.reset();
        m_host.end();
        m_relay.reset();
        m_camera.unplug();
    }

private:
    struct Opening
    {
        int time, readAhead, readLater; ///< time in ms
        double longestEvent; ///< ms
    };

    Opening open()
    {
        QElapsedTimer timer;
        timer.start();
        MeteredApplication::meter()->restart();
        openLater();
        const auto isReady = [this] { return m_host->devices().isReady(Slow); };
        if (!QTest::qWaitFor(isReady, 20'000))
            qFatal("%s", qPrintable(m_host.log.join(QLatin1Char('\n'))));
        const int time = int(timer.elapsed());
        const auto ahead = device().portLoad().accesses;
        if (!QTest::qWaitFor([this] { return shownPanel(); }))
            qFatal("no panel is shown");
        m_window->grab();
        return {time, int(ahead), int(device().portLoad().accesses - ahead), MeteredApplication::meter()->longest()};
    }
    void openLater() { m_host->sessions().openLater(Slow); }
    Device &device() const { return *m_host->devices().device(Slow); }
    bool shownPanel() const
    {
        const auto panels = m_window->findChildren<ParamterWidget *>();
        return std::any_of(panels.begin(), panels.end(), [](const ParamterWidget *panel) {
            return panel->isVisible() && panel->deviceName() == Slow;
        });
    }
    bool readsWidth()
    {
        QString width;
        device().nodeMap()->InvalidateNodes();
        return m_host->values().read(Slow, QStringLiteral("Width"), &width);
    }

    FakeCamera m_camera;
    std::unique_ptr<UdpRelay> m_relay;
    TestHost m_host;
    std::unique_ptr<ParamterWnd> m_window;
};

int main(int argc, char **argv)
{
    MeteredApplication application(argc, argv);
    tst_SlowCamera test;
    return QTest::qExec(&test, argc, argv);
}
#include "tst_SlowCamera.moc"
