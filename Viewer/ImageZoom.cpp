// SPDX-License-Identifier: MIT
#include "Viewer/ImageZoom.h"

#include <algorithm>

void ImageZoom::setImageSize(const QSize &size)
{
    if (size == m_image)
        return;
    m_image = size;
    m_centre = imageMiddle();
}

double ImageZoom::fittingFactor(const View &view) const
{
    if (m_image.isEmpty())
        return 1;
    const QSizeF space = view.size * view.pixelRatio;
    return std::min(space.width() / m_image.width(), space.height() / m_image.height());
}

QRectF ImageZoom::imageRect(const View &view) const
{
    const QPointF centre = m_fitted ? imageMiddle() : m_centre;
    return {view.middle() - centre * scale(view), QSizeF(m_image) * scale(view)};
}

void ImageZoom::zoomTo(double factor, const QPointF &anchor, const View &view)
{
    const QPointF pixel = (anchor - imageRect(view).topLeft()) / scale(view);
    m_factor = std::clamp(factor, Minimum, Maximum);
    m_fitted = false;
    m_centre = pixel + (view.middle() - anchor) / scale(view);
    keepInView();
}

void ImageZoom::pan(const QPointF &way, const View &view)
{
    m_centre -= way / scale(view);
    keepInView();
}

void ImageZoom::keepInView()
{
    m_centre.setX(std::clamp(m_centre.x(), 0.0, double(m_image.width())));
    m_centre.setY(std::clamp(m_centre.y(), 0.0, double(m_image.height())));
}
