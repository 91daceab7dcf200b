// SPDX-License-Identifier: MIT
#pragma once

#include <chrono>
#include <functional>
#include <memory>

#include <GenApi/GenApi.h>

/// A port that costs its caller one deadline when the device stalls, however often it is asked afterwards.
///
/// Accesses run on a thread of the port. One that is not over at its deadline, or ends with a TimeoutException,
/// makes the device silent: the caller and everybody after it gets a TimeoutException at once. Meanwhile the thread
/// goes on with the late access and then probes the device in intervals (it reads again what could be read last);
/// the first answer of any kind ends the silence. A write that was given up may still reach the device.
///
/// Read() and Write() may be called on any thread. Other exceptions of the target arrive as they are.
class FailFastPort : public GenApi::IPort
{
public:
    struct Timing
    {
        std::chrono::milliseconds deadline{500};
        std::chrono::milliseconds probeInterval{1000};
    };
    /// Told about silence and its end, on any thread but never concurrently; must not block.
    using StateHandler = std::function<void(bool answering)>;

    explicit FailFastPort(std::unique_ptr<GenApi::IPort> target, Timing timing, StateHandler handler = {});
    /// Waits one deadline at most for the thread, and not at all for a silent device. The target is destroyed on the
    /// port's thread, later than this port if its access takes longer. The handler is not called any more.
    ~FailFastPort() override;

    FailFastPort(const FailFastPort &) = delete;
    FailFastPort &operator=(const FailFastPort &) = delete;

    GenApi::EAccessMode GetAccessMode() const override;
    void Read(void *buffer, int64_t address, int64_t length) override;
    void Write(const void *buffer, int64_t address, int64_t length) override;

    /// False from the first missed deadline to the next answer.
    bool isAnswering() const;

private:
    class Worker;
    std::shared_ptr<Worker> m_worker;
};
