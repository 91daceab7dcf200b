// SPDX-License-Identifier: MIT
#pragma once

#include <optional>
#include <string>

#include "ToolPage/HostCall.h"

/// Runs `function` and returns the description of the exception that ended it, or nothing when it ran to its end.
template <class Function>
std::optional<std::string> errorOf(Function &&function)
{
    std::optional<std::string> error;
    guardNode(
        function, [&](const GenICam::GenericException &thrown) { error = thrown.GetDescription(); },
        [&](const char *message) { error = message; });
    return error;
}

/// As errorOf(), with the exception reported to the host's log as a line of `module`. True when `function` ran
/// to its end.
template <class Function>
bool guarded(const char *module, Function &&function)
{
    const std::optional<std::string> error = errorOf(function);
    if (error)
        logToHost(module, *error);
    return !error;
}
