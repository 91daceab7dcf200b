// SPDX-License-Identifier: MIT
#include "Viewer/RegionPainter.h"

#include <QFontMetricsF>
#include <QPainter>

#include <algorithm>
#include <cmath>

#include "Viewer/RegionGeometry.h"

namespace {

const QColor darkColour(20, 21, 22, 220);
const QColor brightColour(255, 255, 255);
const QColor focusColour(79, 214, 156);
const QColor plateColour(38, 40, 42);
const QColor gridColour(54, 57, 60);
const QColor borderColour(120, 123, 126);
const QColor hintColour(196, 198, 200);
constexpr double lineRoom = 2; ///< half of the widest line
constexpr double labelMargin = 5;
constexpr double hintMargin = 24;
constexpr int gridCells = 8;
constexpr int hatchAlpha = 110;

QPen line(const QColor &colour, double width)
{
    QPen pen(colour, width);
    pen.setJoinStyle(Qt::MiterJoin);
    return pen;
}

/// Along a border of the view a line lies just inside, where it is seen whole.
double inside(double edge, double border, double inward)
{
    return std::abs(edge - border) < lineRoom ? border + inward * lineRoom : edge;
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
    const QSizeF size(metrics.horizontalAdvance(region.label) + 2 * labelMargin, metrics.height() + labelMargin);
    const QRectF place = labelPlace(size, region.outline, view, taken);
    taken.push_back(place);
    painter.setPen(Qt::NoPen);
    painter.setBrush(darkColour);
    painter.drawRoundedRect(place, 3, 3);
    painter.setPen(region.colour.isValid() ? region.colour : brightColour);
    painter.drawText(place, Qt::AlignCenter, region.label);
}

void paintGrips(QPainter &painter, const PaintedRegion &region, const QRectF &view)
{
    painter.setPen(line(darkColour, 1));
    painter.setBrush(region.focused ? focusColour : brightColour);
    for (const QRectF &grip : regionGrips(region.outline, view))
        painter.drawRect(grip);
}

QColor lineColour(const PaintedRegion &region)
{
    if (region.colour.isValid())
        return region.colour;
    return region.selected && region.focused ? focusColour : brightColour;
}

/// Thin enough to see what lies below.
QBrush filling(const PaintedRegion &region)
{
    QColor colour = region.colour;
    colour.setAlpha(hatchAlpha);
    return region.hatched ? QBrush(colour, Qt::BDiagPattern) : QBrush(Qt::NoBrush);
}

void paintOutline(QPainter &painter, const PaintedRegion &region, const QRectF &view)
{
    const QRectF outline = seenOutline(region.outline, view);
    painter.setBrush(filling(region));
    painter.setPen(line(darkColour, 4));
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
    painter.fillRect(plate, plateColour);
    painter.setPen(line(gridColour, 1));
    for (int cell = 1; cell < gridCells; ++cell) {
        const QPointF step(plate.width() * cell / gridCells, plate.height() * cell / gridCells);
        painter.drawLine(plate.topLeft() + QPointF(step.x(), 0), plate.bottomLeft() + QPointF(step.x(), 0));
        painter.drawLine(plate.topLeft() + QPointF(0, step.y()), plate.topRight() + QPointF(0, step.y()));
    }
    painter.setPen(line(borderColour, 1));
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
    QRectF room = view.adjusted(hintMargin, hintMargin, -hintMargin, -hintMargin);
    if (painter.boundingRect(room, flags, hint).top() < plate.bottom() + hintMargin)
        room.moveBottom(std::min(room.bottom(), plate.bottom() - hintMargin));
    const QRectF text = painter.boundingRect(room, flags, hint);
    painter.setPen(Qt::NoPen);
    painter.setBrush(darkColour);
    painter.drawRoundedRect(text.adjusted(-labelMargin, -labelMargin, labelMargin, labelMargin), 3, 3);
    painter.setPen(hintColour);
    painter.drawText(room, flags, hint);
    painter.restore();
}
