// SPDX-License-Identifier: MIT
#include "Devices/SwappedPort.h"

#include <algorithm>
#include <vector>

namespace {

constexpr int64_t Word = 4; // bytes

void swapWords(char *bytes, int64_t length)
{
    for (char *end = bytes + length; bytes < end; bytes += Word)
        std::reverse(bytes, bytes + Word);
}

} // namespace

void SwappedPort::Read(void *buffer, int64_t address, int64_t length)
{
    m_target.Read(buffer, address, length);
    swapWords(static_cast<char *>(buffer), length);
}

void SwappedPort::Write(const void *buffer, int64_t address, int64_t length)
{
    const auto *bytes = static_cast<const char *>(buffer);
    std::vector<char> words(bytes, bytes + length);
    swapWords(words.data(), length);
    m_target.Write(words.data(), address, length);
}
