// SPDX-License-Identifier: MIT
#include "Viewer/SettingsCopy.h"

#include <algorithm>
#include <utility>

#include "Tools/SettingsDiff.h"
#include "Tools/SettingsFile.h"
#include "Tools/SettingsLoad.h"
#include "Viewer/DeviceSettings.h"

bool SettingsCopy::toDevice(const QString &id, const std::vector<Persistence::Entry> &entries, const QString &label)
{
    Persistence::Settings wanted;
    wanted.entries = entries;
    SettingsLoad load(std::move(wanted));
    const SettingsLoad::End end = m_settings.apply(load, id, m_window);
    for (std::size_t row = 0; row < load.rows().size(); ++row) {
        const Persistence::Outcome &outcome = load.rows()[row].outcome;
        Result &result = m_results[load.entry(row).place()];
        const QString words = wordsOf(outcome);
        if (outcome.isDone())
            result.isDone = true;
        else
            result.failures << (label.isEmpty() ? words : QStringLiteral("%1: %2").arg(label, words));
    }
    return end == SettingsLoad::End::Complete;
}

void SettingsCopy::noteNotTried(const std::vector<Persistence::Entry> &entries, const QString &label)
{
    for (const Persistence::Entry &entry : entries)
        m_results[entry.place()].failures << QStringLiteral("%1: %2").arg(label, wordsOf({}));
}

bool SettingsCopy::toFile(const QString &path, Persistence::Settings content,
                          const std::vector<Persistence::Entry> &entries, QString *error)
{
    if (errorsIn(content) > 0) {
        *error =
            DeviceSettings::tr("%1 is not written: it has lines that make no sense, which would be lost.").arg(path);
        return false;
    }
    for (const Persistence::Entry &entry : entries) {
        // Of a setting that stands there several times the last one counts.
        const auto present =
            std::find_if(content.entries.rbegin(), content.entries.rend(),
                         [&](const Persistence::Entry &other) { return other.place() == entry.place(); });
        if (present == content.entries.rend())
            content.entries.push_back(entry);
        else
            present->value = entry.value;
    }
    const bool isWritten = SettingsFile::write(path, content, error);
    for (const Persistence::Entry &entry : entries)
        m_results[entry.place()].isDone = isWritten;
    return isWritten;
}
