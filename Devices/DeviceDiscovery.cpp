// SPDX-License-Identifier: MIT
#include "Devices/DeviceDiscovery.h"

#include <algorithm>
#include <iterator>
#include <utility>

std::vector<FoundDevice> Device::modules() const
{
    return {};
}

bool FoundDevice::isReachedBy(const QString &device) const
{
    return std::any_of(routes.begin(), routes.end(),
                       [&device](const DeviceRoute &route) { return route.id == device; });
}

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

QString normalHardwareAddress(const QString &text)
{
    QString digits;
    std::copy_if(text.begin(), text.end(), std::back_inserter(digits),
                 [](QChar one) { return one.isLetterOrNumber(); });
    bool isNumber = false;
    digits.toULongLong(&isNumber, 16);
    return isNumber && digits.size() == 12 ? digits.toLower() : QString();
}
