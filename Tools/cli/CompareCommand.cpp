// SPDX-License-Identifier: MIT
#include <QFileInfo>
#include <QJsonArray>

#include "Tools/SettingsDiff.h"
#include "Tools/cli/DeviceChoice.h"
#include "Tools/cli/Records.h"
#include "Tools/cli/Stored.h"

namespace {

struct Side
{
    QString name;
    Persistence::Settings settings;
};

std::optional<Side> sideOf(const KnownDevice &known, ExitCode *code, Task &task)
{
    QString error;
    const std::unique_ptr<OpenDevice> device = OpenDevice::open(known.create(), &error);
    if (!device) {
        task.output.note(error);
        *code = NoDevice;
        return std::nullopt;
    }
    std::optional<Persistence::Settings> settings = storedOf(*device, code, task);
    return settings ? std::optional(Side{device->id(), std::move(*settings)}) : std::nullopt;
}

bool isFile(const std::string &word)
{
    const QString name = QString::fromStdString(word);
    if (isDescription(name))
        return false;
    return word == "-" || name.contains(QLatin1Char('/')) || QFileInfo::exists(name);
}

std::optional<Side> sideOf(const std::string &word, ExitCode *code, Task &task)
{
    if (isFile(word)) {
        std::optional<Persistence::Settings> settings = settingsIn(word, code, task);
        return settings ? std::optional(Side{textOfBytes(word), std::move(*settings)}) : std::nullopt;
    }
    QString error;
    const std::vector<KnownDevice> known = devicesNamed(word, task.options, &error);
    if (!known.empty())
        return sideOf(known.front(), code, task);
    task.output.note(error);
    *code = NoDevice;
    return std::nullopt;
}

QString stateText(SettingsDiff::State state)
{
    switch (state) {
    case SettingsDiff::State::Equal:
        return QStringLiteral("equal");
    case SettingsDiff::State::Differs:
        return QStringLiteral("differs");
    case SettingsDiff::State::OnlyLeft:
        return QStringLiteral("only left");
    case SettingsDiff::State::OnlyRight:
        break;
    }
    return QStringLiteral("only right");
}

QJsonObject differenceRecord(const SettingsDiff::Row &row)
{
    QJsonObject record = recordOf(row.leftEntry ? *row.leftEntry : *row.rightEntry);
    record.remove(QStringLiteral("value"));
    record.insert(QStringLiteral("state"), stateText(row.state));
    if (row.leftEntry)
        record.insert(QStringLiteral("left"), row.left);
    if (row.rightEntry)
        record.insert(QStringLiteral("right"), row.right);
    return record;
}

QString differenceLine(const SettingsDiff::Row &row)
{
    const QString place = placeOf(row.leftEntry ? *row.leftEntry : *row.rightEntry);
    switch (row.state) {
    case SettingsDiff::State::Equal:
        return QStringLiteral("  %1: %2").arg(place, row.left);
    case SettingsDiff::State::Differs:
        return QStringLiteral("! %1: %2 | %3").arg(place, row.left, row.right);
    case SettingsDiff::State::OnlyLeft:
        return QStringLiteral("< %1: %2").arg(place, row.left);
    case SettingsDiff::State::OnlyRight:
        break;
    }
    return QStringLiteral("> %1: %2").arg(place, row.right);
}

ExitCode compared(const Side &left, const Side &right, Task &task)
{
    const SettingsDiff diff(left.settings, right.settings);
    QJsonArray records;
    for (const SettingsDiff::Row &row : diff.rows()) {
        if (row.state == SettingsDiff::State::Equal && !task.options.takesAll)
            continue;
        records.append(differenceRecord(row));
        if (!task.output.isJson())
            task.output.line(differenceLine(row));
    }
    task.output.add({{QStringLiteral("left"), left.name},
                     {QStringLiteral("right"), right.name},
                     {QStringLiteral("isEqual"), diff.isEqual()},
                     {QStringLiteral("settings"), records}});
    return diff.isEqual() ? Done : Different;
}

/// The left sides that the options or the first word name.
std::vector<Side> leftSides(ExitCode *code, Task &task)
{
    std::vector<Side> sides;
    const auto take = [&sides](std::optional<Side> side) {
        if (side)
            sides.push_back(std::move(*side));
    };
    if (!task.options.namesDevices()) {
        take(sideOf(task.words.front(), code, task));
        return sides;
    }
    QString error;
    for (const KnownDevice &known : devicesOfOptions(task.options, &error))
        take(sideOf(known, code, task));
    if (!error.isEmpty()) {
        task.output.note(error);
        *code = NoDevice;
    }
    return sides;
}

} // namespace

ExitCode compareSettings(Task &task)
{
    ExitCode trouble = Done;
    const std::vector<Side> left = leftSides(&trouble, task);
    const std::optional<Side> right = left.empty() ? std::nullopt : sideOf(task.words.back(), &trouble, task);
    if (!right)
        return trouble;
    ExitCode code = Done;
    for (const Side &side : left) {
        if (!task.options.allOf.empty() && !task.output.isJson())
            task.output.line(QStringLiteral("# ") + side.name);
        code = std::max(code, compared(side, *right, task));
    }
    return trouble == Done ? code : trouble;
}
