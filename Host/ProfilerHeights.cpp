// SPDX-License-Identifier: MIT
#include "Host/ProfilerHeights.h"

#include "Host/HostContext.h"

namespace {

const QString Module = QStringLiteral("ProfilerHeights");
const QString TrueHeight = QStringLiteral("ZReferenceHeight");

QString millimetres(double value)
{
    return QString::number(value, 'f', 6);
}

} // namespace

ProfilerHeights::ProfilerHeights(HostContext &owner) : m_host(owner)
{
    connect(&m_host, &HostContext::heightReady, this, &ProfilerHeights::follow);
    connect(&m_host, &HostContext::deviceStateChanged, this, &ProfilerHeights::followState);
    connect(&m_host, &HostContext::cameraInfoChanged, this, [this](const QString &device, HostCore::CAM_INFO item) {
        if (item == HostCore::CAM_INFO_Z_MINIMUM || item == HostCore::CAM_INFO_Z_MAXIMUM)
            forgetWish(device);
    });
}

/// A wish that an earlier run of the host left behind would surprise whoever acquires now.
void ProfilerHeights::followState(const QString &device)
{
    if (!m_host.isReady(device)) {
        m_newest.remove(device);
    } else if (!m_newest.contains(device)) {
        m_newest.insert(device, {});
        forgetWish(device);
    }
}

void ProfilerHeights::follow(const QString &device, const HeightFrame &frame)
{
    if (frame.lines > 0)
        m_newest.insert(device, {frame.lastProfile(), frame.firstX, frame.pitchX, frame.applied});
    if (frame.complete && wishesRange(device))
        setRange(device, frame);
}

bool ProfilerHeights::wishesRange(const QString &device) const
{
    return m_host.cameraInfo(device, HostCore::CAM_INFO_AUTOMATIC_Z_RANGE) == QLatin1String("1");
}

void ProfilerHeights::forgetWish(const QString &device)
{
    if (wishesRange(device))
        m_host.setCameraInfo(device, HostCore::CAM_INFO_AUTOMATIC_Z_RANGE, QStringLiteral("0"));
}

/// A frame without any data leaves the wish to the next one.
void ProfilerHeights::setRange(const QString &device, const HeightFrame &frame)
{
    const auto range = HeightAnalysis::usualRange(frame);
    if (!range)
        return;
    m_host.setCameraInfo(device, HostCore::CAM_INFO_Z_MINIMUM, millimetres(range->lowest));
    m_host.setCameraInfo(device, HostCore::CAM_INFO_Z_MAXIMUM, millimetres(range->highest));
    forgetWish(device);
    m_host.listeners().raiseImport(device); // panels show the range when they read anew
}

std::optional<double> ProfilerHeights::correction(const QString &device, int kind,
                                                  const HeightAnalysis::Range &allowed) const
{
    const auto fail = [&](const QString &reason) {
        m_host.log(Module, QStringLiteral("No correction %1 for %2: %3").arg(kind).arg(device, reason));
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
        if (!m_host.readNode(device, TrueHeight, &height))
            return {};
        value = HeightAnalysis::trueScale(line->meanHeight, height.toDouble(), profile.applied);
    }
    const bool fits = value >= allowed.lowest && value <= allowed.highest;
    return fits ? value : fail(QStringLiteral("the profile asks for %1, which cannot be set").arg(value));
}
