// SPDX-License-Identifier: MIT
#include "Devices/gentl/StackedReads.h"

#include <cstring>

#include "Devices/BlockPort.h"
#include "Devices/gentl/BoundedCall.h"

namespace {

constexpr int64_t Word = 4; // bytes

/// What is asked of the producer for one block.
struct Place
{
    Place(const RegisterBlock &block, int64_t unit)
        : skipped(static_cast<std::size_t>(block.address & (unit - 1))),
          address(static_cast<uint64_t>(block.address & ~(unit - 1))),
          bytes((skipped + block.bytes.size() + static_cast<std::size_t>(unit) - 1)
                & ~static_cast<std::size_t>(unit - 1))
    { }

    std::size_t skipped; ///< bytes before the block
    uint64_t address;
    std::vector<char> bytes;
};

/// Owns what the producer writes to, however long it takes.
struct Call
{
    ModulePort::Target target;
    std::vector<Place> places;

    /// How many were read.
    std::size_t operator()()
    {
        std::vector<GenTL::PORT_REGISTER_STACK_ENTRY> entries;
        for (Place &place : places)
            entries.push_back({place.address, place.bytes.data(), place.bytes.size()});
        std::size_t count = entries.size();
        const Producer &gentl = *target.module->producer();
        const GenTL::GC_ERROR code = gentl->GCReadPortStacked(target.handle, entries.data(), &count);
        if (code == GenTL::GC_ERR_NOT_IMPLEMENTED || count > entries.size())
            return 0;
        for (std::size_t i = 0; i < count; ++i) {
            if (entries[i].Size != places[i].bytes.size()) // it was cut short
                return i;
        }
        return count;
    }
};

} // namespace

StackedRead stackedReads(const ModulePort::Target &target, bool wantsWords, std::chrono::milliseconds limit)
{
    return [=, isHanging = false](std::vector<RegisterBlock> &blocks) mutable -> std::size_t {
        if (isHanging)
            return 0;
        const auto call = std::make_shared<Call>(Call{target, {}});
        for (const RegisterBlock &block : blocks)
            call->places.emplace_back(block, wantsWords ? Word : 1);
        const std::optional<std::size_t> read = boundedCall(limit, [call] { return (*call)(); });
        isHanging = !read;
        for (std::size_t i = 0; i < read.value_or(0); ++i)
            std::memcpy(blocks[i].bytes.data(), call->places[i].bytes.data() + call->places[i].skipped,
                        blocks[i].bytes.size());
        return read.value_or(0);
    };
}
