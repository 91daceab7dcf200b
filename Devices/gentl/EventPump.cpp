// SPDX-License-Identifier: MIT
#include "Devices/gentl/EventPump.h"

#include <atomic>
#include <condition_variable>
#include <exception>
#include <mutex>
#include <thread>
#include <utility>

#include <GenApi/GenApi.h>

namespace {

constexpr std::chrono::milliseconds WaitTime(50); // of one wait for an event
constexpr std::chrono::milliseconds KillAfter(150); // of a wait that does not keep to its time
constexpr std::chrono::milliseconds EndTimeout(500);
constexpr std::chrono::milliseconds FailurePause(50);
constexpr int MostFailures = 10; // in a row, before it is told

} // namespace

/// Lives until both the pump and its thread have let go of it.
class EventPump::Runner : public std::enable_shared_from_this<Runner>
{
public:
    explicit Runner(std::shared_ptr<Work> what) : m_work(std::move(what)) { }

    void run()
    {
        ProducerEvent *event = begin();
        while (event && !m_isStopping)
            waitOnce(*event);
        awaitKiller();
        m_work->end();
        const std::lock_guard<std::mutex> lock(m_mutex);
        m_hasEnded = true;
        m_changed.notify_all();
    }

    void awaitStart(std::chrono::milliseconds limit)
    {
        std::unique_lock<std::mutex> lock(m_mutex);
        if (!m_changed.wait_for(lock, limit, [this] { return m_hasStarted; })) {
            m_isStopping = true;
            throw TIMEOUT_EXCEPTION("The producer does not come back within %d ms", static_cast<int>(limit.count()));
        }
        if (m_error)
            std::rethrow_exception(std::exchange(m_error, nullptr));
    }

    void stop()
    {
        std::unique_lock<std::mutex> lock(m_mutex);
        m_isStopping = true;
        m_changed.notify_all();
        const auto hasEnded = [this] { return m_hasEnded; };
        if (m_changed.wait_for(lock, KillAfter, hasEnded))
            return;
        if (m_event) {
            m_isKilling = true;
            std::thread([shared = shared_from_this()] { shared->kill(); }).detach();
        }
        m_changed.wait_for(lock, EndTimeout - KillAfter, hasEnded);
    }

private:
    /// Null when it failed.
    ProducerEvent *begin()
    {
        ProducerEvent *event = nullptr;
        std::exception_ptr error;
        try {
            event = &m_work->begin();
        } catch (...) {
            error = std::current_exception();
        }
        const std::lock_guard<std::mutex> lock(m_mutex);
        m_event = event;
        m_error = std::move(error); // whoever throws it on is the last who has it
        m_hasStarted = true;
        m_changed.notify_all();
        return event;
    }

    void waitOnce(ProducerEvent &event)
    {
        const ProducerEvent::Outcome outcome = event.next(&m_data, WaitTime);
        if (outcome == ProducerEvent::Outcome::Failed) {
            pause();
            if (++m_failures == MostFailures)
                m_work->fail(event.code());
            return;
        }
        m_failures = 0;
        if (outcome == ProducerEvent::Outcome::Came && !m_isStopping)
            m_work->take(m_data);
    }

    void pause()
    {
        std::unique_lock<std::mutex> lock(m_mutex);
        m_changed.wait_for(lock, FailurePause, [this] { return m_isStopping.load(); });
    }

    void kill()
    {
        m_event->kill();
        const std::lock_guard<std::mutex> lock(m_mutex);
        m_isKilling = false;
        m_changed.notify_all();
    }

    /// From now on nobody begins to kill.
    void awaitKiller()
    {
        std::unique_lock<std::mutex> lock(m_mutex);
        m_changed.wait(lock, [this] { return !m_isKilling; });
        m_event = nullptr;
    }

    const std::shared_ptr<Work> m_work;
    QByteArray m_data;
    int m_failures = 0;
    std::atomic_bool m_isStopping{false};
    std::mutex m_mutex; ///< guards what follows
    std::condition_variable m_changed;
    ProducerEvent *m_event = nullptr; ///< while it may be killed
    std::exception_ptr m_error;
    bool m_hasStarted = false;
    bool m_hasEnded = false;
    bool m_isKilling = false;
};

EventPump::EventPump(std::shared_ptr<Work> work, std::chrono::milliseconds startLimit)
    : m_runner(std::make_shared<Runner>(std::move(work)))
{
    std::thread([shared = m_runner] { shared->run(); }).detach();
    m_runner->awaitStart(startLimit);
}

EventPump::~EventPump()
{
    m_runner->stop();
}
