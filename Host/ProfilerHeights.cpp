// SPDX-License-Identifier: MIT
#include "Host/ProfilerHeights.h"

#include <cmath>

#include "Host/HeightAnalysis.h"
#include "Host/HostContext.h"

namespace {

constexpr double degreesPerRadian = 57.29577951308232;
const QString module = QStringLiteral("ProfilerHeights");

QString millimetres(double value)
{
    return QString::number(value, 'f', 6);
}

} // namespace

ProfilerHeights::ProfilerHeights(HostContext &owner) : host(owner)
{
    connect(&host, &HostContext::heightReady, this, &ProfilerHeights::follow);
    connect(&host, &HostContext::deviceStateChanged, this, [this](const QString &device) {
        if (!host.isReady(device))
            newest.remove(device);
    });
}

void ProfilerHeights::follow(const QString &device, const HeightFrame &frame)
{
    if (frame.lines > 0)
        newest.insert(device, {frame.lastProfile(), frame.firstX, frame.pitchX});
    if (frame.complete && host.cameraInfo(device, HostCore::CAM_INFO_AUTOMATIC_Z_RANGE) == QLatin1String("1"))
        setRange(device, frame);
}

/// A frame without any data leaves the wish to the next one.
void ProfilerHeights::setRange(const QString &device, const HeightFrame &frame)
{
    const auto range = HeightAnalysis::usualRange(frame);
    if (!range)
        return;
    host.setCameraInfo(device, HostCore::CAM_INFO_AUTOMATIC_Z_RANGE, QStringLiteral("0"));
    host.setCameraInfo(device, HostCore::CAM_INFO_Z_MINIMUM, millimetres(range->lowest));
    host.setCameraInfo(device, HostCore::CAM_INFO_Z_MAXIMUM, millimetres(range->highest));
}

std::optional<double> ProfilerHeights::correction(const QString &device, int kind) const
{
    const auto fail = [&](const char *reason) {
        host.log(module, QStringLiteral("No correction %1 for %2: %3").arg(kind).arg(device, QLatin1String(reason)));
        return std::optional<double>();
    };
    if (kind != Tilt && kind != HeightScale)
        return fail("it is unknown");
    const Profile profile = newest.value(device);
    const auto line = HeightAnalysis::mainLine(profile.heights, profile.firstX, profile.pitchX);
    if (!line)
        return fail("there is no profile with data");
    const auto found = kind == Tilt ? tiltAngle(device, line->slope) : heightScale(device, line->meanHeight);
    return found ? found : fail("the device does not tell its present correction");
}

/// Undoes scale and rotation that the profile got already.
std::optional<double> ProfilerHeights::tiltAngle(const QString &device, double slope) const
{
    const auto sine = number(device, "SinData"), cosine = number(device, "CosData");
    const auto scale = number(device, "ZCoorScale");
    if (!sine || !cosine || !scale || *cosine == 0.0 || *scale == 0.0)
        return {};
    QString mirrored;
    host.readNode(device, QStringLiteral("ReverseX"), &mirrored);
    const double direction = mirrored == QLatin1String("True") ? -1.0 : 1.0;
    return std::atan((direction * slope / *scale + *sine) / *cosine) * degreesPerRadian;
}

/// The reference is a true height, to which the offset is added.
std::optional<double> ProfilerHeights::heightScale(const QString &device, double meanHeight) const
{
    const auto scale = number(device, "ZCoorScale"), reference = number(device, "ZReferenceHeight");
    const auto offset = number(device, "ZCoorOffset");
    if (!scale || !reference || !offset || meanHeight == *offset)
        return {};
    return *scale * *reference / (meanHeight - *offset);
}

std::optional<double> ProfilerHeights::number(const QString &device, const char *node) const
{
    QString text;
    bool valid = host.readNode(device, QLatin1String(node), &text);
    const double value = valid ? text.toDouble(&valid) : 0.0;
    return valid ? std::optional<double>(value) : std::nullopt;
}
