// SPDX-License-Identifier: MIT
#pragma once

#include <QObject>
#include <QSet>
#include <QTimer>

#include <optional>

#include "Host/ImageRegions.h"

class HostContext;

/// The regions of laser profilers, which panels know by numbers of their own: 0 is the measure range, 1 to 3 are masks.
/// They lie on the image of the sensor, show what the device has, and the device follows them when a person moves them.
/// GUI thread.
class ProfilerRegions : public QObject
{
    Q_OBJECT

public:
    /// `host` and its regions must outlive this.
    explicit ProfilerRegions(HostContext &host);

    /// Panels give it to a region, which may not be drawn: a switch that follows the device draws none.
    static bool isNumber(int roiId);
    /// The corners count where the device does not tell its own; equal ones leave the choice to this. A region that is
    /// there already stays. False on failure, which is logged.
    bool draw(const QString &device, int number, const QPoint &corner, const QPoint &opposite);
    /// None when the device has no such region of a profiler.
    std::optional<int> handleOf(const QString &device, int number) const;
    /// The panel's number of a region; none when it is none of a profiler.
    std::optional<int> numberOf(int handle) const;
    /// Puts the regions of a device where it has them, after it has got other settings.
    void showDevice(const QString &device);

private:
    void noteMove(int handle);
    void applyMoves();
    void apply(const ImageRegion &region);
    void show(const ImageRegion &region);
    void applyMeasureRange(const QString &device, const QRect &area);
    void applyMask(const ImageRegion &region);
    QSize sensorSize(const QString &device) const;
    /// What the device has; empty when it does not tell. To ask for a mask it is selected, then the one before again.
    QRect areaOnDevice(const QString &device, int number) const;
    int integer(const QString &device, const char *node) const;
    bool write(const QString &device, const char *node, int value);

    HostContext &m_host;
    QSet<int> m_moved; ///< handles of regions that the device does not follow yet
    QTimer m_pause; ///< a drag reports more moves than a device can follow
};
