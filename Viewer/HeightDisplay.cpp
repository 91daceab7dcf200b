// SPDX-License-Identifier: MIT
#include "Viewer/HeightDisplay.h"

#include <algorithm>
#include <cmath>

#include "Host/HostContext.h"

namespace {

constexpr double UsualMaximum = 9.0; // mm
constexpr double UsualMinimum = -9.0;
/// Panels store a tiny spacing when nobody chose one. Rows flatter than this, compared with the columns, hide the part.
constexpr double FlattestRow = 1.0 / 8;
constexpr double LargestStep = 128.0;
constexpr double LargestNumber = 1e6; ///< what is beyond is a fault in the settings

/// Profilers have settings for it; a structured-light camera shows all of its heights, but for single wrong ones.
HeightAnalysis::Range colourRange(const HeightFrame &frame)
{
    constexpr HeightAnalysis::Range Usual{UsualMinimum, UsualMaximum};
    constexpr double Wrong = 0.001; // of the points
    return frame.outputs.empty() ? Usual : HeightAnalysis::usualRange(frame, Wrong).value_or(Usual);
}

} // namespace

HeightDisplay::HeightDisplay(HostContext &host, QObject *parent) : QObject(parent), m_host(host)
{
    connect(&host.devices(), &KnownDevices::heightReady, this, &HeightDisplay::keep);
    connect(&host.devices(), &KnownDevices::frameReady, this, [this](const QString &id) { adoptFrame(id); });
    const auto announce = [this](const QString &id) {
        if (shows(id))
            Q_EMIT changed(id);
    };
    connect(&host.infoItems(), &InfoItems::cameraChanged, this, announce);
    connect(&host.showModes(), &ShowModes::changed, this, announce);
    connect(&host.sessions(), &DeviceSessions::stateChanged, this, [this](const QString &id) {
        if (!m_host.devices().isReady(id))
            m_shown.remove(id);
    });
}

void HeightDisplay::keep(const QString &id, const HeightFrame &frame)
{
    Shown &shown = m_shown[id];
    shown.frame = frame;
    shown.range = colourRange(frame);
    shown.fresh = true;
}

/// A device may send other images between its height maps.
void HeightDisplay::adoptFrame(const QString &id)
{
    const auto shown = m_shown.find(id);
    if (shown == m_shown.end())
        return;
    if (shown->fresh)
        shown->fresh = false;
    else
        m_shown.erase(shown);
}

double HeightDisplay::number(const QString &id, HostCore::CAM_INFO item, double otherwise) const
{
    bool valid = false;
    const double value = m_host.infoItems().camera(id, item).toDouble(&valid);
    return valid && std::abs(value) <= LargestNumber ? value : otherwise;
}

HeightSampling HeightDisplay::sampling(const QString &id, const HeightFrame &frame) const
{
    HeightSampling result;
    result.step = int(std::clamp(number(id, HostCore::CAM_INFO_SAMPLING_RATE, 1.0), 1.0, LargestStep));
    const double spacing = number(id, HostCore::CAM_INFO_CONTOUR_SPACING, 0.0);
    if (spacing >= FlattestRow * frame.pitchX && frame.pitchX > 0.0)
        result.rowHeight = spacing / frame.pitchX;
    return result;
}

QImage HeightDisplay::chosenOutput(const QString &id, const HeightFrame &frame) const
{
    const int output = m_host.showModes().of(id) - 1;
    return output >= 0 && output < int(frame.outputs.size()) ? frame.outputs[size_t(output)] : QImage();
}

bool HeightDisplay::showsIntensity(const QString &id, const HeightFrame &frame) const
{
    return !frame.intensity.isNull()
        && m_host.infoItems().camera(id, HostCore::CAM_INFO_GRAY_IMAGE) == QLatin1String("1");
}

QImage HeightDisplay::picture(const QString &id, const QImage &gray) const
{
    const auto shown = m_shown.constFind(id);
    if (shown == m_shown.constEnd())
        return gray;
    const HeightFrame &frame = shown->frame;
    const QImage output = chosenOutput(id, frame);
    if (!output.isNull())
        return output;
    if (showsIntensity(id, frame))
        return intensityPicture(frame, sampling(id, frame));
    return heightColours(frame, number(id, HostCore::CAM_INFO_Z_MINIMUM, shown->range.lowest),
                         number(id, HostCore::CAM_INFO_Z_MAXIMUM, shown->range.highest), sampling(id, frame));
}

bool HeightDisplay::showsImage(const QString &id, const HeightFrame &frame) const
{
    return showsIntensity(id, frame) || !chosenOutput(id, frame).isNull();
}

QString HeightDisplay::pixelFormat(const QString &id, const QString &sent) const
{
    const auto shown = m_shown.constFind(id);
    return shown != m_shown.constEnd() && showsImage(id, shown->frame) ? QStringLiteral("Mono8") : sent;
}

QString HeightDisplay::textAt(const QString &id, const QPoint &pixel) const
{
    const auto shown = m_shown.constFind(id);
    if (shown == m_shown.constEnd() || showsImage(id, shown->frame))
        return {};
    const HeightFrame &frame = shown->frame;
    const HeightSampling grid = sampling(id, frame);
    if (!QRect(QPoint(), grid.pictureSize(frame)).contains(pixel))
        return {};
    const int column = grid.frameColumn(pixel.x()), row = grid.frameRow(frame, pixel.y());
    const float z = frame.profile(row)[column];
    const QString x = QString::number(frame.firstX + frame.pitchX * column, 'f', 2);
    const QString height = std::isnan(z) ? tr("no data") : tr("%1 mm").arg(double(z), 0, 'f', 3);
    return tr("row %1, X %2 mm: %3").arg(row).arg(x, height);
}
