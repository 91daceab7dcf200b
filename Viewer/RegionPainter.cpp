// SPDX-License-Identifier: MIT
#include "Viewer/RegionPainter.h"

#include <QFontMetricsF>
#include <QPainter>

#include <algorithm>
#include <cmath>

#include "Viewer/RegionGeometry.h"

namespace {

const QColor DarkColour(20, 21, 22, 220);
const QColor BrightColour(255, 255, 255);
const QColor FocusColour(79, 214, 156);
const QColor PlateColour(38, 40, 42);
const QColor GridColour(54, 57, 60);
const QColor BorderColour(120, 123, 126);
const QColor HintColour(196, 198, 200);
constexpr double LineRoom = 2; ///< half of the widest line
constexpr double LabelMargin = 5;
constexpr double HintMargin = 24;
constexpr int GridCells = 8;
constexpr int HatchAlpha = 110;

QPen line(const QColor &colour, double width)
{
    QPen pen(colour, width);
    pen.setJoinStyle(Qt::MiterJoin);
    return pen;
}

/// A line on the border of the view moves inside, where all of its width is seen.
double inside(double edge, double border, double inward)
{
    return std::abs(edge - border) < LineRoom ? border + inward * LineRoom : edge;
}

QRectF seenOutline(const QRectF &outline, const QRectF &view)
{
    const QPointF topLeft(inside(outline.left(), view.left(), 1), inside(outline.top(), view.top(), 1));
    const QPointF bottomRight(inside(outline.right(), view.right(), -1), inside(outline.bottom(), view.bottom(), -1));
    return {topLeft, bottomRight};
}

/// What is `taken` grows by it.
void paintLabel(QPainter &painter, const PaintedRegion &region, const QRectF &view, std::vector<QRectF> &taken)
{
    const QFontMetricsF metrics(painter.font());
    const QSizeF size(metrics.horizontalAdvance(region.label) + 2 * LabelMargin, metrics.height() + LabelMargin);
    const QRectF place = labelPlace(size, region.outline, view, taken);
    taken.push_back(place);
    painter.setPen(Qt::NoPen);
    painter.setBrush(DarkColour);
    painter.drawRoundedRect(place, 3, 3);
    painter.setPen(region.colour.isValid() ? region.colour : BrightColour);
    painter.drawText(place, Qt::AlignCenter, region.label);
}

void paintGrips(QPainter &painter, const PaintedRegion &region, const QRectF &view)
{
    painter.setPen(line(DarkColour, 1));
    painter.setBrush(region.focused ? FocusColour : BrightColour);
    for (const QRectF &grip : regionGrips(region.outline, view))
        painter.drawRect(grip);
}

QColor lineColour(const PaintedRegion &region)
{
    if (region.colour.isValid())
        return region.colour;
    return region.selected && region.focused ? FocusColour : BrightColour;
}

/// Thin enough to see what lies below.
QBrush filling(const PaintedRegion &region)
{
    QColor colour = region.colour;
    colour.setAlpha(HatchAlpha);
    return region.hatched ? QBrush(colour, Qt::BDiagPattern) : QBrush(Qt::NoBrush);
}

void paintOutline(QPainter &painter, const PaintedRegion &region, const QRectF &view)
{
    const QRectF outline = seenOutline(region.outline, view);
    painter.setBrush(filling(region));
    painter.setPen(line(DarkColour, 4));
    painter.drawRect(outline);
    painter.setBrush(Qt::NoBrush);
    painter.setPen(line(lineColour(region), 2));
    painter.drawRect(outline);
}

} // namespace

/// Labels stand above all lines and beside all grips.
void paintRegions(QPainter &painter, std::vector<PaintedRegion> regions, const QRectF &view)
{
    const auto isSeen = [&](const PaintedRegion &region) { return region.outline.intersects(view); };
    regions.erase(std::stable_partition(regions.begin(), regions.end(), isSeen), regions.end());
    std::vector<QRectF> taken;
    painter.save();
    for (const PaintedRegion &region : regions) {
        paintOutline(painter, region, view);
        if (region.selected)
            taken = regionGrips(region.outline, view);
    }
    for (const PaintedRegion &region : regions)
        paintLabel(painter, region, view, taken);
    for (const PaintedRegion &region : regions) {
        if (region.selected)
            paintGrips(painter, region, view);
    }
    painter.restore();
}

void paintPlate(QPainter &painter, const QRectF &plate)
{
    painter.save();
    painter.fillRect(plate, PlateColour);
    painter.setPen(line(GridColour, 1));
    for (int cell = 1; cell < GridCells; ++cell) {
        const QPointF step(plate.width() * cell / GridCells, plate.height() * cell / GridCells);
        painter.drawLine(plate.topLeft() + QPointF(step.x(), 0), plate.bottomLeft() + QPointF(step.x(), 0));
        painter.drawLine(plate.topLeft() + QPointF(0, step.y()), plate.topRight() + QPointF(0, step.y()));
    }
    painter.setPen(line(BorderColour, 1));
    painter.drawRect(plate.adjusted(0.5, 0.5, -0.5, -0.5));
    painter.restore();
}

/// At the bottom of the view, or of the plate if it reaches down there: off the edge that regions start with.
void paintHint(QPainter &painter, const QString &hint, const QRectF &plate, const QRectF &view)
{
    if (hint.isEmpty())
        return;
    painter.save();
    const int flags = Qt::AlignHCenter | Qt::AlignBottom | Qt::TextWordWrap;
    QRectF room = view.adjusted(HintMargin, HintMargin, -HintMargin, -HintMargin);
    if (painter.boundingRect(room, flags, hint).top() < plate.bottom() + HintMargin)
        room.moveBottom(std::min(room.bottom(), plate.bottom() - HintMargin));
    const QRectF text = painter.boundingRect(room, flags, hint);
    painter.setPen(Qt::NoPen);
    painter.setBrush(DarkColour);
    painter.drawRoundedRect(text.adjusted(-LabelMargin, -LabelMargin, LabelMargin, LabelMargin), 3, 3);
    painter.setPen(HintColour);
    painter.drawText(room, flags, hint);
    painter.restore();
}
