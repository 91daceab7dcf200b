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
    connect(&m_context->log(), &HostLog::lineAdded, this,
            [this](const QDateTime &, const QString &, const QString &message) { m_log += message; });
    m_context->devices().refresh();
    QTRY_VERIFY(m_context->devices().device(Id));
    m_gate.acquire(m_gate.available());
    m_device->onReach = [this] { m_gate.acquire(); };
}

void tst_OpenLater::theCallerDoesNotWait()
{
    const QSignalSpy states(&m_context->sessions(), &DeviceSessions::stateChanged);
    m_context->sessions().openLater(Id);
    QVERIFY(m_context->devices().isOpening(Id) && !m_context->devices().isReady(Id));
    QCOMPARE(states.count(), 1);
    QVERIFY(!m_context->sessions().open(Id)); // it must not be touched
    m_context->sessions().openLater(Id);
    m_context->sessions().close(Id);
    QCOMPARE(m_log.filter(QStringLiteral("already being opened")).size(), 2);
    QVERIFY(m_context->devices().isOpening(Id));
    m_gate.release();
    QTRY_VERIFY(m_context->devices().isReady(Id));
    QVERIFY(!m_context->devices().isOpening(Id));
    QCOMPARE(states.count(), 2);
}

void tst_OpenLater::failuresAreLogged()
{
    m_device->refusal = QStringLiteral("no cable");
    m_context->sessions().openLater(Id);
    const QSignalSpy states(&m_context->sessions(), &DeviceSessions::stateChanged);
    m_gate.release();
    QTRY_COMPARE(states.count(), 1);
    QVERIFY(!m_context->devices().isOpening(Id) && !m_context->devices().isReady(Id));
    QVERIFY(m_log.last().contains(QLatin1String("no cable")));
    QCOMPARE(m_context->devices().openingError(Id), QStringLiteral("no cable"));
    m_device->refusal.clear();
    m_context->sessions().openLater(Id);
    m_gate.release();
    QTRY_VERIFY(m_context->devices().isReady(Id));
}

void tst_OpenLater::openDevicesAndUnknownOnes()
{
    QVERIFY(m_context->sessions().open(Id));
    const QSignalSpy states(&m_context->sessions(), &DeviceSessions::stateChanged);
    m_context->sessions().openLater(Id);
    QCOMPARE(states.count() + m_log.size(), 0);
    m_context->sessions().openLater(QStringLiteral("nobody"));
    QVERIFY(!m_context->devices().isOpening(QStringLiteral("nobody")));
    QCOMPARE(m_log.size(), 1);
}

void tst_OpenLater::searchesKeepADeviceThatIsBeingOpened()
{
    m_context->sessions().openLater(Id);
    m_found.clear(); // it answers nobody else meanwhile
    const QSignalSpy refreshing(&m_context->devices(), &KnownDevices::refreshingChanged);
    m_context->devices().refresh();
    QTRY_VERIFY(refreshing.contains({false}));
    QCOMPARE(m_context->devices().device(Id), m_device);
    m_gate.release();
    QTRY_VERIFY(m_context->devices().isReady(Id));
}

void tst_OpenLater::deadDevicesHoldUpNoOthers()
{
    m_context->devices().add(std::make_unique<TestDevice>(QStringLiteral("other")));
    m_context->sessions().openLater(Id);
    m_context->sessions().openLater(QStringLiteral("other"));
    QTRY_VERIFY(m_context->devices().isReady(QStringLiteral("other")));
    QVERIFY(m_context->devices().isOpening(Id));
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
    m_context->devices().add(std::make_unique<TestDevice>(QStringLiteral("other")));
    QVERIFY(m_context->sessions().open(QStringLiteral("other"))); // is announced
    m_context->sessions().openLater(Id);
    QTRY_VERIFY(started);
    m_context.reset();
    QVERIFY(ended);
    QVERIFY(m_log.isEmpty());
}

QTEST_GUILESS_MAIN(tst_OpenLater)
#include "tst_OpenLater.moc"
