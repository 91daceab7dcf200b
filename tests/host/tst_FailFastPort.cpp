// SPDX-License-Identifier: MIT
#include <atomic>
#include <cstring>
#include <mutex>
#include <thread>
#include <vector>

#include <QtTest>

#include "Devices/FailFastPort.h"

using namespace std::chrono_literals;

namespace {

/// What a test does to its device, and what the device tells. Shared, as a port may outlive its owner.
struct Script
{
    enum Behaviour { Answer, Hang, TimeOut, Refuse };

    std::atomic<Behaviour> behaviour{Answer};
    QSemaphore release; ///< lets one hanging access go on
    std::atomic_int accesses{0};
    std::atomic<int64_t> lastAddress{-1};
    std::atomic<unsigned char> memory{0};
    std::atomic_bool destroyed{false};
};

class ScriptedPort : public GenApi::IPort
{
public:
    explicit ScriptedPort(std::shared_ptr<Script> behaviour) : m_script(std::move(behaviour)) { }
    ~ScriptedPort() override { m_script->destroyed = true; }

    GenApi::EAccessMode GetAccessMode() const override { return GenApi::RO; }
    void Read(void *buffer, int64_t address, int64_t length) override
    {
        behave(address);
        std::memset(buffer, m_script->memory, static_cast<std::size_t>(length));
    }
    void Write(const void *buffer, int64_t address, int64_t) override
    {
        behave(address);
        m_script->memory = *static_cast<const unsigned char *>(buffer);
    }

private:
    void behave(int64_t address)
    {
        ++m_script->accesses;
        m_script->lastAddress = address;
        if (m_script->behaviour == Script::Hang)
            m_script->release.acquire();
        else if (m_script->behaviour == Script::TimeOut)
            throw TIMEOUT_EXCEPTION("no answer");
        else if (m_script->behaviour == Script::Refuse)
            throw ACCESS_EXCEPTION("refused");
    }

    std::shared_ptr<Script> m_script;
};

constexpr FailFastPort::Timing Quick{50ms, 20ms};
constexpr FailFastPort::Timing RarelyProbing{50ms, 1h};

/// An access at `address` on `port`; true when it succeeds, false on a timeout.
bool answers(FailFastPort &port, int64_t address = 0x10)
{
    char buffer[4];
    try {
        port.Read(buffer, address, sizeof buffer);
        return true;
    } catch (const GenICam::TimeoutException &) {
        return false;
    }
}

} // namespace

class tst_FailFastPort : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { m_script = std::make_shared<Script>(); }

    void passesAccessesThrough()
    {
        FailFastPort port(target(), Quick);
        const unsigned char written[2] = {0x5a, 0x5a};
        port.Write(written, 0x20, 2);
        QCOMPARE(m_script->lastAddress.load(), int64_t(0x20));
        unsigned char read[3] = {};
        port.Read(read, 0x24, 3);
        QCOMPARE(m_script->lastAddress.load(), int64_t(0x24));
        QCOMPARE(read[2], 0x5a);
        QCOMPARE(port.GetAccessMode(), GenApi::RO);
        port.Read(nullptr, 0x28, 0);
        QCOMPARE(m_script->accesses.load(), 2);
        m_script->behaviour = Script::Refuse;
        QVERIFY_EXCEPTION_THROWN(answers(port), GenICam::AccessException);
        QVERIFY_EXCEPTION_THROWN(answers(port), GenICam::AccessException);
        QVERIFY(port.isAnswering());
    }

    void silenceCostsOneDeadline()
    {
        m_script->behaviour = Script::Hang;
        FailFastPort port(target(), RarelyProbing);
        QElapsedTimer timer;
        timer.start();
        QVERIFY(!answers(port));
        QVERIFY(timer.elapsed() >= 50);
        QVERIFY(!port.isAnswering());
        timer.restart();
        for (int i = 0; i < 1000; ++i)
            QVERIFY(!answers(port));
        QVERIFY2(timer.elapsed() < 500, "later accesses must not wait");
        QCOMPARE(m_script->accesses.load(), 1);
        m_script->release.release(); // the late answer ends the silence
        QTRY_VERIFY(port.isAnswering());
    }

    void timeoutOfTheTargetSilences()
    {
        m_script->behaviour = Script::TimeOut;
        FailFastPort port(target(), RarelyProbing), written(target(), RarelyProbing);
        QVERIFY(!answers(port));
        QVERIFY(!answers(port));
        QCOMPARE(m_script->accesses.load(), 1);
        QVERIFY_EXCEPTION_THROWN(written.Write("abcd", 0, 4), GenICam::TimeoutException);
        QVERIFY_EXCEPTION_THROWN(written.Write("abcd", 0, 4), GenICam::TimeoutException);
        QCOMPARE(m_script->accesses.load(), 2);
    }

    void probeEndsSilence()
    {
        std::vector<int> states;
        std::mutex statesMutex;
        const auto note = [&](bool answering) {
            const std::lock_guard<std::mutex> lock(statesMutex);
            states.push_back(answering);
        };
        const auto noted = [&] {
            const std::lock_guard<std::mutex> lock(statesMutex);
            return states;
        };
        FailFastPort port(target(), Quick, note);
        QVERIFY(answers(port, 0x40));
        m_script->behaviour = Script::TimeOut;
        QVERIFY(!answers(port, 0x80));
        QTRY_VERIFY(m_script->accesses >= 4);
        QCOMPARE(m_script->lastAddress.load(), int64_t(0x40)); // probes read what could be read last
        QCOMPARE(noted(), std::vector<int>({false}));
        m_script->behaviour = Script::Refuse; // is an answer
        QTRY_COMPARE(noted(), std::vector<int>({false, true}));
        m_script->behaviour = Script::Answer;
        QVERIFY(answers(port));
    }

    void waitingCallersFailTogether()
    {
        m_script->behaviour = Script::Hang;
        FailFastPort port(target(), {200ms, 1h});
        std::atomic_int failures{0};
        QElapsedTimer timer;
        timer.start();
        std::vector<std::thread> callers;
        for (int i = 0; i < 4; ++i)
            callers.emplace_back([&] { failures += !answers(port); });
        for (std::thread &caller : callers)
            caller.join();
        QCOMPARE(failures.load(), 4);
        QVERIFY2(timer.elapsed() < 400, "callers must not wait one after the other");
        m_script->release.release(4);
    }

    void destructionDoesNotWaitForAHangingDevice()
    {
        m_script->behaviour = Script::Hang;
        bool told = false;
        auto port = std::make_unique<FailFastPort>(target(), Quick, [&](bool answering) { told = answering; });
        QVERIFY(!answers(*port));
        QElapsedTimer timer;
        timer.start();
        port.reset();
        QVERIFY(timer.elapsed() < 1000);
        QVERIFY(!m_script->destroyed);
        m_script->release.release();
        QTRY_VERIFY(m_script->destroyed);
        QVERIFY2(!told, "the handler must not be called after the port's end");
    }

private:
    std::unique_ptr<GenApi::IPort> target() { return std::make_unique<ScriptedPort>(m_script); }

    std::shared_ptr<Script> m_script;
};

QTEST_GUILESS_MAIN(tst_FailFastPort)
#include "tst_FailFastPort.moc"
