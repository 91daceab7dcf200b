// SPDX-License-Identifier: MIT
#pragma once

#include <QFlags>
#include <QPoint>
#include <QRect>
#include <QRectF>
#include <QSize>

#include <Qt>

#include <vector>

// How regions lie on the view and what a drag makes of them. Pure functions.

/// Where the view shows an image.
struct ImagePlacement
{
    QRectF shown; ///< the whole image, in view coordinates
    QSize image; ///< in image pixels; not empty

    QRectF toView(const QRect &area) const;
    QPointF toImage(const QPointF &position) const;
};

enum RegionEdge { NoEdge = 0, LeftEdge = 1, TopEdge = 2, RightEdge = 4, BottomEdge = 8 };
/// The part of a region that a person takes hold of: an edge, a corner (two edges) or the body (all four).
Q_DECLARE_FLAGS(RegionEdges, RegionEdge)
Q_DECLARE_OPERATORS_FOR_FLAGS(RegionEdges)

constexpr RegionEdges RegionBody = RegionEdges(LeftEdge) | TopEdge | RightEdge | BottomEdge;

/// The part of a region shown at `region` that is under `position` (view coordinates); none when it is beside it.
/// Edges reach some pixels to both sides; inside at most a third of the region, so that a small one keeps a body.
RegionEdges regionPartAt(const QRectF &region, const QPointF &position);
Qt::CursorShape regionCursor(RegionEdges part);
/// The square grips of the four corners and edges, pushed into `view` where they stand out of it.
std::vector<QRectF> regionGrips(const QRectF &region, const QRectF &view);
/// Where a label of that size stands: at its region, within the view and clear of what is there already. Of its region
/// alone where there is no such place.
QRectF labelPlace(const QSizeF &size, const QRectF &region, const QRectF &view, const std::vector<QRectF> &taken);

/// The area after its part moved by whole pixels: within the image and at least one pixel wide and high.
QRect draggedRegion(const QRect &area, RegionEdges part, const QPoint &by, const QSize &image);
