// SPDX-License-Identifier: MIT
#pragma once

#include <QHash>
#include <QObject>
#include <QString>

#include <optional>
#include <vector>

#include "Devices/HeightFrame.h"
#include "Host/HeightAnalysis.h"

class DeviceSessions;
class DeviceValues;
class HostLog;
class KnownDevices;

/// How to correct the mounting of laser profilers, found from their newest profiles. GUI thread.
class ProfilerHeights : public QObject
{
    Q_OBJECT

public:
    /// As panels name them.
    enum Correction { Tilt = 0, HeightScale = 1 };

    /// All four must outlive this.
    ProfilerHeights(const KnownDevices &devices, const DeviceSessions &sessions, DeviceValues &values, HostLog &log);

    /// The value that corrects what the newest profile of the device shows: for Tilt the angle in degrees, for
    /// HeightScale the factor of the heights. None on failure, or when the value is not allowed, which is logged.
    std::optional<double> correction(const QString &device, int kind, const HeightAnalysis::Range &allowed) const;

private:
    struct Profile
    {
        std::vector<float> heights;
        double firstX;
        double pitchX;
        HeightCorrection applied;
    };

    void adoptFrame(const QString &device, const HeightFrame &frame);

    DeviceValues &m_values;
    HostLog &m_log;
    QHash<QString, Profile> m_newest; ///< of each device that has sent one since it was opened
};
