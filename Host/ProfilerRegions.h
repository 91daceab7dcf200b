// SPDX-License-Identifier: MIT
#pragma once

#include <QObject>
#include <QSet>
#include <QTimer>

#include "Host/ImageRegions.h"

class DeviceValues;
class HostLog;
class KnownDevices;

/// The regions of laser profilers, which panels know by numbers of their own: 0 is the measure range, 1 to 3 are masks.
/// They lie on the image of the sensor and show what the device has; what a person moves is applied to the device.
/// GUI thread.
class ProfilerRegions : public QObject
{
    Q_OBJECT

public:
    /// All four must outlive this.
    ProfilerRegions(const KnownDevices &devices, DeviceValues &values, ImageRegions &regions, HostLog &log);

    /// Panels give it to a region, which may not be drawn: a switch that shows the device's state draws none.
    static bool isNumber(int roiId);
    /// The corners count where the device does not tell its own; equal ones leave the choice to this. A region that is
    /// there already stays. False on failure, which is logged.
    bool draw(const QString &device, int number, const QPoint &corner, const QPoint &opposite);
    /// Puts the regions of a device where it has them, after it has got other settings.
    void showDevice(const QString &device);
    /// A person moved the region; one that the device does not have itself is left alone. Writes it a moment later.
    void noteMove(int handle);

private:
    void applyMoves();
    void apply(const ImageRegion &region);
    void show(const ImageRegion &region);
    void applyMeasureRange(const QString &device, const QRect &area);
    void applyMask(const ImageRegion &region);
    QSize sensorSize(const QString &device) const;
    /// What the device has; empty when it does not tell. To ask for a mask it is selected, then the one before again.
    QRect areaOnDevice(const QString &device, int number);
    int integer(const QString &device, const char *node) const;
    bool write(const QString &device, const char *node, int value);

    const KnownDevices &m_devices;
    DeviceValues &m_values;
    ImageRegions &m_regions;
    HostLog &m_log;
    QSet<int> m_moved; ///< handles of regions that are still to be applied to the device
    QTimer m_pause; ///< a drag reports more moves than a device can take
};
