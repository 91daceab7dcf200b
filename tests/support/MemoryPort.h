// SPDX-License-Identifier: MIT
#pragma once

#include <GenApi/IPort.h>

#include <chrono>
#include <cstdint>
#include <functional>
#include <map>
#include <string>
#include <vector>

/// A device made of plain memory behind GenApi's IPort: counts and records every access,
/// answers late, short or not at all on demand, and reacts to writes.
/// Not thread-safe: the node map's lock serialises the accesses.
class MemoryPort : public GenApi::IPort
{
public:
    enum class Fault {
        None,
        Timeout, ///< GenICam::TimeoutException
        Refused, ///< GenICam::RuntimeException
        Foreign, ///< std::runtime_error
        Short, ///< only the first half of the buffer is filled, nothing is thrown
        Drop ///< nothing is transferred, nothing is thrown
    };
    struct Access
    {
        bool isWrite;
        int64_t address;
        int64_t length;
    };

    explicit MemoryPort(size_t size = 0x10000) : m_memory(size, 0) { }

    GenApi::EAccessMode GetAccessMode() const override { return accessMode; }
    /// Accesses beyond the memory throw GenICam::RuntimeException.
    void Read(void *buffer, int64_t address, int64_t length) override;
    void Write(const void *buffer, int64_t address, int64_t length) override;

    /// Device side: changes the memory without counting or hooks. Little-endian.
    void poke(int64_t address, uint64_t value, int length = 4);
    void pokeBigEndian(int64_t address, uint64_t value, int length = 4);
    void pokeDouble(int64_t address, double value);
    /// Copies the text and fills the rest of `length` bytes with zeros.
    void pokeText(int64_t address, const std::string &text, size_t length);
    uint64_t peek(int64_t address, int length = 4) const;
    std::string peekText(int64_t address, size_t length) const;

    void resetCounters();
    unsigned reads = 0;
    unsigned writes = 0;
    std::vector<Access> accesses; ///< since resetCounters(), in order
    /// The accesses as text, e.g. "R0x14:4 W0x14:4".
    std::string trace() const;
    unsigned readsOf(int64_t address) const;

    GenApi::EAccessMode accessMode = GenApi::RW;
    std::chrono::microseconds latency{0}; ///< every access sleeps this long
    Fault readFault = Fault::None;
    Fault writeFault = Fault::None;
    int64_t faultFrom = 0; ///< faults hit addresses in [faultFrom, faultTo)
    int64_t faultTo = INT64_MAX;
    /// Called after a write that starts at the key address.
    std::map<int64_t, std::function<void(MemoryPort &)>> onWrite;

private:
    int64_t begin(bool isWrite, int64_t address, int64_t length);

    std::vector<uint8_t> m_memory;
};
