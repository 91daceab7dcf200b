// SPDX-License-Identifier: MIT
#include "RegisterCache.h"

#include <algorithm>
#include <limits>

namespace NodeEngine {

CacheLine &RegisterCache::line(int64_t address, int64_t length)
{
    const auto [found, isNew] = m_lines.try_emplace({address, length});
    if (isNew) {
        found->second.address = address;
        found->second.bytes.resize(static_cast<std::size_t>(length));
        m_longest = std::max(m_longest, length);
    }
    return found->second;
}

void RegisterCache::invalidate()
{
    for (auto &[place, line] : m_lines)
        line.isValid = false;
}

std::vector<CacheLine *> RegisterCache::overlapping(const CacheLine &line)
{
    std::vector<CacheLine *> lines;
    const int64_t lowest = std::numeric_limits<int64_t>::min();
    const int64_t first = line.address < lowest + m_longest ? lowest : line.address - m_longest;
    for (auto it = m_lines.lower_bound({first, 0}); it != m_lines.end(); ++it) {
        CacheLine &other = it->second;
        // Differences of unsigned addresses, so nothing overflows.
        const uint64_t gap = static_cast<uint64_t>(other.address) - static_cast<uint64_t>(line.address);
        if (other.address >= line.address && gap >= static_cast<uint64_t>(line.length()))
            break;
        const bool reaches = other.address >= line.address || ~gap + 1 < static_cast<uint64_t>(other.length());
        if (reaches && &other != &line)
            lines.push_back(&other);
    }
    return lines;
}

} // namespace NodeEngine
