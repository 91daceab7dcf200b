// SPDX-License-Identifier: MIT
#pragma once

#include <GenApi/GenApi.h>

/// Runs `access` and lets only a TimeoutException out: whoever reads in advance goes on after any other failure.
/// True when nothing was thrown.
template <class Access>
bool guardSilence(Access access)
{
    try {
        access();
        return true;
    } catch (const GenICam::TimeoutException &) {
        throw;
    } catch (...) {
        return false;
    }
}
