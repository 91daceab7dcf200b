// SPDX-License-Identifier: MIT
#include "Devices/SparseMemoryPort.h"

#include <algorithm>
#include <cstring>

namespace {

/// Calls `piece(page number, offset in the page, offset in the range, bytes)` for every page that a range touches.
template <class Piece>
void forEachPage(int64_t address, int64_t length, uint64_t pageSize, Piece piece)
{
    const uint64_t total = static_cast<uint64_t>(std::max<int64_t>(length, 0));
    for (uint64_t done = 0; done < total;) {
        const uint64_t place = static_cast<uint64_t>(address) + done;
        const uint64_t bytes = std::min(pageSize - place % pageSize, total - done);
        piece(place / pageSize, place % pageSize, done, bytes);
        done += bytes;
    }
}

} // namespace

void SparseMemoryPort::Read(void *buffer, int64_t address, int64_t length)
{
    const auto copy = [&](uint64_t number, uint64_t inPage, uint64_t inRange, uint64_t bytes) {
        char *destination = static_cast<char *>(buffer) + inRange;
        const auto page = m_pages.find(number);
        if (page == m_pages.end())
            std::memset(destination, 0, bytes);
        else
            std::memcpy(destination, page->second.data() + inPage, bytes);
    };
    forEachPage(address, length, PageSize, copy);
}

void SparseMemoryPort::Write(const void *buffer, int64_t address, int64_t length)
{
    const auto copy = [&](uint64_t number, uint64_t inPage, uint64_t inRange, uint64_t bytes) {
        Page &page = m_pages.try_emplace(number, Page{}).first->second;
        std::memcpy(page.data() + inPage, static_cast<const char *>(buffer) + inRange, bytes);
    };
    forEachPage(address, length, PageSize, copy);
}
