// SPDX-License-Identifier: MIT
#pragma once

#include <optional>
#include <vector>

#include <GenApi/PersistenceDevice.h>

#include "Tools/cli/Commands.h"

/// The features that the words of a task name; nothing, and a note, if one is no name.
std::optional<std::vector<Persistence::Entry>> placesOf(Task &task);
/// The value in the device now, past all caches; it is in Outcome::found.
Persistence::Outcome readNow(GenApi::INodeMap &map, const Persistence::Entry &entry, Persistence::SelectorGuard &guard);
/// Tells what could not be done with a feature.
void noteFailure(Task &task, const Persistence::Entry &entry, const Persistence::Outcome &outcome);
/// Puts the selectors back; Done, or NotTaken and notes if one does not go.
ExitCode putBack(Persistence::SelectorGuard &guard, Task &task);
/// What the work ends with when the device does not go on.
ExitCode endOf(OpenDevice &device, Task &task);
