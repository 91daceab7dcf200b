// SPDX-License-Identifier: MIT
#pragma once

#include <atomic>
#include <chrono>
#include <cstdint>
#include <map>
#include <string>
#include <thread>

#include <netinet/in.h>

/// A slow or lossy network between a client and a device: passes datagrams on, on a thread of its own. What comes for
/// a client goes to the one that asked last. All settings may be changed at any time.
class UdpRelay
{
public:
    /// Listens at `address` on the port on which the device listens at `target`; both IPv4.
    /// Throws std::system_error.
    UdpRelay(const std::string &address, const std::string &target, uint16_t port);
    ~UdpRelay();
    UdpRelay(const UdpRelay &) = delete;
    UdpRelay &operator=(const UdpRelay &) = delete;

    std::atomic<std::chrono::milliseconds> delay{std::chrono::milliseconds(0)}; ///< of answers
    std::atomic_bool silent{false}; ///< nothing passes
    std::atomic_uint dropEvery{0}; ///< of so many requests one gets lost; 0: none
    std::atomic_uint requests{0}; ///< so far, with those that got lost

private:
    using Clock = std::chrono::steady_clock;

    void run();
    int timeout() const;
    void takeRequest();
    void takeAnswer();
    void sendDue();

    const int m_listening;
    const int m_asking;
    sockaddr_in m_client{};
    std::multimap<Clock::time_point, std::string> m_answers; ///< by when they are due
    std::atomic_bool m_stopping{false};
    std::thread m_thread;
};
