// SPDX-License-Identifier: MIT
#include "support/MemoryPort.h"

#include <Base/GCException.h>

#include <algorithm>
#include <cstdio>
#include <cstring>
#include <stdexcept>
#include <thread>

void MemoryPort::Read(void *buffer, int64_t address, int64_t length)
{
    const int64_t transferred = begin(false, address, length);
    std::memcpy(buffer, m_memory.data() + address, static_cast<size_t>(transferred));
}

void MemoryPort::Write(const void *buffer, int64_t address, int64_t length)
{
    const int64_t transferred = begin(true, address, length);
    std::memcpy(m_memory.data() + address, buffer, static_cast<size_t>(transferred));
    const auto hook = onWrite.find(address);
    if (hook != onWrite.end())
        hook->second(*this);
}

// Counts, sleeps and fails as configured; returns the number of bytes to transfer.
int64_t MemoryPort::begin(bool isWrite, int64_t address, int64_t length)
{
    ++(isWrite ? writes : reads);
    accesses.push_back({isWrite, address, length});
    if (latency.count() > 0)
        std::this_thread::sleep_for(latency);
    const auto size = static_cast<int64_t>(m_memory.size());
    if (address < 0 || length < 0 || length > size || address > size - length)
        throw RUNTIME_EXCEPTION("memory port: no memory at 0x%llx", static_cast<unsigned long long>(address));
    const bool hit = address >= faultFrom && address < faultTo;
    switch (hit ? (isWrite ? writeFault : readFault) : Fault::None) {
    case Fault::None:
        break;
    case Fault::Timeout:
        throw TIMEOUT_EXCEPTION("memory port: timed out");
    case Fault::Refused:
        throw RUNTIME_EXCEPTION("memory port: refused");
    case Fault::Foreign:
        throw std::runtime_error("memory port: foreign error");
    case Fault::Short:
        return length / 2;
    case Fault::Drop:
        return 0;
    }
    return length;
}

void MemoryPort::poke(int64_t address, uint64_t value, int length)
{
    for (int i = 0; i < length; ++i)
        m_memory.at(static_cast<size_t>(address + i)) = static_cast<uint8_t>(value >> (8 * i));
}

void MemoryPort::pokeBigEndian(int64_t address, uint64_t value, int length)
{
    for (int i = 0; i < length; ++i)
        m_memory.at(static_cast<size_t>(address + i)) = static_cast<uint8_t>(value >> (8 * (length - 1 - i)));
}

void MemoryPort::pokeDouble(int64_t address, double value)
{
    uint64_t bits = 0;
    std::memcpy(&bits, &value, sizeof bits);
    poke(address, bits, 8);
}

void MemoryPort::pokeText(int64_t address, const std::string &text, size_t length)
{
    for (size_t i = 0; i < length; ++i)
        m_memory.at(static_cast<size_t>(address) + i) = static_cast<uint8_t>(i < text.size() ? text[i] : 0);
}

uint64_t MemoryPort::peek(int64_t address, int length) const
{
    uint64_t value = 0;
    for (int i = 0; i < length; ++i)
        value |= static_cast<uint64_t>(m_memory.at(static_cast<size_t>(address + i))) << (8 * i);
    return value;
}

std::string MemoryPort::peekText(int64_t address, size_t length) const
{
    const auto first = m_memory.begin() + static_cast<std::ptrdiff_t>(address);
    return std::string(first, std::find(first, first + static_cast<std::ptrdiff_t>(length), uint8_t(0)));
}

void MemoryPort::resetCounters()
{
    reads = writes = 0;
    accesses.clear();
}

std::string MemoryPort::trace() const
{
    std::string text;
    for (const Access &access : accesses) {
        char entry[48];
        std::snprintf(entry, sizeof entry, "%s%c0x%llx:%lld", text.empty() ? "" : " ", access.isWrite ? 'W' : 'R',
                      static_cast<unsigned long long>(access.address), static_cast<long long>(access.length));
        text += entry;
    }
    return text;
}

unsigned MemoryPort::readsOf(int64_t address) const
{
    return static_cast<unsigned>(std::count_if(accesses.begin(), accesses.end(), [address](const Access &access) {
        return !access.isWrite && access.address == address;
    }));
}
