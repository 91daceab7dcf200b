// SPDX-License-Identifier: MIT
#pragma once

/// What the program tells its caller. Documented in docs/settings.md and in its help.
enum ExitCode : int {
    Done = 0,
    Different = 1, ///< compare: there are differences
    BadUsage = 2,
    NoDevice = 3, ///< unknown, or it cannot be opened
    NotTaken = 4, ///< some settings could not be read or written
    FileFailed = 5, ///< a file or the output cannot be read or written
    DeviceLost = 6, ///< in the middle of the work
    OtherModel = 7, ///< the file is of another model
    Interrupted = 130
};
