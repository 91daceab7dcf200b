// SPDX-License-Identifier: MIT
#pragma once

#include <QRectF>
#include <QString>

class QPainter;

/// A region as it is painted, in view coordinates.
struct PaintedRegion
{
    QRectF outline;
    QString label;
    bool selected = false; ///< with grips
    bool focused = false; ///< the arrow keys move it
};

/// Lines are dark and bright side by side, so that they show on every image. `view` is the visible part.
void paintRegion(QPainter &painter, const PaintedRegion &region, const QRectF &view);
/// The plate that stands for an image that has not been taken yet.
void paintCanvas(QPainter &painter, const QRectF &plate, const QRectF &view, const QString &hint);
