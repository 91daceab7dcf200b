// SPDX-License-Identifier: MIT
#pragma once

#include <optional>

#include <GenApi/PersistenceDevice.h>

#include "Tools/cli/Commands.h"

/// The settings of a device; what cannot be read is noted and leaves NotTaken in `code`. Nothing when the device is
/// lost or the user has interrupted it.
std::optional<Persistence::Settings> storedOf(OpenDevice &device, ExitCode *code, Task &task);
/// The settings of a file, - for the standard input, with the same notes. Nothing when it cannot be read.
std::optional<Persistence::Settings> settingsIn(const std::string &file, ExitCode *code, Task &task);
