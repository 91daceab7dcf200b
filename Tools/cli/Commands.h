// SPDX-License-Identifier: MIT
#pragma once

#include <vector>

#include "Tools/cli/ExitCode.h"
#include "Tools/cli/OpenDevice.h"
#include "Tools/cli/Options.h"
#include "Tools/cli/Output.h"

/// What a command works with beside a device.
struct Task
{
    const Options &options;
    std::vector<std::string> words; ///< the arguments behind DEVICE
    Output &output;
};

using OpenDevices = std::vector<std::unique_ptr<OpenDevice>>;

/// A word of the command line that does something.
struct Command
{
    enum Flag : unsigned {
        Json = 1,
        DryRun = 2,
        AnyModel = 4,
        WriteAll = 8,
        Readings = 16,
        ValueOnly = 32,
        Watching = 64,
        ShowAll = 128,
        Devices = 256, ///< --genicam, --all-of, --search-time
        FilePerDevice = 512 ///< its last word is a file that it writes
    };

    const char *name;
    const char *arguments;
    const char *summary;
    const char *examples; ///< lines
    unsigned flags;
    std::size_t leastWords; ///< behind DEVICE
    std::size_t mostWords;
    /// Called for each device that was chosen.
    ExitCode (*run)(OpenDevice &device, Task &task);
    /// Called once with all that could be opened.
    ExitCode (*runOnAll)(OpenDevices devices, Task &task) = nullptr;

    /// Neither is there: the command chooses its devices itself.
    bool choosesItself() const { return !run && !runOnAll; }
};

const std::vector<Command> &commands();

ExitCode listDevices(Task &task);
ExitCode dumpFeatures(OpenDevice &device, Task &task);
ExitCode getFeatures(OpenDevice &device, Task &task);
ExitCode setFeatures(OpenDevice &device, Task &task);
ExitCode saveSettings(OpenDevice &device, Task &task);
ExitCode loadSettings(OpenDevice &device, Task &task);
ExitCode printDescription(OpenDevice &device, Task &task);
ExitCode watchFeatures(OpenDevices devices, Task &task);
/// Its sides are devices or files.
ExitCode compareSettings(Task &task);

/// The name of a file that a command writes for a device: {id} stands for its id.
QString fileFor(const OpenDevice &device, const std::string &pattern);
