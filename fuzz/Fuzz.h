// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string>

/// What the targets share. A target is a function LLVMFuzzerTestOneInput() that takes any bytes and ends.
namespace Fuzz {

/// Ends the program, which makes the bytes a finding, unless `holds`.
inline void expect(bool holds, const char *what)
{
    if (holds)
        return;
    std::fprintf(stderr, "does not hold: %s\n", what);
    std::abort();
}

/// Takes numbers from the front of the bytes; zeros once they are used up.
class Bytes
{
public:
    Bytes(const uint8_t *data, std::size_t size) : m_data(data), m_size(size) { }

    template <class Number>
    Number take()
    {
        Number number{};
        const std::size_t count = sizeof number < m_size ? sizeof number : m_size;
        std::memcpy(&number, m_data, count);
        m_data += count;
        m_size -= count;
        return number;
    }
    std::string rest() const { return std::string(reinterpret_cast<const char *>(m_data), m_size); }

private:
    const uint8_t *m_data;
    std::size_t m_size;
};

} // namespace Fuzz

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, std::size_t size);
