// SPDX-License-Identifier: MIT
#pragma once

#include <QtGlobal>

class QCoreApplication;

/// What the command line says.
struct SoakOptions
{
    int seconds = 60;
    int steps = 0; ///< 0: as many as the time allows
    int cycles = 0; ///< 0: a run of many deeds
    quint64 seed = 0; ///< a new one unless given
    int bound = 0; ///< of an event, in ms
    bool network = false;

    /// Explains itself and ends the program for `--help` and for what it does not understand.
    static SoakOptions parse(const QCoreApplication &application);
};
