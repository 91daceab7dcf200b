// SPDX-License-Identifier: MIT
#include "Devices/gentl/Pulse.h"

#include <chrono>

#include "Features/NodeGuard.h"

namespace {

constexpr std::chrono::seconds Interval(1);

} // namespace

Pulse::Pulse(GenApi::IPort &port, int64_t address) : m_port(port), m_address(address), m_thread([this] { run(); }) { }

Pulse::~Pulse()
{
    {
        const std::lock_guard<std::mutex> lock(m_mutex);
        m_isStopping = true;
    }
    m_changed.notify_all();
    m_thread.join();
}

void Pulse::run()
{
    std::unique_lock<std::mutex> lock(m_mutex);
    while (!m_changed.wait_for(lock, Interval, [this] { return m_isStopping; })) {
        lock.unlock();
        uint32_t word = 0;
        guardNode([&] { m_port.Read(&word, m_address, sizeof word); });
        lock.lock();
    }
}
