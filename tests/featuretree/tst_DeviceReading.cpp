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

/// Nothing but the first read of a turn that waits has time; what fails costs something.
DeviceReading::Timing strict()
{
    DeviceReading::Timing timing;
    timing.budget = timing.slice = timing.silence.costless = 0ms;
    timing.silence.pauses = {1h, 1h, 1h, 1h};
    return timing;
}

/// As a device that takes its time does.
void waitForDevice()
{
    QThread::usleep(100);
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
        m_reading.read(nullptr, waitForDevice);
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
        reading.read(nullptr, waitForDevice);
        QVERIFY(!reading.hasTime());
        for (NotingJob *job : {&hidden, &seen, &forgotten, &seen})
            reading.later(job);
        reading.forget(&forgotten);
        QVERIFY(notes.isEmpty());
        QTRY_VERIFY(!reading.isBusy());
        QCOMPARE(notes.join(QLatin1Char(' ')), QStringLiteral("seen seen. seen seen. hidden hidden."));
    }

    /// The budget is for what comes at once, the slice for what waits; a read that would probably go beyond waits.
    void limits()
    {
        const std::tuple<const char *, std::chrono::milliseconds, std::chrono::milliseconds, const char *> rows[] = {
            {"one read a slice", 1h, 0ms, "job job. job job. job job."},
            {"all in one slice", 0ms, 1h, "job job job job."}};
        for (const auto &[name, budget, slice, expected] : rows) {
            DeviceReading::Timing timing;
            timing.budget = budget;
            timing.slice = slice;
            DeviceReading reading(timing);
            QStringList notes;
            NotingJob job(reading, notes, QStringLiteral("job"));
            job.left = 3;
            reading.later(&job);
            QTRY_VERIFY(!reading.isBusy());
            QCOMPARE(notes.join(QLatin1Char(' ')), QLatin1String(expected));
            reading.read(nullptr, waitForDevice);
            QVERIFY2(reading.hasTime() == (budget > 0ms), name);
        }
        DeviceReading::Timing timing;
        timing.budget = 200ms;
        DeviceReading reading(timing);
        reading.read(nullptr, [] { QThread::msleep(190); });
        QVERIFY2(!reading.hasTime(), "the next one would take as long");
        QCoreApplication::processEvents();
        for (int i = 0; i < 40; ++i)
            reading.read(nullptr, waitForDevice);
        QCoreApplication::processEvents();
        reading.read(nullptr, [] { QThread::msleep(15); });
        QVERIFY2(reading.hasTime(), "one slow read is forgotten");
    }

    /// A device that is silent again soon is left alone longer, not one that has been alive for long.
    void pausesGrow()
    {
        struct Row
        {
            const char *name;
            std::array<std::chrono::milliseconds, 4> pauses;
            int silences;
            unsigned tries;
        };
        const Row rows[] = {{"unanswered tries", {1ms, 1ms, 1h, 1h}, 1, 2},
                            {"silent again soon", {1h, 1ms, 2h, 2h}, 2, 1},
                            {"silent again after a while", {1h, 1ms, 1ms, 1ms}, 2, 0}};
        for (const Row &row : rows) {
            TestCamera camera;
            DeviceReading::Timing timing = strict();
            timing.silence.pauses = row.pauses;
            DeviceReading reading(timing);
            camera.port.readFault = MemoryPort::Fault::Timeout;
            for (int i = 0; i < row.silences; ++i) {
                reading.write(camera.node("Width"), [] {});
                QTest::qWait(5);
                QVERIFY_EXCEPTION_THROWN(reading.read(camera.node("Width"), timeOut), GenICam::TimeoutException);
            }
            const auto reads = [&camera] {
                const GenApi::AutoLock lock(camera.map->GetLock());
                return camera.port.reads;
            };
            QTRY_VERIFY2(reads() == row.tries, row.name);
            QTest::qWait(50);
            QVERIFY2(reads() == row.tries, row.name);
        }
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
        timing.silence.pauses = {10ms, 10ms, 10ms, 10ms};
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
        timing.silence.costlessPause = 1h;
        DeviceReading reading(timing);
        camera.port.readFault = MemoryPort::Fault::Timeout;
        QVERIFY_EXCEPTION_THROWN(reading.read(camera.node("Width"), timeOut), GenICam::TimeoutException);
        QVERIFY(!reading.hasTime());
        QCOMPARE(camera.port.reads, 0u);
        QStringList notes;
        NotingJob waiting(reading, notes, QStringLiteral("job"));
        reading.later(&waiting);
        QCoreApplication::processEvents();
        QTest::qWait(20);
        QCOMPARE(camera.port.reads, 0u); // what waits asks for nothing
        for (int i = 0; i < 3; ++i)
            QVERIFY(!reading.hasTime());
        QCOMPARE(camera.port.reads, 1u);
        camera.port.readFault = MemoryPort::Fault::None;
        QCoreApplication::processEvents();
        QVERIFY(reading.hasTime());
        QTRY_COMPARE(notes.size(), 2);
    }

    /// One feature that never answers is left out when another one does.
    void oneFeatureAlone()
    {
        TestCamera camera;
        DeviceReading::Timing timing;
        timing.silence.leftOut = 600ms;
        DeviceReading reading(timing);
        camera.port.latency = 100us; // the port waits, so that reads count as answers of the device
        camera.port.faultFrom = TestCamera::Width;
        camera.port.faultTo = TestCamera::Width + 4;
        camera.port.readFault = MemoryPort::Fault::Timeout;
        const auto read = [&](const char *name) {
            GenApi::INode *node = camera.node(name);
            reading.read(node, [&] { GenApi::CValuePtr(node)->ToString(false, true); });
        };
        read("Uncached");
        QVERIFY_EXCEPTION_THROWN(read("Width"), GenICam::TimeoutException);
        QVERIFY(!reading.hasTime());
        reading.retry();
        QTRY_VERIFY(!reading.isSilent());
        camera.port.resetCounters();
        QVERIFY_EXCEPTION_THROWN(read("Width"), GenICam::TimeoutException);
        QVERIFY(!reading.isSilent());
        QCOMPARE(camera.port.reads, 0u);
        QTest::qWait(600);
        QVERIFY_EXCEPTION_THROWN(read("Width"), GenICam::TimeoutException);
        QVERIFY2(camera.port.reads > 0, "it is left out for a while only");
    }

    /// A command tells nothing about the device; what the user writes does.
    void onlyRealAnswersCount()
    {
        TestCamera camera;
        DeviceReading reading(strict());
        camera.port.readFault = MemoryPort::Fault::Timeout;
        camera.port.latency = 100us;
        camera.port.readFault = MemoryPort::Fault::None;
        reading.read(camera.node("Width"), [&] { GenApi::CIntegerPtr(camera.node("Width"))->GetValue(false, true); });
        camera.port.readFault = MemoryPort::Fault::Timeout;
        QVERIFY_EXCEPTION_THROWN(reading.write(camera.node("Start"), timeOut), GenICam::TimeoutException);
        camera.port.resetCounters();
        reading.retry();
        const auto isAsked = [&camera] {
            const GenApi::AutoLock lock(camera.map->GetLock());
            return camera.port.reads > 0;
        };
        QTRY_VERIFY(isAsked());
        QTest::qWait(20);
        QVERIFY(reading.isSilent());
        QSignalSpy revived(&reading, &DeviceReading::revived);
        reading.write(camera.node("Width"), [] {});
        QVERIFY(!reading.isSilent());
        QTRY_COMPARE(revived.size(), 1);
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
        QCoreApplication::processEvents(); // the next turn
        QCOMPARE(reading.writeByName([] { return 0; }), 0);
        QVERIFY(!reading.isSilent());
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
        bool wasEarly = false;
        std::atomic_bool isStopped{false};
        std::thread answer([&] {
            QThread::msleep(20);
            wasEarly = isStopped;
            port.release();
        });
        reading.stop();
        isStopped = true;
        answer.join();
        QVERIFY2(!wasEarly, "the device is still being read");
        QVERIFY(!reading.hasTime() && reading.isSilent());
    }
};

QTEST_GUILESS_MAIN(tst_DeviceReading)
#include "tst_DeviceReading.moc"
