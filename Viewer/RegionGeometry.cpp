// SPDX-License-Identifier: MIT
#include "Viewer/RegionGeometry.h"

#include <algorithm>
#include <utility>

namespace {

constexpr double EdgeReach = 7; ///< view pixels to both sides of an edge
constexpr double GripSize = 9; ///< view pixels
constexpr double LabelRoom = 10; ///< between an edge, which may have a grip, and a label

enum class Side { Beside, Low, Inside, High };

Side sideOf(double position, double low, double high)
{
    const double inner = std::min(EdgeReach, (high - low) / 3);
    if (position < low - EdgeReach || position > high + EdgeReach)
        return Side::Beside;
    if (position < low + inner)
        return Side::Low;
    return position > high - inner ? Side::High : Side::Inside;
}

RegionEdges edgesOf(Side side, RegionEdge low, RegionEdge high)
{
    return side == Side::Low ? RegionEdges(low) : side == Side::High ? RegionEdges(high) : RegionEdges();
}

/// First and last + 1 pixel of a region along one axis.
using Span = std::pair<int, int>;

Span draggedSpan(Span span, bool low, bool high, int by, int extent)
{
    span.first = std::clamp(span.first, 0, extent - 1);
    span.second = std::clamp(span.second, span.first + 1, extent);
    if (low && high) {
        const int shift = std::clamp(by, -span.first, extent - span.second);
        return {span.first + shift, span.second + shift};
    }
    if (low)
        span.first = std::clamp(span.first + by, 0, span.second - 1);
    if (high)
        span.second = std::clamp(span.second + by, span.first + 1, extent);
    return span;
}

} // namespace

QRectF ImagePlacement::toView(const QRect &area) const
{
    const double scaleX = shown.width() / image.width();
    const double scaleY = shown.height() / image.height();
    return {shown.x() + area.x() * scaleX, shown.y() + area.y() * scaleY, area.width() * scaleX,
            area.height() * scaleY};
}

QPointF ImagePlacement::toImage(const QPointF &position) const
{
    const QPointF inside = position - shown.topLeft();
    return {inside.x() * image.width() / shown.width(), inside.y() * image.height() / shown.height()};
}

RegionEdges regionPartAt(const QRectF &region, const QPointF &position)
{
    const Side horizontal = sideOf(position.x(), region.left(), region.right());
    const Side vertical = sideOf(position.y(), region.top(), region.bottom());
    if (horizontal == Side::Beside || vertical == Side::Beside)
        return NoEdge;
    const RegionEdges edges = edgesOf(horizontal, LeftEdge, RightEdge) | edgesOf(vertical, TopEdge, BottomEdge);
    return edges == NoEdge ? RegionBody : edges;
}

Qt::CursorShape regionCursor(RegionEdges part)
{
    if (part == NoEdge)
        return Qt::ArrowCursor;
    if (part == RegionBody)
        return Qt::SizeAllCursor;
    if (part == (LeftEdge | TopEdge) || part == (RightEdge | BottomEdge))
        return Qt::SizeFDiagCursor;
    if (part == (RightEdge | TopEdge) || part == (LeftEdge | BottomEdge))
        return Qt::SizeBDiagCursor;
    return part & (LeftEdge | RightEdge) ? Qt::SizeHorCursor : Qt::SizeVerCursor;
}

std::vector<QRectF> regionGrips(const QRectF &region, const QRectF &view)
{
    const QPointF middle = region.center();
    const double half = GripSize / 2;
    const auto inView = [half](double position, double low, double high) {
        return std::clamp(position, low + half, std::max(low + half, high - half));
    };
    std::vector<QRectF> grips;
    for (double x : {region.left(), middle.x(), region.right()}) {
        for (double y : {region.top(), middle.y(), region.bottom()}) {
            if (QPointF(x, y) == middle || !view.adjusted(-half, -half, half, half).contains(x, y))
                continue;
            const QPointF centre(inView(x, view.left(), view.right()), inView(y, view.top(), view.bottom()));
            grips.emplace_back(centre - QPointF(half, half), QSizeF(GripSize, GripSize));
        }
    }
    return grips;
}

/// Above the region, inside, below, beside, and else further down.
QRectF labelPlace(const QSizeF &size, const QRectF &region, const QRectF &view, const std::vector<QRectF> &taken)
{
    const QPointF inside(std::max(region.left(), view.left()) + LabelRoom,
                         std::max(region.top(), view.top()) + LabelRoom);
    const auto isTaken = [&](const QRectF &place) {
        return std::any_of(taken.begin(), taken.end(), [&](const QRectF &other) { return other.intersects(place); });
    };
    const auto placeAt = [&](const QPointF &corner) {
        const double x = std::clamp(corner.x(), view.left(), std::max(view.left(), view.right() - size.width()));
        return QRectF(QPointF(x, corner.y()), size);
    };
    for (const QPointF &corner :
         {QPointF(region.left(), region.top() - LabelRoom - size.height()), inside,
          QPointF(region.left(), region.bottom() + LabelRoom), QPointF(region.right() + LabelRoom, region.top())}) {
        if (view.contains(placeAt(corner)) && !isTaken(placeAt(corner)))
            return placeAt(corner);
    }
    QRectF place = placeAt(inside);
    while (isTaken(place) && place.bottom() < view.bottom())
        place.translate(0, 1);
    return isTaken(place) ? placeAt(inside) : place;
}

QRect draggedRegion(const QRect &area, RegionEdges part, const QPoint &by, const QSize &image)
{
    const auto [left, right] = draggedSpan({area.x(), area.x() + area.width()}, part.testFlag(LeftEdge),
                                           part.testFlag(RightEdge), by.x(), image.width());
    const auto [top, bottom] = draggedSpan({area.y(), area.y() + area.height()}, part.testFlag(TopEdge),
                                           part.testFlag(BottomEdge), by.y(), image.height());
    return {left, top, right - left, bottom - top};
}
