// SPDX-License-Identifier: MIT
#include "Tools/SettingsLoad.h"

#include <algorithm>
#include <numeric>
#include <utility>

#include <QCoreApplication>

#include "Tools/BytesText.h"
#include "Tools/SettingsDiff.h"

namespace {

constexpr int MostTimeouts = 3; // in a row

QString modelText(const Persistence::DeviceInfo &device)
{
    return textOfBytes(device.vendor + ' ' + device.model).trimmed();
}

SettingsLoad::Now nowOf(const Persistence::Outcome &outcome)
{
    switch (outcome.result) {
    case Persistence::Result::Done:
        return SettingsLoad::Now::Same;
    case Persistence::Result::Differs:
        return SettingsLoad::Now::Differs;
    default:
        return SettingsLoad::Now::Unknown;
    }
}

SettingsLoad::Row rowOf(const Persistence::Entry &entry)
{
    SettingsLoad::Row row;
    row.feature = textOfBytes(entry.feature);
    row.position = textOfBytes(displayText(entry.selection));
    row.wanted = textOfBytes(entry.value);
    return row;
}

} // namespace

QString wordsOf(const Persistence::Outcome &outcome)
{
    const QString reason = textOfBytes(outcome.reason);
    if (!outcome.selector.empty())
        return QStringLiteral("%1: %2").arg(textOfBytes(outcome.selector), reason);
    switch (outcome.result) {
    case Persistence::Result::Done:
        return {};
    case Persistence::Result::NotTried:
        return QCoreApplication::translate("SettingsLoad", "not tried");
    case Persistence::Result::NotFound:
        return QCoreApplication::translate("SettingsLoad", "the device has no such feature");
    case Persistence::Result::Differs:
        return QCoreApplication::translate("SettingsLoad", "written, but it reads back as '%1'")
            .arg(textOfBytes(outcome.found));
    default:
        return outcome.isOfVerify
            ? QCoreApplication::translate("SettingsLoad", "written, but it cannot be read back: %1").arg(reason)
            : reason;
    }
}

/// One call of compare() or apply().
class SettingsLoad::Run
{
public:
    Run(SettingsLoad &load, GenApi::INodeMap &map, const Step &step) : m_load(load), m_map(map), m_step(step) { }

    End compare()
    {
        Ranks all(m_load.m_rows.size());
        std::iota(all.begin(), all.end(), std::size_t(0));
        visit(all, Phase::Comparing, [](Row &row) {
            row.now = nowOf(row.outcome);
            row.present = textOfBytes(row.outcome.found);
            row.unreadable = row.now == Now::Unknown ? wordsOf(row.outcome) : QString();
        });
        return end();
    }

    End apply()
    {
        const Ranks due = ranks([](const Row &row) { return row.isToBeWritten(); });
        write(due);
        if (m_isEnded || m_load.written().empty())
            return end();
        const Ranks same = ranks([](const Row &row) { return row.isChosen && row.now == Now::Same; });
        visit(same, Phase::Verifying, [](Row &) {});
        if (!m_isEnded)
            write(ranks([](const Row &row) {
                return row.isChosen && row.now == Now::Same && row.outcome.result == Persistence::Result::Differs;
            }));
        return end();
    }

private:
    template <class Predicate>
    Ranks ranks(Predicate predicate) const
    {
        return m_load.ranksOf(predicate);
    }

    End end() const
    {
        if (!m_isEnded)
            return End::Complete;
        return m_timeouts >= MostTimeouts ? End::Lost : End::Cancelled;
    }

    /// Reads the rows and compares them with the file.
    template <class Take>
    void visit(const Ranks &due, Phase phase, Take take)
    {
        Persistence::SelectorGuard guard(m_map);
        std::size_t done = 0;
        for (std::size_t rank : Persistence::groupedBySelection(m_load.m_entries, due)) {
            if (m_isEnded)
                break;
            Row &row = m_load.m_rows[rank];
            row.outcome = Persistence::verifyEntry(m_map, m_load.m_entries[rank], guard);
            take(row);
            tell(phase, ++done, due.size(), rank);
        }
        guard.restore();
        takeProblems(guard.takeProblems());
    }

