// SPDX-License-Identifier: MIT
#include "Host/CameraModules.h"

#include <algorithm>

#include "Devices/DeviceDiscovery.h"
#include "Host/DeviceReturn.h"
#include "Host/DeviceSessions.h"
#include "Host/KnownDevices.h"

CameraModules::CameraModules(KnownDevices &devices, DeviceSessions &sessions, DeviceReturn &deviceReturn)
    : m_devices(devices), m_sessions(sessions), m_deviceReturn(deviceReturn)
{
    connect(&m_sessions, &DeviceSessions::stateChanged, this, &CameraModules::adoptState);
}

void CameraModules::open(const QString &camera, const QString &module)
{
    if (!m_modules.contains(camera, module)) {
        const Device *const owner = m_devices.isReady(camera) ? m_devices.device(camera) : nullptr;
        const std::vector<FoundDevice> all = owner ? owner->modules() : std::vector<FoundDevice>();
        const auto wanted =
            std::find_if(all.begin(), all.end(), [&](const FoundDevice &one) { return one.id == module; });
        if (wanted == all.end() || !m_devices.add(wanted->create()))
            return;
        m_modules.insert(camera, module);
    }
    m_sessions.openLater(module);
}

void CameraModules::adoptState(const QString &id)
{
    if (m_devices.state(id) == KnownDevices::State::Closing) {
        const QStringList modules = m_modules.values(id);
        for (const QString &module : modules)
            m_sessions.close(module);
    }
    const bool isModule = std::find(m_modules.begin(), m_modules.end(), id) != m_modules.end();
    if (isModule && m_devices.state(id) == KnownDevices::State::Closed)
        QMetaObject::invokeMethod(
            this, [this, id] { forget(id); }, Qt::QueuedConnection); // others hear of it, too
}

void CameraModules::forget(const QString &module)
{
    if (m_devices.state(module) != KnownDevices::State::Closed)
        return;
    for (auto one = m_modules.begin(); one != m_modules.end();)
        one = *one == module ? m_modules.erase(one) : one + 1;
    m_deviceReturn.giveUp(module);
    m_devices.remove(module);
}
