// SPDX-License-Identifier: MIT
#include "Devices/DeviceDiscovery.h"

#include <utility>

DeviceDiscovery::DeviceDiscovery(DeviceFinder deviceFinder, QObject *parent)
    : QObject(parent), finder(std::move(deviceFinder))
{ }

void DeviceDiscovery::search()
{
    if (searching || !finder)
        return;
    searching = true;
    jobs.add([this] {
        std::vector<FoundDevice> devices = finder();
        const auto report = [this, devices = std::move(devices)] {
            searching = false;
            Q_EMIT found(devices);
        };
        QMetaObject::invokeMethod(this, report, Qt::QueuedConnection);
    });
}
