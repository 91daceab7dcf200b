// SPDX-License-Identifier: MIT
#include "Host/ShowModes.h"

#include "Host/HostContext.h"

namespace {

const QString Module = QStringLiteral("ShowModes");

} // namespace

ShowModes::ShowModes(HostContext &owner) : m_host(owner)
{
    connect(&m_host, &HostContext::deviceStateChanged, this, [this](const QString &device) {
        if (!m_host.isReady(device))
            m_modes.remove(device);
    });
}

void ShowModes::set(const QString &device, int mode)
{
    if (!m_host.isReady(device)) {
        m_host.log(Module, QStringLiteral("No show mode %1 for %2: the device is not open").arg(mode).arg(device));
        return;
    }
    const bool exists = mode >= DepthMap && mode <= Last;
    if (!exists)
        m_host.log(Module, QStringLiteral("%1 has no show mode %2: the depth map is shown").arg(device).arg(mode));
    const int wanted = exists ? mode : DepthMap;
    if (of(device) == wanted)
        return;
    m_modes.insert(device, wanted);
    Q_EMIT changed(device);
}
