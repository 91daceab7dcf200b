// SPDX-License-Identifier: MIT
#pragma once

#include <map>
#include <utility>
#include <vector>

#include <GenApi/GenApi.h>

/// Registers that lie side by side, as they were read.
struct RegisterBlock
{
    int64_t address = 0;
    std::vector<char> bytes;
};

/// Answers reads out of blocks that were read before, for as long as they are kept; passes everything else on.
///
/// While it keeps, whatever is read is kept too, so that no register is read twice. A write drops all blocks: it may
/// change registers anywhere.
class BlockPort : public GenApi::IPort
{
public:
    /// `target` must outlive this object.
    explicit BlockPort(GenApi::IPort &target) : m_target(target) { }

    GenApi::EAccessMode GetAccessMode() const override { return m_target.GetAccessMode(); }
    void Read(void *buffer, int64_t address, int64_t length) override;
    void Write(const void *buffer, int64_t address, int64_t length) override;

    /// From false to true, what is read from now on is kept; from true to false, all blocks are dropped.
    void setKeeping(bool keeps);
    /// Reads a block in one access and keeps it. Throws what the target throws.
    void fetch(int64_t address, int64_t length);
    /// Keeps a block that was read by other means.
    void keep(RegisterBlock block) { m_blocks[block.address] = std::move(block.bytes); }

private:
    /// The kept bytes of a range; null when they are not all in one block.
    const char *find(int64_t address, int64_t length) const;

    GenApi::IPort &m_target;
    std::map<int64_t, std::vector<char>> m_blocks; ///< by address
    bool m_keeps = false;
};
