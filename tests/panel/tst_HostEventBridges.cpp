// SPDX-License-Identifier: MIT
#include <atomic>
#include <thread>

#include <QElapsedTimer>
#include <QSignalSpy>
#include <QTimer>

#include "ParamterWnd/HostEventBridges.h"
#include "support/FatalMessages.h"
#include "support/Rows.h"

namespace {

const char *const ChineseName = "相机-1 é";

/// Runs `event` on a thread of its own, as a host would, and keeps the GUI thread's event loop going meanwhile.
template <class Event>
bool raiseOnHostThread(Event event, int timeoutMs = 2000)
{
    std::atomic<bool> returned{false};
    std::thread host([&] {
        event();
        returned = true;
    });
    const bool inTime = QTest::qWaitFor([&] { return returned.load(); }, timeoutMs);
    host.join();
    return inTime;
}

} // namespace

class tst_HostEventBridges : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase()
    {
        qRegisterMetaType<QStringList>("QStringList");
        qRegisterMetaType<QSharedPointer<bool>>("QSharedPointer<bool>");
    }

    void deviceListIsConverted()
    {
        DeviceListUpdate bridge;
        QStringList received;
        connect(
            &bridge, &DeviceListUpdate::updateCams, this,
            [&](int source, const QStringList &cards, const QStringList &cameras, const QSharedPointer<bool> &flag) {
                received = QStringList(QString::number(source)) + cards + cameras;
                setFinished(*flag);
            });
        QElapsedTimer timer;
        timer.start();
        for (int event = 0; event < 100; ++event)
            bridge.OnUpdate(7, {"card"}, {"b", "", ChineseName, "a"});
        QVERIFY2(timer.elapsed() < 100 * 5, "each event slept at least once");
        QCOMPARE(received, QStringList({"7"_s, "card"_s, "b"_s, QString(), QString::fromUtf8(ChineseName), "a"_s}));
    }

    void deviceListOnHostThreadWaitsForTheHandler()
    {
        DeviceListUpdate bridge;
        QSharedPointer<bool> pending;
        connect(&bridge, &DeviceListUpdate::updateCams, this,
                [&](int, const QStringList &, const QStringList &, const QSharedPointer<bool> &flag) {
                    QVERIFY(QThread::currentThread() == QCoreApplication::instance()->thread());
                    pending = flag;
                    QTimer::singleShot(50, this, [flag] { setFinished(*flag); });
                });
        bool waited = false;
        QVERIFY(raiseOnHostThread([&] {
            bridge.OnUpdate(1, {}, {"cam"});
            waited = pending && isFinished(*pending);
        }));
        QVERIFY(waited);
    }

    void unhandledDeviceListReturnsAfterFiveSeconds()
    {
        DeviceListUpdate bridge;
        QElapsedTimer timer;
        timer.start();
        QVERIFY(raiseOnHostThread([&] { bridge.OnUpdate(1, {}, {}); }, 15000));
        QVERIFY(timer.elapsed() >= 5000);
    }

    /// The receiver may still handle the event: its flag outlives the bridge.
    void bridgesThatGoReleaseTheHost()
    {
        auto bridge = std::make_unique<DeviceListUpdate>();
        std::atomic<bool> queued{false};
        bool handled = false;
        connect(bridge.get(), &DeviceListUpdate::updateCams, this,
                [&](int, const QStringList &, const QStringList &, const QSharedPointer<bool> &flag) {
                    handled = isFinished(*flag);
                });
        connect(
            bridge.get(), &DeviceListUpdate::updateCams, this, [&] { queued = true; }, Qt::DirectConnection);
        std::thread host([&] { bridge->OnUpdate(1, {}, {"cam"}); });
        while (!queued)
            QThread::msleep(1);
        QElapsedTimer timer;
        timer.start();
        bridge.reset();
        host.join();
        QVERIFY(timer.elapsed() < 2000);
        QTRY_VERIFY(handled);

        DeviceListUpdate released;
        released.release();
        timer.start();
        QVERIFY(raiseOnHostThread([&] { released.OnUpdate(1, {}, {}); }));
    }

    void languageIndex()
    {
        LanguageUpdate bridge;
        QSignalSpy spy(&bridge, &LanguageUpdate::languageChanged);
        for (const auto &[name, index] : {std::pair("English", 0), std::pair("english", 1), std::pair("English ", 1),
                                          std::pair("中文", 1), std::pair("", 1)}) {
            bridge.OnUpdate(name);
            QCOMPARE(std::pair(name, spy.takeLast().first().toInt()), std::pair(name, index));
        }
    }

    /// Language and import events cross threads, focus and image-mode events do not.
    void otherEvents()
    {
        FatalMessages messages;
        messages.allow("Cannot queue arguments of type '(HostCore::FOCUS_TYPE|std::string)'"_s);
        LanguageUpdate language;
        ImportUpdate import;
        FocusUpdate focus;
        ImageModeUpdate imageMode;
        QStringList received;
        connect(&language, &LanguageUpdate::languageChanged, this, [&] { received << "language"_s; });
        connect(&import, &ImportUpdate::importUpdate, this, [&](const QString &id) { received << id; });
        connect(&focus, &FocusUpdate::focusChanged, this,
                [&](HostCore::FOCUS_TYPE type, const QString &id) { received << QString::number(type) + id; });
        connect(&imageMode, &ImageModeUpdate::imageModeChanged, this, [&](const std::string &id, int mode) {
            received << QString::number(mode) + QString::fromStdString(id);
        });
        const auto raise = [&] {
            focus.OnUpdate(HostCore::FOCUS_CAMERA, ChineseName);
            imageMode.OnUpdate(ChineseName, 5);
            import.OnUpdate(ChineseName);
            language.OnUpdate("English");
        };
        const QString name = QString::fromUtf8(ChineseName);
        raise();
        QCOMPARE(received, QStringList({"3"_s + name, "5"_s + name, name, "language"_s}));
#if QT_VERSION < QT_VERSION_CHECK(6, 0, 0) // which registers the types of connected signals by itself
        received.clear();
        QVERIFY(raiseOnHostThread(raise));
        QTRY_COMPARE(received, QStringList({name, "language"_s}));
        QCOMPARE(messages.seen().size(), 2);
#endif
    }
};

QTEST_GUILESS_MAIN(tst_HostEventBridges)
#include "tst_HostEventBridges.moc"