    void write(const Ranks &due)
    {
        if (due.empty())
            return;
        std::vector<Persistence::Entry> entries;
        for (std::size_t rank : due)
            entries.push_back(m_load.m_entries[rank]);
        std::size_t written = 0;
        std::size_t verified = 0;
        Persistence::LoadOptions options;
        options.step = [&](std::size_t i, const Persistence::Outcome &outcome) {
            Row &row = m_load.m_rows[due[i]];
            row.outcome = outcome;
            row.isWritten |= outcome.isDone() && !outcome.isOfVerify;
            const Phase phase = outcome.isOfVerify ? Phase::Verifying : Phase::Writing;
            std::size_t &done = outcome.isOfVerify ? verified : written;
            done = std::min(done + 1, due.size()); // what is tried again counts once
            tell(phase, done, due.size(), due[i]);
            return !m_isEnded;
        };
        Persistence::LoadReport report = Persistence::loadEntries(m_map, entries, options);
        for (std::size_t i = 0; i < due.size(); ++i)
            m_load.m_rows[due[i]].outcome = std::move(report.outcomes[i]);
        takeProblems(report.problems);
    }

    void tell(Phase phase, std::size_t done, std::size_t total, std::size_t rank)
    {
        const Row &row = m_load.m_rows[rank];
        m_timeouts = row.outcome.result == Persistence::Result::TimedOut ? m_timeouts + 1 : 0;
        const bool goesOn = !m_step || m_step({phase, done, total, row, m_load.m_entries[rank]});
        m_isEnded = !goesOn || m_timeouts >= MostTimeouts;
    }

    void takeProblems(const std::vector<Persistence::Problem> &problems)
    {
        for (const Persistence::Problem &problem : problems)
            m_load.m_problems += textOfBytes(problem.text);
    }

    SettingsLoad &m_load;
    GenApi::INodeMap &m_map;
    const Step &m_step;
    int m_timeouts = 0;
    bool m_isEnded = false;
};

SettingsLoad::SettingsLoad(Persistence::Settings file) : m_file(std::move(file))
{
    for (const Persistence::Entry *entry : lastEntries(m_file.entries)) {
        m_entries.push_back(*entry);
        m_rows.push_back(rowOf(*entry));
    }
}

SettingsLoad::Models SettingsLoad::models(GenApi::INodeMap &map) const
{
    const Persistence::DeviceInfo device = Persistence::deviceInfo(map);
    const bool isKnown = !m_file.device.model.empty() && !device.model.empty();
    const bool isSame = m_file.device.model == device.model && m_file.device.vendor == device.vendor;
    return {modelText(m_file.device), modelText(device), !isKnown || isSame};
}

SettingsLoad::End SettingsLoad::compare(GenApi::INodeMap &map, const Step &step)
{
    m_problems.clear();
    const End end = Run(*this, map, step).compare();
    for (Row &row : m_rows)
        row.outcome = {};
    return end;
}

SettingsLoad::End SettingsLoad::apply(GenApi::INodeMap &map, const Step &step)
{
    m_problems.clear();
    for (Row &row : m_rows) {
        row.outcome = {};
        row.isWritten = false;
    }
    return Run(*this, map, step).apply();
}

QString SettingsLoad::complaint(std::size_t row) const
{
    return m_rows[row].outcome.result == Persistence::Result::NotTried ? QString() : wordsOf(m_rows[row].outcome);
}

template <class Predicate>
SettingsLoad::Ranks SettingsLoad::ranksOf(Predicate predicate) const
{
    Ranks found;
    for (std::size_t i = 0; i < m_rows.size(); ++i) {
        if (predicate(m_rows[i]))
            found.push_back(i);
    }
    return found;
}

SettingsLoad::Ranks SettingsLoad::refused() const
{
    return ranksOf(
        [](const Row &row) { return !row.outcome.isDone() && row.outcome.result != Persistence::Result::NotTried; });
}

SettingsLoad::Ranks SettingsLoad::written() const
{
    return ranksOf([](const Row &row) { return row.isWritten; });
}

SettingsLoad::Ranks SettingsLoad::notTried() const
{
    return ranksOf(
        [](const Row &row) { return row.isToBeWritten() && row.outcome.result == Persistence::Result::NotTried; });
}
