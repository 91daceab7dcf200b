// SPDX-License-Identifier: MIT
#include "Tools/SettingsFile.h"
#include "Tools/SettingsStore.h"
#include "Tools/cli/Places.h"
#include "Tools/cli/Records.h"
#include "Tools/cli/Stored.h"

namespace {

bool write(const QString &file, const Persistence::Settings &settings, Task &task)
{
    QString error;
    if (file == QLatin1String("-")) {
        task.output.bytes(SettingsFile::bytes(settings));
        return true;
    }
    if (SettingsFile::write(file, settings, &error))
        return true;
    task.output.note(error);
    return false;
}

} // namespace

std::optional<Persistence::Settings> storedOf(OpenDevice &device, ExitCode *code, Task &task)
{
    Persistence::Settings settings = settingsOf(device.map(), [&device](std::size_t) { return device.goesOn(); });
    if (!device.endsWell()) {
        *code = endOf(device, task);
        return std::nullopt;
    }
    if (isCutShort(settings)) {
        task.output.note(QStringLiteral("%1 does not answer").arg(device.id()));
        *code = DeviceLost;
        return std::nullopt;
    }
    for (const Persistence::Problem &problem : settings.problems) {
        task.output.note(textOfBytes(problem.text));
        *code = problem.severity == Persistence::Severity::Error ? NotTaken : *code;
    }
    return settings;
}

ExitCode saveSettings(OpenDevice &device, Task &task)
{
    ExitCode code = Done;
    const std::optional<Persistence::Settings> settings = storedOf(device, &code, task);
    if (!settings)
        return code;
    if (settings->entries.empty())
        task.output.note(QStringLiteral("%1 has no settings: the file is empty").arg(device.id()));
    return write(fileFor(device, task.words.front()), *settings, task) ? code : FileFailed;
}
