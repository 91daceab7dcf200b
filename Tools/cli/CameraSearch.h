// SPDX-License-Identifier: MIT
#pragma once

#include "Devices/DeviceDiscovery.h"

struct Options;

/// Finds cameras by the built-in way and by GenTL producers: those of the environment and of the options.
DeviceFinder cameraFinder(const Options &options);
