// SPDX-License-Identifier: MIT
#include "Devices/MergedFinder.h"

#include <algorithm>
#include <thread>
#include <utility>

namespace {

/// Makers and transports write names and numbers with other spaces and capitals.
QString normal(const QString &text)
{
    return text.simplified().remove(QLatin1Char(' ')).toLower();
}

/// "Example" and "Example AG" are one; a name that is not told fits all.
bool isSameVendor(const QString &one, const QString &other)
{
    return normal(one).startsWith(normal(other)) || normal(other).startsWith(normal(one));
}

bool isSameCamera(const FoundDevice &one, const FoundDevice &other)
{
    if (one.isCard || other.isCard)
        return false;
    if (!one.hardwareAddress.isEmpty() && one.hardwareAddress == other.hardwareAddress)
        return true;
    return !normal(one.serial).isEmpty() && normal(one.serial) == normal(other.serial)
        && normal(one.model) == normal(other.model) && isSameVendor(one.vendor, other.vendor);
}

/// A camera with all devices that it was found as.
using Sightings = std::vector<FoundDevice>;

std::vector<DeviceRoute> routesOf(const Sightings &camera)
{
    std::vector<DeviceRoute> routes;
    for (const FoundDevice &one : camera)
        routes.push_back({one.route.isEmpty() ? BuiltInRoute : one.route, one.id});
    return routes;
}

FoundDevice listed(Sightings camera, const RouteChoice &choice)
{
    if (camera.size() == 1)
        return std::move(camera.front());
    const std::vector<DeviceRoute> routes = routesOf(camera);
    const QString key = cameraKey(camera.front());
    const QString wanted = choice ? choice(key, routes) : QString();
    const auto chosen =
        std::find_if(camera.begin(), camera.end(), [&](const FoundDevice &one) { return one.id == wanted; });
    FoundDevice device = chosen == camera.end() ? camera.front() : *chosen;
    device.routes = routes;
    device.camera = key;
    return device;
}

} // namespace

QString cameraKey(const FoundDevice &camera)
{
    return !camera.camera.isEmpty() ? camera.camera
                                    : QStringLiteral("%1/%2").arg(normal(camera.model), normal(camera.serial));
}

std::vector<FoundDevice> mergedDevices(std::vector<FoundDevice> all, const RouteChoice &choice)
{
    std::vector<Sightings> cameras;
    for (FoundDevice &one : all) {
        const auto known = std::find_if(cameras.begin(), cameras.end(),
                                        [&one](const Sightings &camera) { return isSameCamera(camera.front(), one); });
        if (known == cameras.end())
            cameras.push_back({std::move(one)});
        else
            known->push_back(std::move(one));
    }
    std::vector<FoundDevice> merged;
    for (Sightings &camera : cameras)
        merged.push_back(listed(std::move(camera), choice));
    return merged;
}

DeviceFinder mergedFinder(DeviceFinder builtIn, DeviceFinder producers, RouteChoice choice)
{
    return [=] {
        std::vector<FoundDevice> ofProducers;
        std::thread second([&] { ofProducers = producers(); });
        std::vector<FoundDevice> all = builtIn(); // first: they are taken unless somebody chooses
        second.join();
        all.insert(all.end(), std::make_move_iterator(ofProducers.begin()), std::make_move_iterator(ofProducers.end()));
        return mergedDevices(std::move(all), choice);
    };
}
