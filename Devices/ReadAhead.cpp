// SPDX-License-Identifier: MIT
#include "Devices/ReadAhead.h"

#include <algorithm>
#include <vector>

#include "Devices/BlockPort.h"
#include "Devices/NeededRegisters.h"
#include "Devices/SilenceGuard.h"
#include "Features/NodeGuard.h"

namespace {

/// In bytes: one access of GigE Vision (READMEM takes 536 at most).
constexpr int64_t LongestBlock = 512;

/// Lets the port keep what it reads, for a scope.
class Keeping
{
public:
    explicit Keeping(BlockPort &port) : m_port(port) { m_port.setKeeping(true); }
    ~Keeping() { m_port.setKeeping(false); }
    Keeping(const Keeping &) = delete;
    Keeping &operator=(const Keeping &) = delete;

private:
    BlockPort &m_port;
};

class Reading
{
public:
    Reading(GenApi::INodeMap &map, BlockPort &port, const std::atomic_bool &cancelled, const ReadProgress &progress)
        : m_needed(map), m_port(port), m_cancelled(cancelled), m_progress(progress)
    { }

    void run()
    {
        const Keeping keeping(m_port);
        std::vector<NeededRegister> round = m_needed.nextRound();
        while (!round.empty() && !m_cancelled) {
            readRound(round);
            round = m_needed.nextRound();
        }
        if (!m_cancelled)
            tell(m_needed.mostCount());
    }

private:
    using Place = std::vector<NeededRegister>::const_iterator;

    void readRound(std::vector<NeededRegister> &registers)
    {
        std::sort(registers.begin(), registers.end(),
                  [](const NeededRegister &one, const NeededRegister &other) { return one.address < other.address; });
        for (Place place = registers.begin(); place != registers.end() && !m_cancelled;)
            place = readBlock(place, registers.end());
    }

    /// Reads the registers from `first` on that lie in one block, and returns the one behind.
    Place readBlock(Place first, Place end)
    {
        int64_t length = first->length;
        Place behind = first + 1;
        for (; behind != end; ++behind) {
            // Of addresses that a wrong description may put anywhere.
            const uint64_t distance = static_cast<uint64_t>(behind->address) - static_cast<uint64_t>(first->address);
            if (distance > static_cast<uint64_t>(length)) // there is a gap
                break;
            const int64_t longer = std::max(length, static_cast<int64_t>(distance) + behind->length);
            if (longer > LongestBlock)
                break;
            length = longer;
        }
        if (length > first->length) // where that is refused, the nodes read one by one
            guardSilence([&] { m_port.fetch(first->address, length); });
        for (Place one = first; one != behind && !m_cancelled; ++one)
            fill(*one);
        return behind;
    }

    /// Lets the node read its register, into its cache.
    void fill(const NeededRegister &one)
    {
        std::vector<uint8_t> bytes(static_cast<std::size_t>(one.length));
        guardSilence([&] { GenApi::CRegisterPtr(one.node)->Get(bytes.data(), one.length); });
        tell(++m_done);
    }

    void tell(int done) const
    {
        if (m_progress)
            m_progress(done, m_needed.mostCount());
    }

    NeededRegisters m_needed;
    BlockPort &m_port;
    const std::atomic_bool &m_cancelled;
    const ReadProgress &m_progress;
    int m_done = 0;
};

} // namespace

void readAhead(GenApi::INodeMap &map, BlockPort &port, const std::atomic_bool &cancelled, const ReadProgress &progress)
{
    guardNode([&] { Reading(map, port, cancelled, progress).run(); });
}
