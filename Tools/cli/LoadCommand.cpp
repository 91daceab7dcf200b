// SPDX-License-Identifier: MIT
#include <QFile>
#include <QJsonArray>

#include "Tools/SettingsFile.h"
#include "Tools/SettingsLoad.h"
#include "Tools/cli/Places.h"
#include "Tools/cli/Records.h"
#include "Tools/cli/Stored.h"

namespace {

/// It can be read once, but may be asked for several times: by each device.
std::optional<Persistence::Settings> standardInput(QString *error)
{
    static std::optional<QByteArray> content;
    if (!content) {
        QFile file;
        if (!file.open(stdin, QIODevice::ReadOnly)) {
            *error = file.errorString();
            return std::nullopt;
        }
        content = file.readAll();
    }
    return SettingsFile::parse(*content, error);
}

QString stateOf(const SettingsLoad::Row &row, bool isDryRun)
{
    using Result = Persistence::Result;
    if (!row.isToBeWritten() && row.outcome.result != Result::Differs)
        return row.isWritten ? QStringLiteral("written") : QStringLiteral("same");
    if (isDryRun)
        return QStringLiteral("would be written");
    if (row.outcome.result == Result::NotTried)
        return QStringLiteral("not tried");
    return row.outcome.isDone() ? QStringLiteral("written") : QStringLiteral("refused");
}

QJsonObject rowRecord(const SettingsLoad &load, std::size_t i, bool isDryRun)
{
    const SettingsLoad::Row &row = load.rows()[i];
    QJsonObject record = recordOf(load.entry(i));
    record.insert(QStringLiteral("state"), stateOf(row, isDryRun));
    if (row.now == SettingsLoad::Now::Same || row.now == SettingsLoad::Now::Differs)
        record.insert(QStringLiteral("before"), row.present);
    if (!load.complaint(i).isEmpty())
        record.insert(QStringLiteral("reason"), load.complaint(i));
    return record;
}

void printChange(const SettingsLoad &load, std::size_t i, Task &task)
{
    const SettingsLoad::Row &row = load.rows()[i];
    const QString before = row.now == SettingsLoad::Now::Differs ? row.present : QStringLiteral("?");
    const QString what = row.isWritten || task.options.isDryRun ? QString() : QStringLiteral(" (not written)");
    task.output.line(QStringLiteral("%1: %2 -> %3%4").arg(placeOf(load.entry(i)), before, row.wanted, what));
}

void printSummary(const SettingsLoad &load, std::size_t changes, Task &task)
{
    const std::size_t all = load.rows().size();
    if (task.options.isDryRun)
        task.output.line(QStringLiteral("%1 of %2 settings would be written").arg(changes).arg(all));
    else
        task.output.line(QStringLiteral("%1 of %2 settings written, %3 did not take, %4 not tried")
                             .arg(load.written().size())
                             .arg(all)
                             .arg(load.refused().size())
                             .arg(load.notTried().size()));
}

void report(const SettingsLoad &load, OpenDevice &device, Task &task)
{
    QJsonArray records;
    std::size_t changes = 0;
    for (std::size_t i = 0; i < load.rows().size(); ++i) {
        const SettingsLoad::Row &row = load.rows()[i];
        records.append(rowRecord(load, i, task.options.isDryRun));
        if (!row.isToBeWritten() && !row.isWritten)
            continue;
        ++changes;
        if (!task.output.isJson())
            printChange(load, i, task);
    }
    for (std::size_t i : load.refused())
        task.output.note(textOfBytes(messageOf(load.entry(i), load.rows()[i].outcome)));
    for (const QString &problem : load.problems())
        task.output.note(problem);
    if (!task.output.isJson())
        printSummary(load, changes, task);
    task.output.add({{QStringLiteral("device"), device.id()}, {QStringLiteral("settings"), records}});
}

bool isForThisModel(const SettingsLoad &load, OpenDevice &device, Task &task)
{
    const SettingsLoad::Models models = load.models(device.map());
    if (models.isSame)
        return true;
    task.output.note(QStringLiteral("the file is of %1, the device is %2").arg(models.file, models.device));
    const bool isAccepted = task.options.takesOtherModel || task.options.isDryRun;
    if (!isAccepted)
        task.output.note(QStringLiteral("--other-model loads it all the same"));
    return isAccepted;
}

/// Compares and writes as far as that goes.
SettingsLoad::End run(SettingsLoad &load, OpenDevice &device, const Options &options)
{
    const SettingsLoad::Step step = [&device](const SettingsLoad::Progress &) { return device.goesOn(); };
    SettingsLoad::End end = SettingsLoad::End::Complete;
    if (!options.takesAll || options.isDryRun)
        end = load.compare(device.map(), step);
    if (end == SettingsLoad::End::Complete && !options.isDryRun)
        end = load.apply(device.map(), step);
    return end;
}

} // namespace

std::optional<Persistence::Settings> settingsIn(const std::string &file, ExitCode *code, Task &task)
{
    QString error;
    std::optional<Persistence::Settings> settings =
        file == "-" ? standardInput(&error) : SettingsFile::read(QString::fromStdString(file), &error);
    if (!settings) {
        task.output.note(error);
        *code = FileFailed;
        return std::nullopt;
    }
    for (const Persistence::Problem &problem : settings->problems) {
        task.output.note(QStringLiteral("%1: %2").arg(textOfBytes(file), textOfBytes(problem.text)));
        *code = problem.severity == Persistence::Severity::Error ? NotTaken : *code;
    }
    return settings;
}

ExitCode loadSettings(OpenDevice &device, Task &task)
{
    ExitCode code = Done;
    std::optional<Persistence::Settings> settings = settingsIn(task.words.front(), &code, task);
    if (!settings)
        return code;
    SettingsLoad load(std::move(*settings));
    if (!isForThisModel(load, device, task))
        return OtherModel;
    const SettingsLoad::End end = run(load, device, task.options);
    report(load, device, task);
    if (end != SettingsLoad::End::Complete) {
        const ExitCode why = endOf(device, task);
        return why == Done ? DeviceLost : why;
    }
    return load.refused().empty() && load.problems().isEmpty() ? code : NotTaken;
}
