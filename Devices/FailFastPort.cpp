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
        : target(std::move(port)), accessMode(target->GetAccessMode()), timing(times), handler(std::move(stateHandler))
    { }

    GenApi::EAccessMode mode() const { return accessMode; }

    bool isAnswering() const
    {
        const std::lock_guard<std::mutex> lock(mutex);
        return answering;
    }

    /// Returns when the access has succeeded, throws otherwise.
    void submit(const std::shared_ptr<Access> &access)
    {
        std::unique_lock<std::mutex> lock(mutex);
        if (!answering)
            throw TIMEOUT_EXCEPTION("The device does not answer");
        waiting.push_back(access);
        changed.notify_all();
        if (!changed.wait_for(lock, timing.deadline, [&] { return access->over; })) {
            setAnswering(lock, false);
            throw TIMEOUT_EXCEPTION("The device did not answer within %d ms",
                                    static_cast<int>(timing.deadline.count()));
        }
        if (access->error)
            std::rethrow_exception(access->error);
    }

    void stop()
    {
        {
            const std::lock_guard<std::mutex> handlerLock(handlerMutex);
            handler = nullptr;
        }
        std::unique_lock<std::mutex> lock(mutex);
        stopping = true;
        changed.notify_all();
        if (answering)
            changed.wait_for(lock, timing.deadline, [this] { return finished; });
    }

    /// The thread's work.
    void run()
    {
        std::unique_lock<std::mutex> lock(mutex);
        while (waitForWork(lock)) {
            const std::shared_ptr<Access> access = nextAccess();
            lock.unlock();
            access->perform(*target);
            lock.lock();
            finish(lock, *access);
        }
        lock.unlock();
        target.reset();
        lock.lock();
        finished = true;
        changed.notify_all();
    }

private:
    /// False when the port is being destroyed. True otherwise: something waits, or it is time to probe.
    bool waitForWork(std::unique_lock<std::mutex> &lock)
    {
        const auto hasWork = [this] { return stopping || !waiting.empty(); };
        if (answering)
            changed.wait(lock, [&] { return hasWork() || !answering; });
        if (!answering)
            changed.wait_for(lock, timing.probeInterval, hasWork);
        return !stopping;
    }

    std::shared_ptr<Access> nextAccess()
    {
        if (waiting.empty())
            return std::make_shared<Access>(probe);
        const std::shared_ptr<Access> access = waiting.front();
        waiting.pop_front();
        return access;
    }

    void finish(std::unique_lock<std::mutex> &lock, Access &access)
    {
        if (access.kind == Access::Kind::Read && !access.error) {
            probe.address = access.address;
            probe.data.resize(access.data.size());
        }
        access.over = true;
        changed.notify_all();
        setAnswering(lock, !access.timedOut);
    }

    /// Who waits while the device falls silent is told by its own deadline, or by nobody: given-up accesses go.
    void setAnswering(std::unique_lock<std::mutex> &lock, bool answers)
    {
        if (answering == answers)
            return;
        answering = answers;
        if (!answers)
            failWaiting();
        lock.unlock();
        tellState();
        lock.lock();
    }

    void failWaiting()
    {
        for (const std::shared_ptr<Access> &access : std::exchange(waiting, {})) {
            access->error = std::make_exception_ptr(TIMEOUT_EXCEPTION("The device does not answer"));
            access->over = true;
        }
        changed.notify_all();
    }

    /// Tells the latest state, once per change however the threads meet here.
    void tellState()
    {
        const std::lock_guard<std::mutex> handlerLock(handlerMutex);
        const bool now = isAnswering();
        if (std::exchange(toldAnswering, now) != now && handler)
            handler(now);
    }

    mutable std::mutex mutex;
    std::condition_variable changed;
    std::deque<std::shared_ptr<Access>> waiting;
    std::unique_ptr<GenApi::IPort> target; ///< used by the thread only
    const GenApi::EAccessMode accessMode;
    const Timing timing;
    Access probe{Access::Kind::Read, 0, std::vector<char>(4), {}, false, false};
    bool answering = true;
    bool stopping = false;
    bool finished = false;

    std::mutex handlerMutex; ///< taken before `mutex`, never the other way round
    StateHandler handler;
    bool toldAnswering = true;
};

FailFastPort::FailFastPort(std::unique_ptr<GenApi::IPort> target, Timing timing, StateHandler handler)
    : worker(std::make_shared<Worker>(std::move(target), timing, std::move(handler)))
{
    std::thread([shared = worker] { shared->run(); }).detach();
}

FailFastPort::~FailFastPort()
{
    worker->stop();
}

GenApi::EAccessMode FailFastPort::GetAccessMode() const
{
    return worker->mode();
}

bool FailFastPort::isAnswering() const
{
    return worker->isAnswering();
}

void FailFastPort::Read(void *buffer, int64_t address, int64_t length)
{
    if (length <= 0)
        return;
    Access read{Access::Kind::Read, address, std::vector<char>(static_cast<std::size_t>(length)), {}, false, false};
    const auto access = std::make_shared<Access>(std::move(read));
    worker->submit(access);
    std::memcpy(buffer, access->data.data(), access->data.size());
}

void FailFastPort::Write(const void *buffer, int64_t address, int64_t length)
{
    if (length <= 0)
        return;
    const auto *bytes = static_cast<const char *>(buffer);
    Access write{Access::Kind::Write, address, std::vector<char>(bytes, bytes + length), {}, false, false};
    worker->submit(std::make_shared<Access>(std::move(write)));
}
