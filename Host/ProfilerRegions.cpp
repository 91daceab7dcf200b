// SPDX-License-Identifier: MIT
#include "Host/ProfilerRegions.h"

#include <algorithm>
#include <utility>

#include <QScopeGuard>

#include "Features/NodeGuard.h"
#include "Host/DeviceValues.h"
#include "Host/HostLog.h"
#include "Host/KnownDevices.h"

namespace {

constexpr int ApplyInterval = 200; // ms
constexpr int MeasureRange = 0;
constexpr int MostMasks = 3;
const QString Module = QStringLiteral("ProfilerRegions");
const QString MaskSelector = QStringLiteral("ImageMaskerSelector");

QString selectorEntry(int number)
{
    return QStringLiteral("ImageMasker%1").arg(number - 1);
}

/// In the middle, apart from the edges.
QRect middleOf(const QSize &image)
{
    const QSize size = image / 4;
    return {QPoint((image.width() - size.width()) / 2, (image.height() - size.height()) / 2), size};
}

/// Within the limits of the feature and in its steps.
qint64 fittingValue(const GenApi::CIntegerPtr &feature, qint64 value)
{
    if (!feature.IsValid())
        return value;
    const qint64 lowest = feature->GetMin(), step = std::max<qint64>(1, feature->GetInc());
    const qint64 within = std::clamp(value, lowest, std::max<qint64>(lowest, feature->GetMax()));
    return lowest + (within - lowest) / step * step;
}

} // namespace

ProfilerRegions::ProfilerRegions(const KnownDevices &devices, DeviceValues &values, ImageRegions &regions, HostLog &log)
    : m_devices(devices), m_values(values), m_regions(regions), m_log(log)
{
    m_pause.setSingleShot(true);
    m_pause.setInterval(ApplyInterval);
    connect(&m_pause, &QTimer::timeout, this, &ProfilerRegions::applyMoves);
}

bool ProfilerRegions::isNumber(int roiId)
{
    return roiId >= MeasureRange && roiId <= MostMasks;
}

bool ProfilerRegions::draw(const QString &device, int number, const QPoint &corner, const QPoint &opposite)
{
    if (m_regions.handleOf(device, number))
        return true;
    const QSize image = m_devices.isReady(device) ? sensorSize(device) : QSize();
    if (!isNumber(number) || image.isEmpty()) {
        m_log.add(Module, QStringLiteral("Region %1 cannot be drawn on %2").arg(number).arg(device));
        return false;
    }
    QRect area = areaOnDevice(device, number);
    if (area.isEmpty())
        area = corner == opposite ? middleOf(image) : QRect(corner, opposite - QPoint(1, 1));
    return m_regions.draw(device, image, area.topLeft(), area.bottomRight() + QPoint(1, 1), number) != 0;
}

void ProfilerRegions::showDevice(const QString &device)
{
    for (const ImageRegion &one : m_regions.of(device)) {
        if (one.number)
            show(one);
    }
}

void ProfilerRegions::noteMove(int handle)
{
    if (!m_regions.region(handle).number)
        return;
    m_moved.insert(handle);
    if (!m_pause.isActive())
        m_pause.start();
}

void ProfilerRegions::applyMoves()
{
    const QSet<int> due = std::exchange(m_moved, {});
    for (const int handle : due) { // whatever a write sets off may remove regions
        const ImageRegion region = m_regions.region(handle);
        if (region.number)
            apply(region);
    }
}

/// The device rounds, and refuses while it acquires: the region shows what came of it. One refusal is enough: a drag
/// would fill the log.
void ProfilerRegions::apply(const ImageRegion &region)
{
    if (region.number == MeasureRange)
        applyMeasureRange(region.device, region.area);
    else
        applyMask(region);
    show(region);
}

void ProfilerRegions::show(const ImageRegion &region)
{
    const QRect real = areaOnDevice(region.device, *region.number);
    if (!real.isEmpty())
        m_regions.place(region.device, region.handle, real.topLeft(), real.bottomRight() + QPoint(1, 1));
}

/// Neither step may leave the range beyond the sensor.
void ProfilerRegions::applyMeasureRange(const QString &device, const QRect &area)
{
    const bool upwards = area.y() < integer(device, "OffsetY");
    if (upwards && !write(device, "OffsetY", area.y()))
        return;
    if (write(device, "Height", area.height()) && !upwards)
        write(device, "OffsetY", area.y());
}

void ProfilerRegions::applyMask(const ImageRegion &region)
{
    if (!m_values.write(region.device, MaskSelector, selectorEntry(*region.number)))
        return;
    const QRect &area = region.area;
    const std::pair<const char *, int> values[] = {{"ImageMaskOffsetX", area.x()},
                                                   {"ImageMaskOffsetY", area.y()},
                                                   {"ImageMaskWidth", area.width()},
                                                   {"ImageMaskHeight", area.height()}};
    for (const auto &[node, value] : values) {
        if (!write(region.device, node, value))
            return;
    }
}

QSize ProfilerRegions::sensorSize(const QString &device) const
{
    return {integer(device, "SensorWidth"), integer(device, "SensorHeight")};
}

QRect ProfilerRegions::areaOnDevice(const QString &device, int number)
{
    if (number == MeasureRange)
        return {0, integer(device, "OffsetY"), integer(device, "SensorWidth"), integer(device, "Height")};
    QString selected;
    m_values.read(device, MaskSelector, &selected);
    if (!m_values.write(device, MaskSelector, selectorEntry(number)))
        return {};
    const auto selectAgain = qScopeGuard([&] {
        if (!selected.isEmpty() && selected != selectorEntry(number))
            m_values.write(device, MaskSelector, selected);
    });
    return {integer(device, "ImageMaskOffsetX"), integer(device, "ImageMaskOffsetY"), integer(device, "ImageMaskWidth"),
            integer(device, "ImageMaskHeight")};
}

/// 0 when the device does not tell, which is logged.
int ProfilerRegions::integer(const QString &device, const char *node) const
{
    QString text;
    m_values.read(device, QLatin1String(node), &text);
    return text.toInt();
}

bool ProfilerRegions::write(const QString &device, const char *node, int value)
{
    qint64 fitting = value;
    QString error;
    guarded(&error, [&] { // what cannot be fitted is left to the device to refuse
        if (GenApi::INodeMap *const map = m_values.nodeMap(HostCore::FOCUS_CAMERA, device))
            fitting = fittingValue(map->GetNode(node), value);
    });
    return m_values.write(device, QLatin1String(node), QString::number(fitting));
}
