// SPDX-License-Identifier: MIT
#include "Host/ShowModes.h"

#include "Host/DeviceSessions.h"
#include "Host/HostLog.h"
#include "Host/KnownDevices.h"

namespace {

const QString Module = QStringLiteral("ShowModes");

} // namespace

ShowModes::ShowModes(const KnownDevices &devices, const DeviceSessions &sessions, HostLog &log)
    : m_devices(devices), m_log(log)
{
    connect(&sessions, &DeviceSessions::stateChanged, this, [this](const QString &device) {
        if (!m_devices.isReady(device))
            m_modes.remove(device);
    });
}

void ShowModes::set(const QString &device, int mode)
{
    if (!m_devices.isReady(device)) {
        m_log.add(Module, QStringLiteral("No show mode %1 for %2: the device is not open").arg(mode).arg(device));
        return;
    }
    const bool exists = mode >= DepthMap && mode <= Last;
    if (!exists)
        m_log.add(Module, QStringLiteral("%1 has no show mode %2: the depth map is shown").arg(device).arg(mode));
    const int wanted = exists ? mode : DepthMap;
    if (of(device) == wanted)
        return;
    m_modes.insert(device, wanted);
    Q_EMIT changed(device);
}
