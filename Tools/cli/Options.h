// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <vector>

struct Command;

/// What the user asks for.
struct Options
{
    const Command *command = nullptr; ///< null: print `text` and exit with `exitCode`
    std::vector<std::string> words; ///< the arguments of the command, in UTF-8
    std::string genicam; ///< --genicam and --allOf stand in the place of the first word
    std::string allOf;
    bool isJson = false;
    bool isDryRun = false;
    bool takesOtherModel = false;
    bool takesAll = false;
    bool withReadings = false;
    bool valueOnly = false;
    double interval = 0.5; ///< seconds
    int rounds = 0; ///< 0: without end
    double searchTime = 5.0; ///< seconds
    std::vector<std::string> producers; ///< files of GenTL producers

    std::string text;
    int exitCode = 0;

    bool namesDevices() const { return !genicam.empty() || !allOf.empty(); }

    static Options parse(int argc, char **argv);
};
