// SPDX-License-Identifier: MIT
#pragma once

#include <QPoint>
#include <QString>

class DeviceValues;
class HostLog;
class ImageRegions;
class KnownDevices;

/// What panels ask of the regions on a device's images. They name a region by its handle, or by the number that they
/// have given it themselves. GUI thread.
class PanelRegions
{
public:
    /// All four must outlive this.
    PanelRegions(const KnownDevices &devices, const DeviceValues &values, ImageRegions &regions, HostLog &log);

    /// The handle of a new region between two corners; 0 on failure, which is logged.
    int draw(const QString &device, const QPoint &corner, const QPoint &opposite);
    /// A region that the device does not have is logged.
    void place(const QString &device, int roiId, const QPoint &corner, const QPoint &opposite);
    /// The same, unless it is a number of a laser profiler's: a switch that shows the device's state has no region.
    void remove(const QString &device, int roiId);

private:
    int handleOf(const QString &device, int roiId) const;
    void logUnknown(const QString &device, int handle);

    const KnownDevices &m_devices;
    const DeviceValues &m_values;
    ImageRegions &m_regions;
    HostLog &m_log;
};
