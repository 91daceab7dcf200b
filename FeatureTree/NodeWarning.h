// SPDX-License-Identifier: MIT
#pragma once

#include <GenApi/GenApi.h>

/// Prints the Qt warning for an error of a node: where it was raised, and its description.
void warnNodeError(const GenICam::GenericException &error);
