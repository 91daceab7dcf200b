// SPDX-License-Identifier: MIT
#pragma once

#include <optional>
#include <vector>

#include <GenApi/PersistenceDevice.h>

#include "Tools/cli/Commands.h"

/// The features that the words of a task name; nothing, and a note, if one is no name.
std::optional<std::vector<Persistence::Entry>> placesOf(Task &task);
/// The selectors of a device while features are accessed one after the other: each finds those of its place there, and
/// all others where they stood.
class Selectors
{
public:
    explicit Selectors(GenApi::INodeMap &map) : m_guard(map) { }

    /// For an access to this place.
    Persistence::SelectorGuard &of(const Persistence::Entry &entry);
    /// Puts all back; Done, or NotTaken and notes if one does not go.
    ExitCode putBack(Task &task);

private:
    Persistence::SelectorGuard m_guard;
    Persistence::Selection m_selection; ///< of the last place
};

/// The value in the device now, past all caches; it is in Outcome::found.
Persistence::Outcome readNow(GenApi::INodeMap &map, const Persistence::Entry &entry, Selectors &selectors);
/// Tells what could not be done with a feature.
void noteFailure(Task &task, const Persistence::Entry &entry, const Persistence::Outcome &outcome);
/// What the work ends with when the device does not go on.
ExitCode endOf(OpenDevice &device, Task &task);
