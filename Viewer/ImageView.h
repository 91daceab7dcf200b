// SPDX-License-Identifier: MIT
#pragma once

#include <QImage>
#include <QWidget>

#include <functional>

#include "Viewer/FrameRate.h"
#include "Viewer/ImageZoom.h"
#include "Viewer/RegionEditor.h"

/// Shows the frames of a camera, fitted to the view or at a chosen zoom, and the regions that lie on them.
///
/// Zoom 1.0 is one image pixel per device pixel. The wheel zooms around the cursor, dragging pans, `+`, `-`,
/// `0` (fit) and `1` (100 %) do the same from the keyboard, a double click switches between the last two. The middle
/// button pans on a region, too, which the left one drags.
class ImageView : public QWidget
{
    Q_OBJECT

public:
    explicit ImageView(QWidget *parent = nullptr);

    /// The newest frame; it counts for framesPerSecond().
    void showFrame(const QImage &frame);
    /// A frame that arrived earlier; the rate begins anew.
    void showStill(const QImage &frame);
    /// Another picture of the frame that is shown.
    void replaceFrame(const QImage &frame) { setImage(frame, QSize()); }
    /// Forgets the frame; `hint` (a sentence for a person) stands in its place.
    void clear(const QString &hint);
    /// Forgets the frame; a plate of an image's size stands in its place, with a hint on it. What it covers of
    /// `picture` is seen, `place` says where the picture lies on the plate, in pixels of the image.
    void showCanvas(const QSize &size, const QString &hint, const QImage &picture = {}, const QRect &place = {});
    /// A sentence about what is wrong with the images, on the image or in its place; empty: nothing is.
    void setNotice(const QString &notice);
    const QString &notice() const { return m_notice; }
    bool isCanvas() const { return m_frame.isNull() && !m_canvas.isEmpty(); }
    const QImage &canvasPicture() const { return m_below; }
    /// Of the frame or the canvas; empty without both.
    QSize imageSize() const { return m_frame.isNull() ? m_canvas : m_frame.size(); }
    /// Where the image lies in the view; it may reach beyond.
    QRectF imageRect() const { return m_zoom.imageRect(space()); }
    RegionEditor &regions() { return *m_regions; }
    const QImage &frame() const { return m_frame; }
    bool isFitted() const { return m_zoom.isFitted(); }
    /// The zoom in force, fitted or chosen.
    double zoom() const { return m_zoom.factor(space()); }
    double framesPerSecond() const { return m_rate->framesPerSecond(); }
    /// The value of the pixel under the cursor, "(x, y): value"; empty outside of the image.
    QString pixelText() const;
    /// Says what a pixel of the frame stands for, or leaves it to the view with an empty text.
    using PixelReader = std::function<QString(const QPoint &pixel)>;
    void setPixelReader(PixelReader reader) { m_pixelReader = std::move(reader); }

    void zoomToFit();
    void zoomToOriginal();
    void zoomIn();
    void zoomOut();

    QSize sizeHint() const override { return {640, 480}; }
    QSize minimumSizeHint() const override { return {160, 120}; }

Q_SIGNALS:
    /// A frame, the zoom or the pixel under the cursor changed.
    void statusChanged();

protected:
    void paintEvent(QPaintEvent *event) override;
    void wheelEvent(QWheelEvent *event) override;
    void mousePressEvent(QMouseEvent *event) override;
    void mouseMoveEvent(QMouseEvent *event) override;
    void mouseReleaseEvent(QMouseEvent *event) override;
    void mouseDoubleClickEvent(QMouseEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;
    bool focusNextPrevChild(bool next) override;
    void focusInEvent(QFocusEvent *event) override;
    void focusOutEvent(QFocusEvent *event) override;
    void leaveEvent(QEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;

private:
    void setImage(const QImage &frame, const QSize &canvas);
    ImageZoom::View space() const { return {size(), devicePixelRatioF()}; }
    ImagePlacement placement() const { return {imageRect(), imageSize()}; }
    void paintContent(QPainter &painter) const;
    void paintCanvas(QPainter &painter) const;
    void panTo(const QPointF &position);
    void showCursor();
    void setZoom(double factor, const QPointF &anchor);
    void zoomAroundCentre(double factor);

    RegionEditor *m_regions;
    FrameRate *m_rate;
    PixelReader m_pixelReader;
    QImage m_frame;
    QSize m_canvas; ///< the size of the image to come; empty unless the canvas is shown
    QImage m_below; ///< what is seen on the canvas
    QRect m_place; ///< of that, in pixels of the canvas
    QString m_hint;
    QString m_notice;
    ImageZoom m_zoom;
    QPointF m_cursor; ///< in view coordinates; negative while outside
    Qt::MouseButton m_dragButton = Qt::NoButton; ///< the one whose release ends the drag
    bool m_panning = false;
    QPointF m_dragFrom; ///< in view coordinates
};
