// SPDX-License-Identifier: MIT
#include "Viewer/RegionEditor.h"

#include <QKeyEvent>

#include <algorithm>
#include <cmath>
#include <utility>

#include "Viewer/RegionPainter.h"

namespace {

constexpr int WideStep = 10; // pixels
constexpr int MeasureRange = 0; ///< number of a laser profiler's region; others are masks
const QColor RangeColour(96, 190, 255);
const QColor MaskColour(255, 170, 60);

/// The way of an arrow key; null for other keys.
QPoint arrowStep(int key)
{
    switch (key) {
    case Qt::Key_Left:
        return {-1, 0};
    case Qt::Key_Right:
        return {1, 0};
    case Qt::Key_Up:
        return {0, -1};
    case Qt::Key_Down:
        return {0, 1};
    default:
        return {};
    }
}

QPoint wholePixels(const QPointF &way)
{
    return {int(std::lround(way.x())), int(std::lround(way.y()))};
}

} // namespace

void RegionEditor::edit(ImageRegions &regions, const QString &device)
{
    if (m_regions == &regions && m_device == device)
        return;
    if (m_regions)
        disconnect(m_regions, nullptr, this, nullptr);
    m_regions = &regions;
    m_device = device;
    connect(&regions, &ImageRegions::listChanged, this, &RegionEditor::adoptList);
    connect(&regions, &ImageRegions::placed, this, [this](const QString &moved) {
        if (moved == m_device)
            Q_EMIT changed();
    });
    m_selected = m_newest = 0;
    m_drag.reset();
    adoptList(device);
}

/// A new region gets the selection; the newest inherits it from one that went.
void RegionEditor::adoptList(const QString &device)
{
    if (device != m_device)
        return;
    const QList<ImageRegion> all = regions();
    const int newest = all.isEmpty() ? 0 : all.last().handle;
    const bool gone = region(m_selected).handle == 0;
    if (gone || newest > m_newest) {
        m_drag.reset();
        m_selected = newest;
    }
    m_newest = newest;
    Q_EMIT changed();
}

QList<ImageRegion> RegionEditor::regions() const
{
    return m_regions ? m_regions->of(m_device) : QList<ImageRegion>();
}

ImageRegion RegionEditor::region(int handle) const
{
    return m_regions ? m_regions->region(handle) : ImageRegion();
}

/// The selected region lies on top of the others, newer ones on older ones.
ImageRegion RegionEditor::regionAt(const QPointF &position, const ImagePlacement &placement) const
{
    QList<ImageRegion> candidates = regions();
    candidates.append(region(m_selected));
    const auto isHit = [&](const ImageRegion &one) {
        return one.handle != 0 && regionPartAt(placement.toView(one.area), position) != NoEdge;
    };
    const auto top = std::find_if(candidates.crbegin(), candidates.crend(), isHit);
    return top == candidates.crend() ? ImageRegion() : *top;
}

RegionEdges RegionEditor::partAt(const QPointF &position, const ImagePlacement &placement) const
{
    const ImageRegion hit = regionAt(position, placement);
    return hit.handle == 0 ? RegionEdges() : regionPartAt(placement.toView(hit.area), position);
}

void RegionEditor::select(int handle)
{
    m_selected = handle;
    Q_EMIT changed();
}

bool RegionEditor::press(const QPointF &position, const ImagePlacement &placement)
{
    const ImageRegion hit = regionAt(position, placement);
    if (hit.handle == 0)
        return false;
    select(hit.handle);
    m_drag = Drag{partAt(position, placement), placement.toImage(position), hit.area};
    return true;
}

void RegionEditor::drag(const QPointF &position, const ImagePlacement &placement)
{
    if (!m_drag)
        return;
    const QPoint way = wholePixels(placement.toImage(position) - m_drag->from);
    m_regions->move(m_selected, draggedRegion(m_drag->area, m_drag->part, way, placement.image));
}

void RegionEditor::release()
{
    m_drag.reset();
}

void RegionEditor::takeBack()
{
    const QRect before = m_drag->area;
    m_drag.reset();
    m_regions->move(m_selected, before);
}

bool RegionEditor::press(const QKeyEvent &event, const ImagePlacement &placement)
{
    if (event.key() == Qt::Key_Escape && m_drag) {
        takeBack();
        return true;
    }
    const QPoint step = arrowStep(event.key());
    if (step.isNull() || m_selected == 0)
        return false;
    if (m_drag)
        return true;
    const bool resizes = event.modifiers().testFlag(Qt::ControlModifier);
    const QPoint way = step * (event.modifiers().testFlag(Qt::ShiftModifier) ? WideStep : 1);
    const RegionEdges part = resizes ? RightEdge | BottomEdge : RegionBody;
    m_regions->move(m_selected, draggedRegion(region(m_selected).area, part, way, placement.image));
    return true;
}

bool RegionEditor::selectNext(bool forward)
{
    const QList<ImageRegion> all = regions();
    const auto isSelected = [this](const ImageRegion &one) { return one.handle == m_selected; };
    const auto place = std::find_if(all.begin(), all.end(), isSelected) - all.begin() + (forward ? 1 : -1);
    if (place < 0 || place >= all.size())
        return false;
    select(all.at(int(place)).handle);
    return true;
}

void RegionEditor::paint(QPainter &painter, const ImagePlacement &placement, const QRectF &view, bool focused) const
{
    QList<ImageRegion> all = regions();
    std::stable_partition(all.begin(), all.end(), [this](const ImageRegion &one) { return one.handle != m_selected; });
    std::vector<PaintedRegion> painted;
    for (const ImageRegion &one : std::as_const(all)) {
        const bool isMask = one.number.value_or(MeasureRange) != MeasureRange;
        const QColor colour = !one.number ? QColor() : isMask ? MaskColour : RangeColour;
        painted.push_back(
            {placement.toView(one.area), labelOf(one), one.handle == m_selected, focused, colour, isMask});
    }
    paintRegions(painter, std::move(painted), view);
}

QString RegionEditor::labelOf(const ImageRegion &region)
{
    const QString size = QStringLiteral("%1 \u00d7 %2").arg(region.area.width()).arg(region.area.height());
    if (!region.number)
        return size;
    return region.number == MeasureRange ? tr("Measure range: %1").arg(size)
                                         : tr("Mask %1: %2").arg(*region.number).arg(size);
}
