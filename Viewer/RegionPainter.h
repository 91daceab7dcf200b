// SPDX-License-Identifier: MIT
#pragma once

#include <QColor>
#include <QRectF>
#include <QString>

#include <vector>

class QPainter;

/// A region as it is painted, in view coordinates.
struct PaintedRegion
{
    QRectF outline;
    QString label;
    bool selected = false; ///< with grips
    bool focused = false; ///< the arrow keys move it
    QColor colour = {}; ///< of its kind; bright, and marked while it is focused, if it is not valid
    bool hatched = false; ///< what it covers is left out
};

/// Later ones lie on top; one is selected, or none. Lines are dark and bright side by side, so that they show on every
/// image. `view` is the visible part.
void paintRegions(QPainter &painter, std::vector<PaintedRegion> regions, const QRectF &view);
/// The plate that stands for an image that has not been taken yet.
void paintPlate(QPainter &painter, const QRectF &plate);
/// What is said about a plate, if anything.
void paintHint(QPainter &painter, const QString &hint, const QRectF &plate, const QRectF &view);
