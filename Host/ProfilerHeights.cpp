// SPDX-License-Identifier: MIT
#include "Host/ProfilerHeights.h"

#include "Host/DeviceSessions.h"
#include "Host/DeviceValues.h"
#include "Host/HostLog.h"
#include "Host/KnownDevices.h"

namespace {

const QString Module = QStringLiteral("ProfilerHeights");
const QString TrueHeight = QStringLiteral("ZReferenceHeight");

} // namespace

ProfilerHeights::ProfilerHeights(const KnownDevices &devices, const DeviceSessions &sessions, DeviceValues &values,
                                 HostLog &log)
    : m_values(values), m_log(log)
{
    connect(&devices, &KnownDevices::heightReady, this, &ProfilerHeights::adoptFrame);
    connect(&sessions, &DeviceSessions::stateChanged, this, [this, &devices](const QString &device) {
        if (!devices.isReady(device))
            m_newest.remove(device);
    });
}

void ProfilerHeights::adoptFrame(const QString &device, const HeightFrame &frame)
{
    if (frame.lines > 0)
        m_newest.insert(device, {frame.lastProfile(), frame.firstX, frame.pitchX, frame.applied});
}

std::optional<double> ProfilerHeights::correction(const QString &device, int kind,
                                                  const HeightAnalysis::Range &allowed) const
{
    const auto fail = [&](const QString &reason) {
        m_log.add(Module, QStringLiteral("No correction %1 for %2: %3").arg(kind).arg(device, reason));
        return std::optional<double>();
    };
    if (kind != Tilt && kind != HeightScale)
        return fail(QStringLiteral("it is unknown"));
    const Profile profile = m_newest.value(device);
    const auto line = HeightAnalysis::mainLine(profile.heights, profile.firstX, profile.pitchX);
    if (!line)
        return fail(QStringLiteral("there is no profile with data"));
    double value = HeightAnalysis::levellingTilt(line->slope, profile.applied);
    if (kind == HeightScale) {
        QString height;
        if (!m_values.read(device, TrueHeight, &height))
            return {};
        value = HeightAnalysis::trueScale(line->meanHeight, height.toDouble(), profile.applied);
    }
    const bool fits = value >= allowed.lowest && value <= allowed.highest;
    return fits ? value : fail(QStringLiteral("the profile asks for %1, which cannot be set").arg(value));
}
