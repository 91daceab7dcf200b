// SPDX-License-Identifier: MIT
#include "Devices/DeviceDiscovery.h"

#include <utility>

DeviceDiscovery::DeviceDiscovery(DeviceFinder deviceFinder, QObject *parent)
    : QObject(parent), m_finder(std::move(deviceFinder))
{ }

void DeviceDiscovery::search()
{
    if (m_searching || !m_finder)
        return;
    m_searching = true;
    m_jobs.add([this] {
        std::vector<FoundDevice> devices = m_finder();
        m_handOver.post([this, devices = std::move(devices)] {
            m_searching = false;
            Q_EMIT found(devices);
        });
    });
}
