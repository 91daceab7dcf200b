// SPDX-License-Identifier: MIT
#include <GenApi/PersistenceDevice.h>

#include "Guarded.h"

#include <algorithm>
#include <iterator>
#include <numeric>
#include <unordered_map>
#include <unordered_set>

namespace Persistence {

namespace {

class Load
{
public:
    Load(GenApi::INodeMap &map, const std::vector<Entry> &entries, const LoadOptions &options)
        : m_map(map), m_entries(entries), m_options(options), m_outcomes(entries.size()), m_isLast(entries.size()),
          m_guard(map)
    {
        std::unordered_set<std::string> known;
        for (std::size_t i = entries.size(); i-- > 0;)
            m_isLast[i] = known.insert(entries[i].place()).second;
    }

    LoadReport run()
    {
        Indices due(m_entries.size());
        std::iota(due.begin(), due.end(), std::size_t(0));
        repeatWhileItShrinks(due, [this](const Indices &now) {
            writeUntilNothingChanges(now);
            if (m_options.verify && !m_isStopped)
                verify(now);
            return std::any_of(now.begin(), now.end(),
                               [this](std::size_t i) { return m_outcomes[i].result == Result::Differs; });
        });
        return {std::move(m_outcomes), m_guard.takeProblems()};
    }

private:
    using Indices = std::vector<std::size_t>;

    void writeUntilNothingChanges(Indices due)
    {
        const StreamingScope streaming(m_map, StreamingScope::Direction::Load);
        repeatWhileItShrinks(due, [this](const Indices &now) {
            for (std::size_t i : now) {
                if (!m_isStopped)
                    take(i, applyEntry(m_map, m_entries[i], m_guard));
            }
            return true;
        });
        m_guard.restore();
    }

    /// Every turn but the last one settles an entry at least. A turn that returns false is the last one.
    template <class Turn>
    void repeatWhileItShrinks(Indices &due, Turn turn)
    {
        std::size_t before = due.size() + 1;
        while (!due.empty() && due.size() < before && !m_isStopped) {
            before = due.size();
            if (!turn(due))
                return;
            due.erase(std::remove_if(due.begin(), due.end(), [this](std::size_t i) { return !isWorthARetry(i); }),
                      due.end());
        }
    }

    void verify(const Indices &written)
    {
        Indices due;
        std::copy_if(written.begin(), written.end(), std::back_inserter(due),
                     [this](std::size_t i) { return m_outcomes[i].isDone() && m_isLast[i]; });
        for (std::size_t i : groupedBySelection(m_entries, due)) {
            if (!m_isStopped)
                take(i, verifyEntry(m_map, m_entries[i], m_guard));
        }
        m_guard.restore();
    }

    void take(std::size_t i, Outcome outcome)
    {
        m_silence.note(outcome);
        m_outcomes[i] = std::move(outcome);
        m_isStopped = (m_options.step && !m_options.step(i, m_outcomes[i])) || m_silence.isLasting();
    }

    bool isWorthARetry(std::size_t i) const
    {
        const Result result = m_outcomes[i].result;
        return result != Result::Done && result != Result::NotFound && m_isLast[i];
    }

    GenApi::INodeMap &m_map;
    const std::vector<Entry> &m_entries;
    const LoadOptions &m_options;
    std::vector<Outcome> m_outcomes;
    std::vector<bool> m_isLast; // no entry behind it is of the same setting
    SelectorGuard m_guard;
    Silence m_silence;
    bool m_isStopped = false;
};

} // namespace

std::vector<std::size_t> groupedBySelection(const std::vector<Entry> &entries, const std::vector<std::size_t> &ranks)
{
    std::unordered_map<std::string, std::size_t> known{{std::string(), 0}};
    std::vector<std::vector<std::size_t>> groups(1);
    for (std::size_t rank : ranks) {
        const auto [group, isNew] = known.try_emplace(fileText(entries[rank].selection), groups.size());
        if (isNew)
            groups.emplace_back();
        groups[group->second].push_back(rank);
    }
    std::vector<std::size_t> all;
    for (const std::vector<std::size_t> &group : groups)
        all.insert(all.end(), group.begin(), group.end());
    return all;
}

LoadReport loadEntries(GenApi::INodeMap &map, const std::vector<Entry> &entries, const LoadOptions &options)
{
    return Load(map, entries, options).run();
}

} // namespace Persistence
