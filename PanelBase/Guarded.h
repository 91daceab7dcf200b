// SPDX-License-Identifier: MIT
#pragma once

#include <optional>
#include <string>

#include "Features/NodeGuard.h"
#include "PanelBase/HostCall.h"

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
