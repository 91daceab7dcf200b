// SPDX-License-Identifier: MIT
#pragma once

#include <atomic>
#include <cstdint>

#include <GenApi/GenApi.h>

/// What a device was asked since it was opened.
struct PortLoad
{
    uint64_t accesses = 0; ///< reads and writes, answered or not
    uint64_t timeouts = 0; ///< those that ended with a TimeoutException
};

/// Counts the accesses that it passes on. The figures may be asked for on any thread.
class CountingPort : public GenApi::IPort
{
public:
    /// `target` must outlive this object.
    explicit CountingPort(GenApi::IPort &target) : m_target(target) { }

    GenApi::EAccessMode GetAccessMode() const override { return m_target.GetAccessMode(); }
    void Read(void *buffer, int64_t address, int64_t length) override
    {
        count([&] { m_target.Read(buffer, address, length); });
    }
    void Write(const void *buffer, int64_t address, int64_t length) override
    {
        count([&] { m_target.Write(buffer, address, length); });
    }

    /// An access that went another way.
    void countOne() { ++m_accesses; }
    PortLoad load() const { return {m_accesses, m_timeouts}; }

private:
    template <class Access>
    void count(const Access &access)
    {
        ++m_accesses;
        try {
            access();
        } catch (const GenICam::TimeoutException &) {
            ++m_timeouts;
            throw;
        }
    }

    GenApi::IPort &m_target;
    std::atomic<uint64_t> m_accesses{0};
    std::atomic<uint64_t> m_timeouts{0};
};
