// SPDX-License-Identifier: MIT
#pragma once

#include <QHash>
#include <QObject>
#include <QString>

#include <optional>
#include <vector>

#include "Host/HeightFrame.h"

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
    /// HeightScale the factor of the heights. None on failure, which is logged.
    std::optional<double> correction(const QString &device, int kind) const;

private:
    struct Profile
    {
        std::vector<float> heights;
        double firstX;
        double pitchX;
    };

    void follow(const QString &device, const HeightFrame &frame);
    void setRange(const QString &device, const HeightFrame &frame);
    std::optional<double> tiltAngle(const QString &device, double slope) const;
    std::optional<double> heightScale(const QString &device, double meanHeight) const;
    std::optional<double> number(const QString &device, const char *node) const;

    HostContext &host;
    QHash<QString, Profile> newest;
};
