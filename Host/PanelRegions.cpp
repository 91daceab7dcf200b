// SPDX-License-Identifier: MIT
#include "Host/PanelRegions.h"

#include <algorithm>

#include "Host/DeviceValues.h"
#include "Host/HostLog.h"
#include "Host/ImageRegions.h"
#include "Host/KnownDevices.h"
#include "Host/ProfilerRegions.h"

PanelRegions::PanelRegions(const KnownDevices &devices, const DeviceValues &values, ImageRegions &regions, HostLog &log)
    : m_devices(devices), m_values(values), m_regions(regions), m_log(log)
{ }

int PanelRegions::draw(const QString &device, const QPoint &corner, const QPoint &opposite)
{
    QString reason = QStringLiteral("the device is not open");
    if (m_devices.isReady(device)) {
        const QSize reach(std::max(corner.x(), opposite.x()), std::max(corner.y(), opposite.y()));
        const QSize image = m_values.imagePlace(device).area.size();
        if (const int handle = m_regions.draw(device, image.isEmpty() ? reach : image, corner, opposite))
            return handle;
        reason = QStringLiteral("it has no pixel of the image");
    }
    m_log.add(HostModule, QStringLiteral("Drawing a region on %1 failed: %2").arg(device, reason));
    return 0;
}

void PanelRegions::place(const QString &device, int roiId, const QPoint &corner, const QPoint &opposite)
{
    const int handle = handleOf(device, roiId);
    if (!m_regions.place(device, handle, corner, opposite))
        logUnknown(device, handle);
}

void PanelRegions::remove(const QString &device, int roiId)
{
    const int handle = handleOf(device, roiId);
    if (!m_regions.remove(device, handle) && !ProfilerRegions::isNumber(handle))
        logUnknown(device, handle);
}

int PanelRegions::handleOf(const QString &device, int roiId) const
{
    return m_regions.handleOf(device, roiId).value_or(roiId);
}

void PanelRegions::logUnknown(const QString &device, int handle)
{
    m_log.add(HostModule, QStringLiteral("%1 has no region %2").arg(device).arg(handle));
}
