// SPDX-License-Identifier: MIT
#pragma once

#include <functional>
#include <vector>

#include "Devices/DeviceDiscovery.h"

/// The id of the route that a person has chosen for a camera, or nothing; called on the discovery thread. `camera`
/// stands for the same camera by whatever way it is found.
using RouteChoice = std::function<QString(const QString &camera, const std::vector<DeviceRoute> &routes)>;

/// The name of the route without a producer.
const QString BuiltInRoute = QStringLiteral("built-in");

/// A finder of what both see. A camera that is found more than once is listed once, by the chosen route or else the
/// built-in one; FoundDevice::routes has all of them. They search at the same time.
DeviceFinder mergedFinder(DeviceFinder builtIn, DeviceFinder producers, RouteChoice choice = {});

/// Under what a route is chosen for a camera: it is the same for all its routes.
QString cameraKey(const FoundDevice &camera);

/// Lists each camera once, see mergedFinder().
std::vector<FoundDevice> mergedDevices(std::vector<FoundDevice> all, const RouteChoice &choice);
