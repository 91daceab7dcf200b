// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <type_traits>
#include <utility>

#include "Features/NodeGuard.h"
#include "ParamterWnd/HostCore.h"

/// Appends a line to the host's log. Never throws, since its callers are in the middle of handling a failure: an
/// exception of the host costs the line. The panel logs in no other way.
inline void logToHost(const char *module, const std::string &message) noexcept
{
    guardNode([&] { HostCore::VLogInfo(module, message, 0); });
}

/// Calls a function of HostCore, which may throw anything: an exception counts as a failure of that function (no text,
/// no node map, a result other than 0) and is logged as a line of `module`.
template <auto function, class... Arguments>
auto callHost(const char *module, Arguments &&...arguments)
{
    const auto logGenICam = [&](const GenICam::GenericException &error) { logToHost(module, error.GetDescription()); };
    const auto logForeign = [&](const char *error) { logToHost(module, error); };
    const auto call = [&]() -> decltype(auto) { return function(std::forward<Arguments>(arguments)...); };
    using Result = decltype(call());
    if constexpr (std::is_void_v<Result>) {
        guardNode(call, logGenICam, logForeign);
    } else {
        Result result{};
        if constexpr (std::is_same_v<Result, int>)
            result = -1;
        guardNode([&] { result = call(); }, logGenICam, logForeign);
        return result;
    }
}
