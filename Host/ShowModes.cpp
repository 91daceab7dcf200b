// SPDX-License-Identifier: MIT
#include "Host/ShowModes.h"

#include "Host/HostContext.h"

namespace {

const QString module = QStringLiteral("ShowModes");

} // namespace

ShowModes::ShowModes(HostContext &owner) : host(owner)
{
    connect(&host, &HostContext::deviceStateChanged, this, [this](const QString &device) {
        if (!host.isReady(device))
            modes.remove(device);
    });
}

void ShowModes::set(const QString &device, int mode)
{
    if (!host.isReady(device)) {
        host.log(module, QStringLiteral("No show mode %1 for %2: the device is not open").arg(mode).arg(device));
        return;
    }
    const bool exists = mode >= depthMap && mode <= last;
    if (!exists)
        host.log(module, QStringLiteral("%1 has no show mode %2: the depth map is shown").arg(device).arg(mode));
    const int wanted = exists ? mode : depthMap;
    if (of(device) == wanted)
        return;
    modes.insert(device, wanted);
    Q_EMIT changed(device);
}
