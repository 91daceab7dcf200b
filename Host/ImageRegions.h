// SPDX-License-Identifier: MIT
#pragma once

#include <QList>
#include <QObject>
#include <QPoint>
#include <QRect>
#include <QSize>
#include <QString>

#include <optional>

/// A rectangle that a person draws on the images of a camera.
struct ImageRegion
{
    int handle = 0; ///< 0: no region
    QString device;
    QSize image; ///< of the camera's images, in pixels
    QRect area; ///< in pixels of the image; never empty, never beyond the image
    /// What the panel of a laser profiler calls it: 0 is the measure range, others are masks. None: a region of
    /// interest.
    std::optional<int> number = {};
};

/// The regions of interest that panels let a person draw. GUI thread.
///
/// Corners are image pixels, the second one lies behind the region; swapped ones are put in order, and what lies beyond
/// the image is cut off. A handle is never used again.
class ImageRegions : public QObject
{
    Q_OBJECT

public:
    using QObject::QObject;

    /// The new region's handle; 0 when nothing of it lies on the image.
    int draw(const QString &device, const QSize &image, const QPoint &corner, const QPoint &opposite,
             std::optional<int> number = {});
    /// Puts a region elsewhere, without a report to the panel. False when the device has no such region; corners
    /// without anything between them leave the region as it is.
    bool place(const QString &device, int handle, const QPoint &corner, const QPoint &opposite);
    /// As place(), by the hand of a person: movedByUser() follows if the region changed.
    void move(int handle, const QRect &area);
    /// False when the device has no such region.
    bool remove(const QString &device, int handle);
    void removeAll(const QString &device);

    /// The regions of a device, the newest last.
    QList<ImageRegion> of(const QString &device) const;
    /// The one with that handle; without a handle when there is none.
    ImageRegion region(int handle) const;
    /// Of the device's region that its panel knows by this number; none when there is none.
    std::optional<int> handleOf(const QString &device, int number) const;

Q_SIGNALS:
    /// Regions of a device came or went.
    void listChanged(const QString &device);
    /// A region of a device lies elsewhere now.
    void placed(const QString &device);
    void movedByUser(const QString &device, int handle, const QRect &area);

private:
    ImageRegion *find(int handle);
    bool put(ImageRegion &region, const QRect &area);

    QList<ImageRegion> m_regions;
    int m_lastHandle = 99; ///< small numbers are those that panels give to regions themselves
};
