// SPDX-License-Identifier: MIT
#include <atomic>

#include <QSemaphore>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QtTest>

#include "Host/HostContext.h"
#include "TestDevice.h"

namespace {

const QString Id = QStringLiteral("cam");

} // namespace

/// Devices that take their time until they are reached.
class tst_OpenLater : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup()
    {
        m_gate.release();
        m_context.reset();
    }

    void theCallerDoesNotWait();
    void failuresAreLogged();
    void openDevicesAndUnknownOnes();
    void searchesKeepADeviceThatIsBeingOpened();
    void deadDevicesHoldUpNoOthers();
    void theEndWaits();

private:
    QTemporaryDir m_folder;
    std::unique_ptr<HostContext> m_context;
    TestDevice *m_device = nullptr;
    QSemaphore m_gate; ///< one device is reached for each release
    std::vector<FoundDevice> m_found;
    QStringList m_log;
};

void tst_OpenLater::init()
{
    m_log.clear();
    m_found = {{Id, [this] {
                    auto made = std::make_unique<TestDevice>(Id);
                    m_device = made.get();
                    return made;
                }}};
    HostContext::Options options;
    options.settingsFile = m_folder.filePath(QStringLiteral("host.ini"));
    options.finder = [this] { return m_found; };
    m_context = std::make_unique<HostContext>(std::move(options));
    connect(m_context.get(), &HostContext::logLine, this,
            [this](const QDateTime &, const QString &, const QString &message) { m_log += message; });
    m_context->refreshDevices();
    QTRY_VERIFY(m_context->device(Id));
    m_gate.acquire(m_gate.available());
    m_device->onReach = [this] { m_gate.acquire(); };
}

void tst_OpenLater::theCallerDoesNotWait()
{
    const QSignalSpy states(m_context.get(), &HostContext::deviceStateChanged);
    m_context->openLater(Id);
    QVERIFY(m_context->isOpening(Id) && !m_context->isReady(Id));
    QCOMPARE(states.count(), 1);
    QVERIFY(!m_context->open(Id)); // it must not be touched
    m_context->openLater(Id);
    m_context->close(Id);
    QCOMPARE(m_log.filter(QStringLiteral("already being opened")).size(), 2);
    QVERIFY(m_context->isOpening(Id));
    m_gate.release();
    QTRY_VERIFY(m_context->isReady(Id));
    QVERIFY(!m_context->isOpening(Id));
    QCOMPARE(states.count(), 2);
}

void tst_OpenLater::failuresAreLogged()
{
    m_device->refusal = QStringLiteral("no cable");
    m_context->openLater(Id);
    const QSignalSpy states(m_context.get(), &HostContext::deviceStateChanged);
    m_gate.release();
    QTRY_COMPARE(states.count(), 1);
    QVERIFY(!m_context->isOpening(Id) && !m_context->isReady(Id));
    QVERIFY(m_log.last().contains(QLatin1String("no cable")));
    QCOMPARE(m_context->openingError(Id), QStringLiteral("no cable"));
    m_device->refusal.clear();
    m_context->openLater(Id);
    m_gate.release();
    QTRY_VERIFY(m_context->isReady(Id));
}

void tst_OpenLater::openDevicesAndUnknownOnes()
{
    QVERIFY(m_context->open(Id));
    const QSignalSpy states(m_context.get(), &HostContext::deviceStateChanged);
    m_context->openLater(Id);
    QCOMPARE(states.count() + m_log.size(), 0);
    m_context->openLater(QStringLiteral("nobody"));
    QVERIFY(!m_context->isOpening(QStringLiteral("nobody")));
    QCOMPARE(m_log.size(), 1);
}

void tst_OpenLater::searchesKeepADeviceThatIsBeingOpened()
{
    m_context->openLater(Id);
    m_found.clear(); // it answers nobody else meanwhile
    const QSignalSpy refreshing(m_context.get(), &HostContext::refreshingChanged);
    m_context->refreshDevices();
    QTRY_VERIFY(refreshing.contains({false}));
    QCOMPARE(m_context->device(Id), m_device);
    m_gate.release();
    QTRY_VERIFY(m_context->isReady(Id));
}

void tst_OpenLater::deadDevicesHoldUpNoOthers()
{
    m_context->addDevice(std::make_unique<TestDevice>(QStringLiteral("other")));
    m_context->openLater(Id);
    m_context->openLater(QStringLiteral("other"));
    QTRY_VERIFY(m_context->isReady(QStringLiteral("other")));
    QVERIFY(m_context->isOpening(Id));
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
    m_device->onReach = [&] {
        started = true;
        QThread::msleep(50);
        ended = true;
    };
    m_context->addDevice(std::make_unique<TestDevice>(QStringLiteral("other")));
    QVERIFY(m_context->open(QStringLiteral("other"))); // is announced
    m_context->openLater(Id);
    QTRY_VERIFY(started);
    m_context.reset();
    QVERIFY(ended);
    QVERIFY(m_log.isEmpty());
}

QTEST_GUILESS_MAIN(tst_OpenLater)
#include "tst_OpenLater.moc"
