// SPDX-License-Identifier: MIT
#pragma once

#include <QHash>
#include <QObject>
#include <QString>

#include <optional>
#include <vector>

#include "Devices/HeightFrame.h"
#include "Host/HeightAnalysis.h"

class HostContext;

/// What the host makes of the heights of laser profilers: the automatic display range and the corrections of the
/// mounting. GUI thread.
class ProfilerHeights : public QObject
{
    Q_OBJECT

public:
    /// As panels name them.
    enum Correction { Tilt = 0, HeightScale = 1 };

    /// `host` must outlive this.
    explicit ProfilerHeights(HostContext &host);

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

    void follow(const QString &device, const HeightFrame &frame);
    void followState(const QString &device);
    /// A panel wants the display range to follow the next complete frame.
    bool wishesRange(const QString &device) const;
    void forgetWish(const QString &device);
    void setRange(const QString &device, const HeightFrame &frame);

    HostContext &m_host;
    QHash<QString, Profile> m_newest; ///< of each device that is ready; without heights before its first frame
};
