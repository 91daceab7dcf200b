// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

#include <GenApi/PersistenceDevice.h>

/// Why a setting did not take, in the language of the viewer as far as the words are not the device's own; empty for
/// what did.
QString failureText(const Persistence::Outcome &outcome);

/// How many settings are left out.
std::size_t countErrors(const std::vector<Persistence::Problem> &problems);
