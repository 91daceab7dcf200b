// SPDX-License-Identifier: MIT
#pragma once

#include <QObject>
#include <QPointer>

#include <optional>

#include "Host/ImageRegions.h"
#include "Viewer/RegionGeometry.h"

class QKeyEvent;
class QPainter;

/// Lets a person select, drag and resize the regions of one device on the image view.
///
/// One region is selected, the newest at first. The arrow keys move it by a pixel, with Ctrl they move its right and
/// bottom edges, with Shift by ten pixels. Escape during a drag takes the drag back.
class RegionEditor : public QObject
{
    Q_OBJECT

public:
    using QObject::QObject;

    /// From now on the regions of `device`; an empty id has none.
    void edit(ImageRegions &regions, const QString &device);

    /// 0 without a region.
    int selected() const { return m_selected; }
    bool isDragging() const { return m_drag.has_value(); }
    /// What is under the position; none is beside every region.
    RegionEdges partAt(const QPointF &position, const ImagePlacement &placement) const;

    /// Takes hold of the region under the position. False when there is none.
    bool press(const QPointF &position, const ImagePlacement &placement);
    void drag(const QPointF &position, const ImagePlacement &placement);
    void release();
    /// False when the key is not for the regions.
    bool press(const QKeyEvent &event, const ImagePlacement &placement);
    /// Selects the region after or before the selected one. False behind the last and before the first.
    bool selectNext(bool forward);

    void paint(QPainter &painter, const ImagePlacement &placement, const QRectF &view, bool focused) const;
    /// What stands at a region: its size, and its name if it has one.
    static QString labelOf(const ImageRegion &region);

Q_SIGNALS:
    /// The regions look different now.
    void changed();

private:
    struct Drag
    {
        RegionEdges part;
        QPointF from; ///< image pixels
        QRect area; ///< before the drag
    };

    QList<ImageRegion> regions() const;
    ImageRegion region(int handle) const;
    ImageRegion regionAt(const QPointF &position, const ImagePlacement &placement) const;
    void select(int handle);
    void adoptList(const QString &device);
    void takeBack();

    QPointer<ImageRegions> m_regions;
    QString m_device;
    int m_selected = 0;
    int m_newest = 0; ///< the highest handle that was seen here
    std::optional<Drag> m_drag;
};
