// SPDX-License-Identifier: MIT
#include "Tools/cli/Places.h"

#include "Tools/SettingsLoad.h"
#include "Tools/cli/Interrupt.h"
#include "Tools/cli/Records.h"

std::optional<std::vector<Persistence::Entry>> placesOf(Task &task)
{
    std::vector<Persistence::Entry> places;
    for (const std::string &word : task.words) {
        std::optional<Persistence::Entry> place = parsePlace(word);
        if (!place) {
            task.output.note(QStringLiteral("%1 is no feature").arg(textOfBytes(word)));
            return std::nullopt;
        }
        places.push_back(std::move(*place));
    }
    return places;
}

Persistence::Outcome readNow(GenApi::INodeMap &map, const Persistence::Entry &entry, Persistence::SelectorGuard &guard)
{
    Persistence::Outcome outcome = Persistence::verifyEntry(map, entry, guard);
    outcome.isOfVerify = false;
    if (outcome.result == Persistence::Result::Differs)
        outcome.result = Persistence::Result::Done;
    return outcome;
}

void noteFailure(Task &task, const Persistence::Entry &entry, const Persistence::Outcome &outcome)
{
    task.output.note(QStringLiteral("%1: %2").arg(placeOf(entry), wordsOf(outcome)));
}

ExitCode putBack(Persistence::SelectorGuard &guard, Task &task)
{
    guard.restore();
    const std::vector<Persistence::Problem> problems = guard.takeProblems();
    for (const Persistence::Problem &problem : problems)
        task.output.note(textOfBytes(problem.text));
    return problems.empty() ? Done : NotTaken;
}

ExitCode endOf(OpenDevice &device, Task &task)
{
    if (device.isLost()) {
        task.output.note(device.lossText());
        return DeviceLost;
    }
    return Interrupt::happened() ? Interrupted : Done;
}
