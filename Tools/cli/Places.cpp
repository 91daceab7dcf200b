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

Persistence::SelectorGuard &Selectors::of(const Persistence::Entry &entry)
{
    if (entry.selection != m_selection)
        m_guard.restore();
    m_selection = entry.selection;
    return m_guard;
}

ExitCode Selectors::putBack(Task &task)
{
    m_guard.restore();
    const std::vector<Persistence::Problem> problems = m_guard.takeProblems();
    for (const Persistence::Problem &problem : problems)
        task.output.note(textOfBytes(problem.text));
    return problems.empty() ? Done : NotTaken;
}

Persistence::Outcome readNow(GenApi::INodeMap &map, const Persistence::Entry &entry, Selectors &selectors)
{
    Persistence::Outcome outcome = Persistence::verifyEntry(map, entry, selectors.of(entry));
    outcome.isOfVerify = false;
    if (outcome.result == Persistence::Result::Differs)
        outcome.result = Persistence::Result::Done;
    return outcome;
}

void noteFailure(Task &task, const Persistence::Entry &entry, const Persistence::Outcome &outcome)
{
    task.output.note(QStringLiteral("%1: %2").arg(placeOf(entry), wordsOf(outcome)));
}

ExitCode endOf(OpenDevice &device, Task &task)
{
    if (device.isLost()) {
        task.output.note(device.lossText());
        return DeviceLost;
    }
    return Interrupt::happened() ? Interrupted : Done;
}
