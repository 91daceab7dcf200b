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
constexpr std::size_t MostStacked = 64; // blocks, so that it does not take long and can be cancelled

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
    Reading(GenApi::INodeMap &map, BlockPort &port, const std::atomic_bool &cancelled, const ReadProgress &progress,
            const StackedRead &stacked)
        : m_needed(map), m_port(port), m_cancelled(cancelled), m_progress(progress), m_stacked(stacked)
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

    /// Registers that lie in one block.
    struct Run
    {
        Place begin;
        Place end;
        int64_t length; ///< bytes
    };

    void readRound(std::vector<NeededRegister> &registers)
    {
        std::sort(registers.begin(), registers.end(),
                  [](const NeededRegister &one, const NeededRegister &other) { return one.address < other.address; });
        std::vector<Run> runs;
        for (Place place = registers.begin(); place != registers.end(); place = runs.back().end)
            runs.push_back(runFrom(place, registers.end()));
        for (std::size_t i = stackedRuns(runs); i < runs.size() && !m_cancelled; ++i) {
            // Where a block is refused, the nodes read one by one.
            if (runs[i].length > runs[i].begin->length)
                guardSilence([&] { m_port.fetch(runs[i].begin->address, runs[i].length); });
            fill(runs[i]);
        }
    }

    /// The registers from `first` on that lie in one block.
    static Run runFrom(Place first, Place end)
    {
        Run run{first, first + 1, first->length};
        for (; run.end != end; ++run.end) {
            // Of addresses that a wrong description may put anywhere.
            const uint64_t distance = static_cast<uint64_t>(run.end->address) - static_cast<uint64_t>(first->address);
            if (distance > static_cast<uint64_t>(run.length)) // there is a gap
                break;
            const int64_t longer = std::max(run.length, static_cast<int64_t>(distance) + run.end->length);
            if (longer > LongestBlock)
                break;
            run.length = longer;
        }
        return run;
    }

    /// Reads runs at once, and returns how many: the rest is refused.
    std::size_t stackedRuns(const std::vector<Run> &runs)
    {
        std::size_t done = 0;
        bool isRefused = !m_stacked;
        while (!isRefused && done < runs.size() && !m_cancelled) {
            const std::size_t end = std::min(done + MostStacked, runs.size());
            std::vector<RegisterBlock> blocks;
            for (std::size_t i = done; i < end; ++i)
                blocks.push_back({runs[i].begin->address, std::vector<char>(static_cast<std::size_t>(runs[i].length))});
            const std::size_t read = m_stacked(blocks);
            isRefused = read < blocks.size();
            for (std::size_t i = 0; i < read; ++i) {
                m_port.keep(std::move(blocks[i]));
                fill(runs[done + i]);
            }
            done += read;
        }
        return done;
    }

    void fill(const Run &run)
    {
        for (Place one = run.begin; one != run.end && !m_cancelled; ++one)
            fill(*one);
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
    const StackedRead &m_stacked;
    int m_done = 0;
};

} // namespace

void readAhead(GenApi::INodeMap &map, BlockPort &port, const std::atomic_bool &cancelled, const ReadProgress &progress,
               const StackedRead &stacked)
{
    guardNode([&] { Reading(map, port, cancelled, progress, stacked).run(); });
}
