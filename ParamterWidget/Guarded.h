// SPDX-License-Identifier: MIT
#pragma once

#include <exception>
#include <optional>
#include <string>
#include <utility>

#include <GenApi/GenApi.h>

#include "ParamterWnd/HostCore.h"

/// Runs `function` and returns the description of the exception that ended it, or nothing when it ran to its
/// end. The one place where exceptions of GenICam (which are not std::exception) and of hosts are caught.
template <class Function>
std::optional<std::string> errorOf(Function &&function)
{
    try {
        std::forward<Function>(function)();
        return std::nullopt;
    } catch (const GenICam::GenericException &error) {
        return error.GetDescription();
    } catch (const std::exception &error) {
        return error.what();
    } catch (...) {
        return "unknown exception";
    }
}

/// As errorOf(), with the exception reported to the host's log as a line of `module`. True when `function` ran
/// to its end.
template <class Function>
bool guarded(const char *module, Function &&function)
{
    const std::optional<std::string> error = errorOf(std::forward<Function>(function));
    if (error)
        errorOf([&] { HostCore::VLogInfo(module, *error, 0); });
    return !error;
}
