// SPDX-License-Identifier: MIT
#pragma once

#include <array>
#include <cstdint>
#include <unordered_map>

#include <GenApi/GenApi.h>

/// A register memory of zeros over the whole 64-bit address space that remembers what is written to it.
/// It grows with what is written; addresses wrap around. No access fails.
class SparseMemoryPort : public GenApi::IPort
{
public:
    GenApi::EAccessMode GetAccessMode() const override { return GenApi::RW; }
    void Read(void *buffer, int64_t address, int64_t length) override;
    void Write(const void *buffer, int64_t address, int64_t length) override;

private:
    static constexpr uint64_t PageSize = 256;
    using Page = std::array<char, PageSize>;

    std::unordered_map<uint64_t, Page> m_pages; ///< by number: address / pageSize; a missing page holds zeros
};
