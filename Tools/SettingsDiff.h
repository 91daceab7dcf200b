// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <vector>

#include <QString>

#include <GenApi/PersistenceFile.h>

/// Two collections of settings, of files or of devices, side by side.
class SettingsDiff
{
public:
    enum class State { Equal, Differs, OnlyLeft, OnlyRight };

    /// One setting: a feature at one position of its selectors.
    struct Row
    {
        QString feature;
        QString position; ///< "GainSelector=Red", empty for a feature that is not selected
        QString left; ///< as text of the file; empty where there is none
        QString right;
        State state = State::Equal;
        const Persistence::Entry *leftEntry = nullptr; ///< of the settings given; null where there is none
        const Persistence::Entry *rightEntry = nullptr;
    };

    /// Both must outlive this. A setting that stands there several times counts with its last value. The rows are in
    /// the order of `left`; those of `right` alone stand behind the one that is in front of them there.
    SettingsDiff(const Persistence::Settings &left, const Persistence::Settings &right);

    const std::vector<Row> &rows() const { return m_rows; }
    std::size_t count(State state) const;
    bool isEqual() const { return count(State::Equal) == m_rows.size(); }

private:
    std::vector<Row> m_rows;
};

/// Whether two texts stand for the same value. Nothing tells of which kind a setting is: texts that differ are equal
/// if both are whole numbers, decimal or 0x, or both are decimal numbers with or without exponent, of the same value
/// and written as short as that goes. So 16 is 0x10 and 1e+06 is 1000000, but 1.10 and 007 are other texts than 1.1
/// and 7.
bool isSameSettingText(const std::string &left, const std::string &right);

/// How many settings are left out.
std::size_t errorsIn(const Persistence::Settings &settings);

/// The settings without those that a later one replaces, in their order.
std::vector<const Persistence::Entry *> lastEntries(const std::vector<Persistence::Entry> &entries);
