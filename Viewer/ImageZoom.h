// SPDX-License-Identifier: MIT
#pragma once

#include <QPointF>
#include <QRectF>
#include <QSize>

/// How an image lies in a view: fitted to it, or at a chosen zoom around a point of the image.
///
/// Zoom 1.0 is one image pixel per device pixel. Positions are in view coordinates unless they are said to be pixels.
class ImageZoom
{
public:
    static constexpr double Minimum = 1.0 / 32;
    static constexpr double Maximum = 32;

    struct View
    {
        QSizeF size;
        double pixelRatio; ///< device pixels per unit of the view

        QPointF middle() const { return QRectF(QPointF(), size).center(); }
    };

    /// The middle of an image of another size than before comes to the middle of the view.
    void setImageSize(const QSize &size);

    bool isFitted() const { return m_fitted; }
    /// The zoom in force, fitted or chosen.
    double factor(const View &view) const { return m_fitted ? fittingFactor(view) : m_factor; }
    /// View coordinates per image pixel.
    double scale(const View &view) const { return factor(view) / view.pixelRatio; }
    /// Where the image lies in the view; it may reach beyond.
    QRectF imageRect(const View &view) const;

    void fit() { m_fitted = true; }
    /// Leaves the pixel at `anchor` where it is.
    void zoomTo(double factor, const QPointF &anchor, const View &view);
    /// Moves the image by `way`, as far as the middle of the view stays on it.
    void pan(const QPointF &way, const View &view);

private:
    double fittingFactor(const View &view) const;
    QPointF imageMiddle() const { return QRectF(QPointF(), QSizeF(m_image)).center(); }
    void keepInView();

    QSize m_image;
    bool m_fitted = true;
    double m_factor = 1;
    QPointF m_centre; ///< pixel in the middle of the view; the image's middle while fitted
};
