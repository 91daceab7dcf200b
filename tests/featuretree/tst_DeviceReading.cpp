// SPDX-License-Identifier: MIT
#include <atomic>
#include <condition_variable>
#include <mutex>
#include <thread>

#include <QtTest>

#include "PanelBase/DeviceReading.h"
#include "TestCamera.h"
#include "support/FakeHostCore.h"

namespace {

using namespace std::chrono_literals;

/// Nothing but the first read of a turn has time; what fails costs something.
DeviceReading::Timing strict()
{
    DeviceReading::Timing timing;
    timing.budget = timing.slice = timing.costless = 0ms;
    timing.pauses = {1h, 1h, 1h, 1h};
    return timing;
}

void timeOut()
{
    throw TIMEOUT_EXCEPTION("no answer");
}

/// Reads as many times as it is told to and writes down what happens.
class NotingJob : public DeviceReading::Job
{
public:
    NotingJob(DeviceReading &reading, QStringList &notes, const QString &name)
        : m_reading(reading), m_notes(notes), m_name(name)
    { }
    ~NotingJob() override { m_reading.forget(this); }

    bool isInView() const override { return inView; }
    bool readNext() override
    {
        m_notes.append(m_name);
        m_reading.read(nullptr, [] {});
        return --left > 0;
    }
    void endSlice() override { m_notes.append(m_name + QLatin1Char('.')); }

    bool inView = false;
    int left = 1;

private:
    DeviceReading &m_reading;
    QStringList &m_notes;
    QString m_name;
};

/// A port that holds reads back, on whichever thread, until it is told to answer.
class HeldPort : public GenApi::IPort
{
public:
    GenApi::EAccessMode GetAccessMode() const override { return GenApi::RW; }
    void Read(void *, int64_t, int64_t) override
    {
        std::unique_lock<std::mutex> lock(m_mutex);
        isRead = true;
        m_released.wait(lock, [this] { return m_isReleased; });
    }
    void Write(const void *, int64_t, int64_t) override { }
    void release()
    {
        const std::lock_guard<std::mutex> lock(m_mutex);
        m_isReleased = true;
        m_released.notify_all();
    }

    std::atomic_bool isRead{false};

private:
    std::mutex m_mutex;
    std::condition_variable m_released;
    bool m_isReleased = false;
};

} // namespace

