// SPDX-License-Identifier: MIT
#pragma once

#include <map>
#include <string>

#include <QStringList>

#include "Viewer/SettingsSource.h"

/// Copies settings to devices and into files, and remembers what came of each.
class SettingsCopy
{
public:
    struct Result
    {
        QStringList failures; ///< one for each target that did not take it
        bool isDone = false; ///< for some target
    };

    /// The settings must outlive this. Progress is shown above `window`.
    SettingsCopy(DeviceSettings &settings, QWidget *window) : m_settings(settings), m_window(window) { }

    /// Writes to a device. False when it was lost or the user has cancelled. `label` stands before its failures.
    bool toDevice(const QString &id, const std::vector<Persistence::Entry> &entries, const QString &label = {});
    /// Of a device that is left out.
    void noteNotTried(const std::vector<Persistence::Entry> &entries, const QString &label);
    /// Puts entries into a file, which has that content, and writes it. False with a sentence on failure, which it also
    /// is if the file has lines that would be lost.
    bool toFile(const QString &path, Persistence::Settings content, const std::vector<Persistence::Entry> &entries,
                QString *error);

    /// By place.
    const std::map<std::string, Result> &results() const { return m_results; }

private:
    DeviceSettings &m_settings;
    QWidget *m_window;
    std::map<std::string, Result> m_results;
};
