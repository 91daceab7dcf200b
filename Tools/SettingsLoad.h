// SPDX-License-Identifier: MIT
#pragma once

#include <functional>
#include <vector>

#include <QString>
#include <QStringList>

#include <GenApi/PersistenceDevice.h>

/// What a device or its layer says about a setting that did not take, for a table or a log, in the language of the
/// program as far as the words are not the device's own; empty for what did.
QString wordsOf(const Persistence::Outcome &outcome);

/// A file's way into a device: what it would change, the choice of what shall be changed, the writing, and what came of
/// it. All calls are made on the thread of the node map, which the caller keeps from others meanwhile. Whatever
/// happens, the selectors stand as before (or as the file wants them) when a call has ended.
class SettingsLoad
{
public:
    /// How the device's value compares with that of the file.
    enum class Now {
        Unasked, ///< compare() was not called, or ended before
        Same,
        Differs,
        Unknown ///< it cannot be read now; that does not mean that it cannot be written
    };
    struct Row
    {
        QString feature;
        QString position; ///< "GainSelector=Red", empty for a feature that is not selected
        QString present; ///< value in the device before
        QString wanted; ///< value in the file
        QString unreadable; ///< the device's own words why it is Now::Unknown
        Now now = Now::Unasked;
        bool isChosen = true;
        bool isWritten = false; ///< the device took it; it may have changed it all the same, see `outcome`
        /// The last thing that happened; Result::NotTried for rows that were not written and not verified.
        Persistence::Outcome outcome;

        bool isToBeWritten() const { return isChosen && now != Now::Same; }
    };

    enum class Phase { Comparing, Writing, Verifying };
    struct Progress
    {
        Phase phase;
        std::size_t done; ///< of `total`
        std::size_t total;
        const Row &row; ///< the one that was accessed; `isWritten` and `outcome` are of this access
        const Persistence::Entry &entry; ///< for WriteLog
    };
    /// Told after each access to a setting, on the thread of the call. False ends the call: nothing more is tried.
    using Step = std::function<bool(const Progress &)>;

    enum class End {
        Complete,
        Cancelled, ///< by a step
        Lost ///< the device does not answer any more
    };
    using Ranks = std::vector<std::size_t>;

    /// A setting that stands several times in the file has one row, with its last value.
    explicit SettingsLoad(Persistence::Settings file);

    const Persistence::Settings &file() const { return m_file; }
    const std::vector<Row> &rows() const { return m_rows; }
    /// The setting of a row.
    const Persistence::Entry &entry(std::size_t row) const { return m_entries[row]; }
    void choose(std::size_t row, bool isChosen) { m_rows[row].isChosen = isChosen; }

    /// "vendor model" of the file and of a device when they are of different models, both known: the caller asks
    /// before it goes on.
    struct Models
    {
        QString file;
        QString device;
        bool isSame = true;
    };
    Models models(GenApi::INodeMap &map) const;

    /// Reads the present values of all rows. Optional: without it all chosen rows are written, whatever the device has.
    End compare(GenApi::INodeMap &map, const Step &step = {});
    /// Writes the chosen rows beside those that the device has already, those that are refused again until nothing
    /// changes any more. Then verifies them, and, when anything was written, those that it had already; what these
    /// have lost is written again. A device that does not answer any more ends it.
    End apply(GenApi::INodeMap &map, const Step &step = {});

    /// Of rows that apply() has tried and that did not take: the device's own words. Empty for others.
    QString complaint(std::size_t row) const;
    /// Ranks of the rows that did not take.
    Ranks refused() const;
    /// Ranks of the rows that were written, refused or not in the end.
    Ranks written() const;
    /// Ranks of the rows that should have been written when apply() ended early.
    Ranks notTried() const;
    /// Selectors that could not be put back, at the last call.
    QStringList problems() const { return m_problems; }

private:
    class Run;

    template <class Predicate>
    Ranks ranksOf(Predicate predicate) const;

    const Persistence::Settings m_file;
    std::vector<Persistence::Entry> m_entries; ///< of the rows
    std::vector<Row> m_rows;
    QStringList m_problems;
};
