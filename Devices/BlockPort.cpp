// SPDX-License-Identifier: MIT
#include "Devices/BlockPort.h"

#include <cstring>
#include <iterator>
#include <utility>

void BlockPort::Read(void *buffer, int64_t address, int64_t length)
{
    if (!m_keeps || length <= 0) {
        m_target.Read(buffer, address, length);
        return;
    }
    if (!find(address, length))
        fetch(address, length);
    std::memcpy(buffer, find(address, length), static_cast<std::size_t>(length));
}

void BlockPort::Write(const void *buffer, int64_t address, int64_t length)
{
    m_blocks.clear();
    m_target.Write(buffer, address, length);
}

void BlockPort::setKeeping(bool keeps)
{
    m_keeps = keeps;
    m_blocks.clear();
}

void BlockPort::fetch(int64_t address, int64_t length)
{
    RegisterBlock block{address, std::vector<char>(static_cast<std::size_t>(length))};
    m_target.Read(block.bytes.data(), address, length);
    keep(std::move(block));
}

const char *BlockPort::find(int64_t address, int64_t length) const
{
    const auto after = m_blocks.upper_bound(address);
    if (after == m_blocks.begin())
        return nullptr;
    const auto &[begin, bytes] = *std::prev(after);
    const auto offset = static_cast<uint64_t>(address) - static_cast<uint64_t>(begin);
    const bool isInside = offset <= bytes.size() && static_cast<uint64_t>(length) <= bytes.size() - offset;
    return isInside ? bytes.data() + offset : nullptr;
}
