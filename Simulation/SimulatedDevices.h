// SPDX-License-Identifier: MIT
#pragma once

#include <memory>
#include <vector>

#include "Devices/Device.h"

/// The devices that need no hardware, closed: "SIM-AREA-01" (area-scan camera), "SIM-AREA-02" (small monochrome
/// camera), "SIM-PROFILER-01" (laser profiler) and "SIM-CARD-01" (input card).
std::vector<std::unique_ptr<Device>> makeSimulatedDevices();
