// SPDX-License-Identifier: MIT
#pragma once

#include <exception>

#include <GenApi/GenApi.h>

/// Runs `access`, which touches nodes, and lets nothing that it throws out: a GenICam exception goes to `onGenICam`,
/// the text of any other one to `onForeign` (a failing port may throw anything through a node). True if nothing
/// was thrown. The one place of the panel where exceptions are caught.
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
