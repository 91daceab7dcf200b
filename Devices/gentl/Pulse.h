// SPDX-License-Identifier: MIT
#pragma once

#include <condition_variable>
#include <mutex>
#include <thread>

#include <GenApi/GenApi.h>

/// Reads four bytes once a second, so that the port notices that a device has gone which nobody asks anything.
class Pulse
{
public:
    /// `port` must outlive this object and come back soon whatever the device does. Reading at `address` changes
    /// nothing.
    Pulse(GenApi::IPort &port, int64_t address);
    ~Pulse();

    Pulse(const Pulse &) = delete;
    Pulse &operator=(const Pulse &) = delete;

private:
    void run();

    GenApi::IPort &m_port;
    const int64_t m_address;
    std::mutex m_mutex; ///< guards m_isStopping
    std::condition_variable m_changed;
    bool m_isStopping = false;
    std::thread m_thread;
};
