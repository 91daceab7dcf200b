// SPDX-License-Identifier: MIT
#pragma once

#include <vector>

#include "Simulation/RegisterMemory.h"

/// The registers that a GenICam description defines with a constant address, in the order of the file.
std::vector<Register> registerLayout(const QByteArray &description);
