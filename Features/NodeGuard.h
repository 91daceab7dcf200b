// SPDX-License-Identifier: MIT
#pragma once

#include <exception>
#include <optional>
#include <string>

#include <QString>

#include <GenApi/GenApi.h>

/// Runs `access`, which touches nodes, and lets nothing that it throws out: a GenICam exception goes to `onGenICam`,
/// the text of any other one to `onForeign` (a failing port may throw anything through a node). True if nothing
/// was thrown. The one place where exceptions of nodes are caught.
template <class Access, class OnGenICam, class OnForeign>
bool guardNode(Access access, OnGenICam onGenICam, OnForeign onForeign)
{
    try {
        access();
        return true;
    } catch (const GenICam::GenericException &error) {
        onGenICam(error);
    } catch (const std::exception &error) {
        onForeign(error.what());
    } catch (...) {
        onForeign("unknown exception");
    }
    return false;
}

/// The same for accesses whose failures need no further action.
template <class Access>
bool guardNode(Access access)
{
    return guardNode(
        access, [](const GenICam::GenericException &) {}, [](const char *) {});
}

/// Runs `access` and returns the description of the exception that ended it, or nothing when it ran to its end.
template <class Access>
std::optional<std::string> errorOf(Access &&access)
{
    std::optional<std::string> error;
    guardNode(
        access, [&](const GenICam::GenericException &thrown) { error = thrown.GetDescription(); },
        [&](const char *message) { error = message; });
    return error;
}

/// The same with the description in `error`, for callers that answer with a sentence. True when nothing was thrown.
template <class Access>
bool guarded(QString *error, Access &&access)
{
    const std::optional<std::string> thrown = errorOf(access);
    if (thrown)
        *error = QString::fromStdString(*thrown);
    return !thrown;
}
