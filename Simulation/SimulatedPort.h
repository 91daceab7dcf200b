// SPDX-License-Identifier: MIT
#pragma once

#include <atomic>
#include <chrono>
#include <functional>

#include <GenApi/GenApi.h>

class Firmware;

/// The link to a simulated device: as slow and as unreliable as a test or a demonstration wants it.
/// May be used on any thread.
class SimulatedPort : public GenApi::IPort
{
public:
    enum class Fault {
        None,
        Timeout, ///< the device is silent: the first access waits for the deadline, further ones fail at once
        Refuse, ///< the device answers every access with an error
        Drop ///< the link is gone
    };
    static constexpr std::chrono::milliseconds Deadline{500};

    /// `firmware` must outlive this object.
    explicit SimulatedPort(Firmware &firmware) : m_firmware(firmware) { }

    void setFault(Fault fault);
    Fault fault() const { return m_currentFault; }
    /// Time that every access takes.
    void setLatency(std::chrono::milliseconds time) { m_latency = int(time.count()); }

    GenApi::EAccessMode GetAccessMode() const override { return GenApi::RW; }
    /// TimeoutException for a silent device, AccessException for refused accesses, RuntimeException without link.
    void Read(void *buffer, int64_t address, int64_t length) override;
    /// As Read(); a refused write carries the device's own words.
    void Write(const void *buffer, int64_t address, int64_t length) override;

private:
    void pass();

    Firmware &m_firmware;
    std::atomic<Fault> m_currentFault{Fault::None};
    std::atomic<bool> m_deadlineMissed{false};
    std::atomic<int> m_latency{0};
};
