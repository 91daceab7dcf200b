// SPDX-License-Identifier: MIT
#include <algorithm>
#include <chrono>
#include <thread>

#include <QJsonArray>

#include "Features/NodeGuard.h"
#include "Tools/cli/Places.h"
#include "Tools/cli/Records.h"

namespace {

using namespace std::chrono_literals;

constexpr auto CommandPoll = 10ms;
constexpr int MostPolls = 500;

std::optional<std::vector<Persistence::Entry>> assignmentsOf(Task &task)
{
    std::vector<Persistence::Entry> entries;
    for (const std::string &word : task.words) {
        std::optional<Persistence::Entry> entry = parseAssignment(word);
        if (!entry) {
            task.output.note(QStringLiteral("%1 is not FEATURE=VALUE").arg(textOfBytes(word)));
            return std::nullopt;
        }
        entries.push_back(std::move(*entry));
    }
    return entries;
}

GenApi::INode *nodeOf(OpenDevice &device, const Persistence::Entry &entry)
{
    return device.map().GetNode(entry.feature.c_str());
}

/// Executes a command and waits until it is done.
Persistence::Outcome executed(OpenDevice &device, GenApi::ICommand &command)
{
    const std::optional<std::string> error = errorOf([&] {
        command.Execute();
        for (int i = 0; i < MostPolls && device.goesOn() && !command.IsDone(); ++i)
            std::this_thread::sleep_for(CommandPoll);
    });
    return error ? Persistence::Outcome(Persistence::Result::Refused, *error)
                 : Persistence::Outcome(Persistence::Result::Done);
}

/// Booleans may be written as True and False.
Persistence::Entry standardText(Persistence::Entry entry, GenApi::INode *node)
{
    if (GenApi::CBooleanPtr(node).IsValid())
        std::transform(entry.value.begin(), entry.value.end(), entry.value.begin(),
                       [](char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c; });
    return entry;
}

Persistence::Outcome written(OpenDevice &device, const Persistence::Entry &entry, Selectors &selectors)
{
    GenApi::INode *node = nodeOf(device, entry);
    const GenApi::CCommandPtr command(node);
    if (!command.IsValid())
        return Persistence::applyEntry(device.map(), standardText(entry, node), selectors.of(entry));
    if (!entry.value.empty())
        return {Persistence::Result::Refused, "it is a command, which takes no value"};
    const Persistence::Outcome moved = selectors.of(entry).moveTo(entry.selection);
    return moved.isDone() ? executed(device, *command) : moved;
}

/// The entry with the value that the device has made of it.
Persistence::Entry readBack(OpenDevice &device, Persistence::Entry entry, Selectors &selectors)
{
    const Persistence::Outcome outcome = readNow(device.map(), entry, selectors);
    if (outcome.isDone())
        entry.value = outcome.found;
    return entry;
}

void noteNotTried(Task &task, const std::vector<Persistence::Entry> &entries, std::size_t from)
{
    for (std::size_t i = from; i < entries.size(); ++i)
        noteFailure(task, entries[i], Persistence::Outcome());
}

} // namespace

ExitCode setFeatures(OpenDevice &device, Task &task)
{
    const std::optional<std::vector<Persistence::Entry>> entries = assignmentsOf(task);
    if (!entries)
        return BadUsage;
    ExitCode code = Done;
    QJsonArray records;
    Selectors selectors(device.map());
    for (std::size_t i = 0; i < entries->size() && code == Done; ++i) {
        const Persistence::Entry &entry = (*entries)[i];
        const Persistence::Outcome outcome = written(device, entry, selectors);
        if (outcome.isDone()) {
            const Persistence::Entry now = readBack(device, entry, selectors);
            records.append(recordOf(now));
            if (!task.output.isJson())
                task.output.line(lineOf(now));
        } else {
            noteFailure(task, entry, outcome);
            code = outcome.result == Persistence::Result::TimedOut ? DeviceLost : NotTaken;
        }
        if (!device.goesOn())
            code = endOf(device, task);
        if (code != Done)
            noteNotTried(task, *entries, i + 1);
    }
    task.output.add({{QStringLiteral("device"), device.id()}, {QStringLiteral("written"), records}});
    const ExitCode back = selectors.putBack(task);
    return code == Done ? back : code;
}
