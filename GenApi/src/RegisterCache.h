// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <map>
#include <utility>
#include <vector>

namespace NodeEngine {

class RegisterSource;

/// The bytes of one register of a device, shared by all nodes on the same address and length.
struct CacheLine
{
    int64_t address;
    std::vector<uint8_t> bytes; ///< as long as the register
    bool isValid = false; ///< the bytes are the device's, as far as anyone knows
    bool wasRead = false; ///< the bytes are what the device had once
    std::vector<RegisterSource *> users;

    int64_t length() const { return static_cast<int64_t>(bytes.size()); }
};

/// The cached registers behind one port.
class RegisterCache
{
public:
    /// Stays where it is as long as the cache lives.
    CacheLine &line(int64_t address, int64_t length);
    void invalidate();
    /// The other lines that share bytes with this one.
    std::vector<CacheLine *> overlapping(const CacheLine &line);

private:
    std::map<std::pair<int64_t, int64_t>, CacheLine> m_lines;
    int64_t m_longest = 0;
};

} // namespace NodeEngine
