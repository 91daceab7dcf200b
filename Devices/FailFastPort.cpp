// SPDX-License-Identifier: MIT
#include "Devices/FailFastPort.h"

#include <condition_variable>
#include <cstring>
#include <deque>
#include <exception>
#include <mutex>
#include <thread>
#include <utility>
#include <vector>

namespace {

/// One access with a buffer of its own: its caller may have left when it ends.
struct Access
{
    enum class Kind { Read, Write };

    Kind kind;
    int64_t address;
    std::vector<char> data;
    std::exception_ptr error;
    bool timedOut = false;
    bool over = false;

    void perform(GenApi::IPort &port)
    {
        const auto length = static_cast<int64_t>(data.size());
        try {
            if (kind == Kind::Read)
                port.Read(data.data(), address, length);
            else
                port.Write(data.data(), address, length);
        } catch (const GenICam::TimeoutException &) {
            timedOut = true;
            error = std::current_exception();
        } catch (...) {
            error = std::current_exception();
        }
    }
};

} // namespace

/// Lives until both the port and the thread have let go of it.
class FailFastPort::Worker
{
public:
    Worker(std::unique_ptr<GenApi::IPort> port, Timing times, StateHandler stateHandler)
        : m_target(std::move(port)), m_accessMode(m_target->GetAccessMode()), m_timing(times),
          m_handler(std::move(stateHandler))
    { }

    GenApi::EAccessMode mode() const { return m_accessMode; }

    bool isAnswering() const
    {
        const std::lock_guard<std::mutex> lock(m_mutex);
        return m_answering;
    }

    /// Returns when the access has succeeded, throws otherwise.
    void submit(const std::shared_ptr<Access> &access)
    {
        std::unique_lock<std::mutex> lock(m_mutex);
        if (!m_answering)
            throw TIMEOUT_EXCEPTION("The device does not answer");
        m_waiting.push_back(access);
        m_changed.notify_all();
        if (!m_changed.wait_for(lock, m_timing.deadline, [&] { return access->over; })) {
            setAnswering(lock, false);
            throw TIMEOUT_EXCEPTION("The device did not answer within %d ms",
                                    static_cast<int>(m_timing.deadline.count()));
        }
        if (access->error)
            std::rethrow_exception(access->error);
    }

    void stop()
    {
        {
            const std::lock_guard<std::mutex> handlerLock(m_handlerMutex);
            m_handler = nullptr;
        }
        std::unique_lock<std::mutex> lock(m_mutex);
        m_stopping = true;
        m_changed.notify_all();
        if (m_answering)
            m_changed.wait_for(lock, m_timing.deadline, [this] { return m_finished; });
    }

    /// The thread's work.
    void run()
    {
        std::unique_lock<std::mutex> lock(m_mutex);
        while (waitForWork(lock)) {
            const std::shared_ptr<Access> access = nextAccess();
            lock.unlock();
            access->perform(*m_target);
            lock.lock();
            finish(lock, *access);
        }
        lock.unlock();
        m_target.reset();
        lock.lock();
        m_finished = true;
        m_changed.notify_all();
    }

private:
    /// False when the port is being destroyed. True otherwise: something waits, or it is time to probe.
    bool waitForWork(std::unique_lock<std::mutex> &lock)
    {
        const auto hasWork = [this] { return m_stopping || !m_waiting.empty(); };
        if (m_answering)
            m_changed.wait(lock, [&] { return hasWork() || !m_answering; });
        if (!m_answering)
            m_changed.wait_for(lock, m_timing.probeInterval, hasWork);
        return !m_stopping;
    }

    std::shared_ptr<Access> nextAccess()
    {
        if (m_waiting.empty())
            return std::make_shared<Access>(m_probe);
        const std::shared_ptr<Access> access = m_waiting.front();
        m_waiting.pop_front();
        return access;
    }

    void finish(std::unique_lock<std::mutex> &lock, Access &access)
    {
        if (access.kind == Access::Kind::Read && !access.error) {
            m_probe.address = access.address;
            m_probe.data.resize(access.data.size());
        }
        access.over = true;
        m_changed.notify_all();
        setAnswering(lock, !access.timedOut);
    }

    /// When the device falls silent, every access that still waits for its turn fails at once: nobody waits for its
    /// own deadline, and accesses whose callers have given up are not made any more.
    void setAnswering(std::unique_lock<std::mutex> &lock, bool answers)
    {
        if (m_answering == answers)
            return;
        m_answering = answers;
        if (!answers)
            failWaiting();
        lock.unlock();
        tellState();
        lock.lock();
    }

    void failWaiting()
    {
        for (const std::shared_ptr<Access> &access : std::exchange(m_waiting, {})) {
            access->error = std::make_exception_ptr(TIMEOUT_EXCEPTION("The device does not answer"));
            access->over = true;
        }
        m_changed.notify_all();
    }

    /// Tells the latest state, once per change however the threads meet here.
    void tellState()
    {
        const std::lock_guard<std::mutex> handlerLock(m_handlerMutex);
        const bool now = isAnswering();
        if (std::exchange(m_toldAnswering, now) != now && m_handler)
            m_handler(now);
    }

    mutable std::mutex m_mutex;
    std::condition_variable m_changed;
    std::deque<std::shared_ptr<Access>> m_waiting;
    std::unique_ptr<GenApi::IPort> m_target; ///< used by the thread only
    const GenApi::EAccessMode m_accessMode;
    const Timing m_timing;
    Access m_probe{Access::Kind::Read, 0, std::vector<char>(4), {}, false, false};
    bool m_answering = true;
    bool m_stopping = false;
    bool m_finished = false;

    std::mutex m_handlerMutex; ///< taken before m_mutex, never the other way round
    StateHandler m_handler;
    bool m_toldAnswering = true;
};

FailFastPort::FailFastPort(std::unique_ptr<GenApi::IPort> target, Timing timing, StateHandler handler)
    : m_worker(std::make_shared<Worker>(std::move(target), timing, std::move(handler)))
{
    std::thread([shared = m_worker] { shared->run(); }).detach();
}

FailFastPort::~FailFastPort()
{
    m_worker->stop();
}

GenApi::EAccessMode FailFastPort::GetAccessMode() const
{
    return m_worker->mode();
}

bool FailFastPort::isAnswering() const
{
    return m_worker->isAnswering();
}

void FailFastPort::Read(void *buffer, int64_t address, int64_t length)
{
    if (length <= 0)
        return;
    Access read{Access::Kind::Read, address, std::vector<char>(static_cast<std::size_t>(length)), {}, false, false};
    const auto access = std::make_shared<Access>(std::move(read));
    m_worker->submit(access);
    std::memcpy(buffer, access->data.data(), access->data.size());
}

void FailFastPort::Write(const void *buffer, int64_t address, int64_t length)
{
    if (length <= 0)
        return;
    const auto *bytes = static_cast<const char *>(buffer);
    Access write{Access::Kind::Write, address, std::vector<char>(bytes, bytes + length), {}, false, false};
    m_worker->submit(std::make_shared<Access>(std::move(write)));
}