/// When a panel reads its device.
class tst_DeviceReading : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { FakeHostCore::instance().reset(); }

    /// What waits is read in later turns, in view first, and each job hears of the end of its slices.
    void takesTurns()
    {
        DeviceReading reading(strict());
        QStringList notes;
        NotingJob hidden(reading, notes, QStringLiteral("hidden"));
        NotingJob seen(reading, notes, QStringLiteral("seen"));
        NotingJob forgotten(reading, notes, QStringLiteral("forgotten"));
        seen.inView = true;
        seen.left = 2;
        QVERIFY2(reading.hasTime(), "the first read of a turn needs no budget");
        reading.read(nullptr, [] {});
        QVERIFY(!reading.hasTime());
        for (NotingJob *job : {&hidden, &seen, &forgotten, &seen})
            reading.later(job);
        reading.forget(&forgotten);
        QVERIFY(notes.isEmpty());
        QTRY_VERIFY(!reading.isBusy());
        QCOMPARE(notes.join(QLatin1Char(' ')), QStringLiteral("seen seen. seen seen. hidden hidden."));
    }

    /// Reads within reads count once; a quick device never waits.
    void quickDevice()
    {
        DeviceReading reading;
        for (int i = 0; i < 1000; ++i) {
            QVERIFY(reading.hasTime());
            reading.read(nullptr, [&] { reading.read(nullptr, [] {}); });
        }
    }

    void slowAndSilentReads()
    {
        DeviceReading::Timing impatient = strict();
        impatient.longest = -1ms; // any read takes longer
        const std::tuple<const char *, DeviceReading::Timing, void (*)()> rows[] = {
            {"time-out", strict(), timeOut}, {"took too long", impatient, [] {}}};
        for (const auto &[name, timing, access] : rows) {
            FakeHostCore::instance().clearCalls();
            TestCamera camera;
            DeviceReading reading(timing);
            reading.setDeviceName(QStringLiteral("cam"));
            QSignalSpy silenced(&reading, &DeviceReading::silenced);
            try {
                reading.read(camera.node("Width"), access);
            } catch (const GenICam::TimeoutException &) { }
            QVERIFY2(reading.isSilent() && !reading.hasTime(), name);
            QVERIFY2(silenced.isEmpty(), "nobody is told while reading");
            QTRY_COMPARE(silenced.size(), 1);
            QCOMPARE(FakeHostCore::instance().callsTo(QStringLiteral("VLogInfo")).size(), 1);
        }
    }

    /// A silent device is asked on another thread; jobs wait for its answer.
    void comesBack()
    {
        TestCamera camera;
        DeviceReading::Timing timing = strict();
        timing.pauses = {10ms, 10ms, 10ms, 10ms};
        DeviceReading reading(timing);
        QStringList notes;
        NotingJob job(reading, notes, QStringLiteral("job"));
        QSignalSpy revived(&reading, &DeviceReading::revived);
        camera.port.readFault = MemoryPort::Fault::Timeout;
        QVERIFY_EXCEPTION_THROWN(
            reading.read(camera.node("Width"), [&] { GenApi::CIntegerPtr(camera.node("Width"))->GetValue(); }),
            GenICam::TimeoutException);
        reading.later(&job);
        {
            const GenApi::AutoLock lock(camera.map->GetLock()); // the port is used by the other thread
            camera.port.resetCounters();
        }
        const auto reads = [&camera] {
            const GenApi::AutoLock lock(camera.map->GetLock());
            return camera.port.reads;
        };
        QTRY_VERIFY(reads() >= 3);
        QVERIFY(notes.isEmpty() && revived.isEmpty());
        {
            const GenApi::AutoLock lock(camera.map->GetLock());
            camera.port.readFault = MemoryPort::Fault::None;
        }
        QTRY_COMPARE(revived.size(), 1);
        QTRY_COMPARE(notes.value(0), QStringLiteral("job"));
        QCOMPARE(FakeHostCore::instance().callsTo(QStringLiteral("VLogInfo")).size(), 2);
    }

    /// Where a try costs nothing, it is made with the next thing to be read, once a turn.
    void failsFast()
    {
        TestCamera camera;
        DeviceReading::Timing timing;
        timing.costlessPause = 1h;
        DeviceReading reading(timing);
        camera.port.readFault = MemoryPort::Fault::Timeout;
        QVERIFY_EXCEPTION_THROWN(reading.read(camera.node("Width"), timeOut), GenICam::TimeoutException);
        QVERIFY(!reading.hasTime());
        QCOMPARE(camera.port.reads, 0u);
        QCoreApplication::processEvents();
        for (int i = 0; i < 3; ++i)
            QVERIFY(!reading.hasTime());
        QCOMPARE(camera.port.reads, 1u);
        camera.port.readFault = MemoryPort::Fault::None;
        QCoreApplication::processEvents();
        QVERIFY(reading.hasTime());
    }

    void writesByName()
    {
        DeviceReading::Timing impatient = strict();
        impatient.longest = -1ms;
        DeviceReading reading(impatient);
        QCOMPARE(reading.writeByName([] { return 0; }), 0);
        QVERIFY2(!reading.isSilent(), "what was written may take its time");
        QCOMPARE(reading.writeByName([] { return -4; }), -4);
        QVERIFY(reading.isSilent());
        QCOMPARE(reading.writeByName([] { return 0; }), -1);
    }

    /// Whoever closes the device may destroy its nodes right after.
    void stopWaitsForTheOtherThread()
    {
        TestCamera camera;
        HeldPort port;
        camera.map->Connect(&port);
        DeviceReading reading(strict());
        QVERIFY_EXCEPTION_THROWN(reading.read(camera.node("Width"), timeOut), GenICam::TimeoutException);
        reading.retry();
        QTRY_VERIFY(port.isRead);
        std::thread answer([&port] { port.release(); });
        reading.stop();
        answer.join();
        QVERIFY(!reading.hasTime() && reading.isSilent());
    }
};

QTEST_GUILESS_MAIN(tst_DeviceReading)
#include "tst_DeviceReading.moc"
