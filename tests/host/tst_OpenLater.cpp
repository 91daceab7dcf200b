// SPDX-License-Identifier: MIT
#include <atomic>

#include <QSemaphore>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QtTest>

#include "Host/HostContext.h"
#include "TestDevice.h"

namespace {

const QString id = QStringLiteral("cam");

} // namespace

/// Devices that take their time until they are reached.
class tst_OpenLater : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup()
    {
        gate.release();
        context.reset();
    }

    void theCallerDoesNotWait();
    void failuresAreLogged();
    void openDevicesAndUnknownOnes();
    void searchesKeepADeviceThatIsBeingOpened();
    void deadDevicesHoldUpNoOthers();
    void theEndWaits();

private:
    QTemporaryDir folder;
    std::unique_ptr<HostContext> context;
    TestDevice *device = nullptr;
    QSemaphore gate; ///< one device is reached for each release
    std::vector<FoundDevice> found;
    QStringList log;
};

void tst_OpenLater::init()
{
    log.clear();
    found = {{id, [this] {
                  auto made = std::make_unique<TestDevice>(id);
                  device = made.get();
                  return made;
              }}};
    HostContext::Options options;
    options.settingsFile = folder.filePath(QStringLiteral("host.ini"));
    options.finder = [this] { return found; };
    context = std::make_unique<HostContext>(std::move(options));
    connect(context.get(), &HostContext::logLine, this,
            [this](const QDateTime &, const QString &, const QString &message) { log += message; });
    context->refreshDevices();
    QTRY_VERIFY(context->device(id));
    gate.acquire(gate.available());
    device->onReach = [this] { gate.acquire(); };
}

void tst_OpenLater::theCallerDoesNotWait()
{
    const QSignalSpy states(context.get(), &HostContext::deviceStateChanged);
    context->openLater(id);
    QVERIFY(context->isOpening(id) && !context->isReady(id));
    QCOMPARE(states.count(), 1);
    QVERIFY(!context->open(id)); // it must not be touched
    context->openLater(id);
    context->close(id);
    QCOMPARE(log.filter(QStringLiteral("already being opened")).size(), 2);
    QVERIFY(context->isOpening(id));
    gate.release();
    QTRY_VERIFY(context->isReady(id));
    QVERIFY(!context->isOpening(id));
    QCOMPARE(states.count(), 2);
}

void tst_OpenLater::failuresAreLogged()
{
    device->refusal = QStringLiteral("no cable");
    context->openLater(id);
    const QSignalSpy states(context.get(), &HostContext::deviceStateChanged);
    gate.release();
    QTRY_COMPARE(states.count(), 1);
    QVERIFY(!context->isOpening(id) && !context->isReady(id));
    QVERIFY(log.last().contains(QLatin1String("no cable")));
    QCOMPARE(context->openingError(id), QStringLiteral("no cable"));
    device->refusal.clear();
    context->openLater(id);
    gate.release();
    QTRY_VERIFY(context->isReady(id));
}

void tst_OpenLater::openDevicesAndUnknownOnes()
{
    QVERIFY(context->open(id));
    const QSignalSpy states(context.get(), &HostContext::deviceStateChanged);
    context->openLater(id);
    QCOMPARE(states.count() + log.size(), 0);
    context->openLater(QStringLiteral("nobody"));
    QVERIFY(!context->isOpening(QStringLiteral("nobody")));
    QCOMPARE(log.size(), 1);
}

void tst_OpenLater::searchesKeepADeviceThatIsBeingOpened()
{
    context->openLater(id);
    found.clear(); // it answers nobody else meanwhile
    const QSignalSpy refreshing(context.get(), &HostContext::refreshingChanged);
    context->refreshDevices();
    QTRY_VERIFY(refreshing.contains({false}));
    QCOMPARE(context->device(id), device);
    gate.release();
    QTRY_VERIFY(context->isReady(id));
}

void tst_OpenLater::deadDevicesHoldUpNoOthers()
{
    context->addDevice(std::make_unique<TestDevice>(QStringLiteral("other")));
    context->openLater(id);
    context->openLater(QStringLiteral("other"));
    QTRY_VERIFY(context->isReady(QStringLiteral("other")));
    QVERIFY(context->isOpening(id));
}

/// A slow panel keeps the context waiting for its last announcement, which handles events.
void tst_OpenLater::theEndWaits()
{
    struct SlowPanel final : HostCore::IDeviceListUpdate
    {
        SlowPanel() { HostCore::RegisterDeviceListUpdateListener(this); }
        ~SlowPanel() { HostCore::UnRegisterDeviceListUpdateListener(this); }
        void OnUpdate(int, std::vector<std::string>, std::vector<std::string>) override { QThread::msleep(200); }
    };
    const SlowPanel panel;
    std::atomic_bool started{false};
    std::atomic_bool ended{false};
    device->onReach = [&] {
        started = true;
        QThread::msleep(50);
        ended = true;
    };
    context->addDevice(std::make_unique<TestDevice>(QStringLiteral("other")));
    QVERIFY(context->open(QStringLiteral("other"))); // is announced
    context->openLater(id);
    QTRY_VERIFY(started);
    context.reset();
    QVERIFY(ended);
    QVERIFY(log.isEmpty());
}

QTEST_GUILESS_MAIN(tst_OpenLater)
#include "tst_OpenLater.moc"
