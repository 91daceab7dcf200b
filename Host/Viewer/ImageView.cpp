// SPDX-License-Identifier: MIT
#include "Host/Viewer/ImageView.h"

#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QWheelEvent>

#include <algorithm>
#include <cmath>

namespace {

const QColor backgroundColour(62, 64, 66);
const QColor hintColour(196, 198, 200);
constexpr double zoomStep = 1.25;
constexpr qint64 rateWindow = 1000; // ms
const QPointF nowhere(-1, -1);

} // namespace

ImageView::ImageView(QWidget *parent) : QWidget(parent), m_cursor(nowhere)
{
    setObjectName(QStringLiteral("imageView"));
    setFocusPolicy(Qt::StrongFocus);
    setMouseTracking(true);
    setAttribute(Qt::WA_OpaquePaintEvent);
    m_clock.start();
}

void ImageView::showFrame(const QImage &frame)
{
    countFrame();
    setFrame(frame);
}

void ImageView::showStill(const QImage &frame)
{
    m_arrivals.clear();
    setFrame(frame);
}

void ImageView::setFrame(const QImage &frame)
{
    const bool sameSize = frame.size() == m_frame.size();
    m_frame = frame;
    if (!sameSize)
        m_centre = QRectF(m_frame.rect()).center();
    update();
    Q_EMIT statusChanged();
}

void ImageView::clear(const QString &hint)
{
    m_frame = QImage();
    m_hint = hint;
    m_arrivals.clear();
    update();
    Q_EMIT statusChanged();
}

void ImageView::countFrame()
{
    const qint64 now = m_clock.elapsed();
    m_arrivals.push_back(now);
    while (m_arrivals.front() < now - rateWindow)
        m_arrivals.pop_front();
}

double ImageView::framesPerSecond() const
{
    if (m_arrivals.size() < 2 || m_arrivals.back() == m_arrivals.front())
        return 0;
    return 1000.0 * double(m_arrivals.size() - 1) / double(m_arrivals.back() - m_arrivals.front());
}

double ImageView::fittingZoom() const
{
    if (m_frame.isNull())
        return 1;
    const QSizeF view = QSizeF(size()) * devicePixelRatioF();
    return std::min(view.width() / m_frame.width(), view.height() / m_frame.height());
}

double ImageView::zoom() const
{
    return m_fitted ? fittingZoom() : m_zoom;
}

QRectF ImageView::imageRect() const
{
    const double scale = zoom() / devicePixelRatioF();
    const QPointF centre = m_fitted ? QRectF(m_frame.rect()).center() : m_centre;
    const QPointF topLeft = QRectF(rect()).center() - centre * scale;
    return {topLeft, QSizeF(m_frame.size()) * scale};
}

void ImageView::setZoom(double zoom, const QPointF &anchor)
{
    const QRectF before = imageRect();
    const double oldScale = this->zoom() / devicePixelRatioF();
    const QPointF pixel = (anchor - before.topLeft()) / oldScale;
    m_zoom = std::clamp(zoom, minimumZoom, maximumZoom);
    m_fitted = false;
    m_centre = pixel + (QRectF(rect()).center() - anchor) / (m_zoom / devicePixelRatioF());
    keepInView();
    update();
    Q_EMIT statusChanged();
}

void ImageView::keepInView()
{
    const QRectF image(m_frame.rect());
    m_centre.setX(std::clamp(m_centre.x(), image.left(), image.right()));
    m_centre.setY(std::clamp(m_centre.y(), image.top(), image.bottom()));
}

void ImageView::zoomToFit()
{
    m_fitted = true;
    update();
    Q_EMIT statusChanged();
}

void ImageView::zoomToOriginal()
{
    setZoom(1, QRectF(rect()).center());
}

void ImageView::zoomAroundCentre(double factor)
{
    setZoom(zoom() * factor, QRectF(rect()).center());
}

void ImageView::zoomIn()
{
    zoomAroundCentre(zoomStep);
}

void ImageView::zoomOut()
{
    zoomAroundCentre(1 / zoomStep);
}

QString ImageView::pixelText() const
{
    if (m_frame.isNull() || m_cursor == nowhere)
        return QString();
    const QPointF position = (m_cursor - imageRect().topLeft()) * devicePixelRatioF() / zoom();
    const QPoint pixel(int(std::floor(position.x())), int(std::floor(position.y())));
    if (!m_frame.rect().contains(pixel))
        return QString();
    const QRgb value = m_frame.pixel(pixel);
    const QString text = m_frame.isGrayscale()
        ? QString::number(qGray(value))
        : QStringLiteral("%1, %2, %3").arg(qRed(value)).arg(qGreen(value)).arg(qBlue(value));
    return QStringLiteral("(%1, %2): %3").arg(pixel.x()).arg(pixel.y()).arg(text);
}

void ImageView::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    painter.fillRect(rect(), backgroundColour);
    if (m_frame.isNull()) {
        painter.setPen(hintColour);
        painter.drawText(rect().adjusted(24, 24, -24, -24), Qt::AlignCenter | Qt::TextWordWrap, m_hint);
        return;
    }
    painter.setRenderHint(QPainter::SmoothPixmapTransform, zoom() < 1);
    painter.drawImage(imageRect(), m_frame);
}

void ImageView::wheelEvent(QWheelEvent *event)
{
    if (m_frame.isNull() || event->angleDelta().y() == 0)
        return;
    setZoom(zoom() * std::pow(zoomStep, event->angleDelta().y() / 120.0), event->position());
    event->accept();
}

void ImageView::mousePressEvent(QMouseEvent *event)
{
    if (event->button() != Qt::LeftButton || m_frame.isNull() || m_fitted)
        return;
    m_dragFrom = event->localPos();
    setCursor(Qt::ClosedHandCursor);
}

void ImageView::mouseMoveEvent(QMouseEvent *event)
{
    m_cursor = event->localPos();
    if (event->buttons() & Qt::LeftButton && !m_fitted && !m_frame.isNull()) {
        m_centre -= (m_cursor - m_dragFrom) * devicePixelRatioF() / m_zoom;
        m_dragFrom = m_cursor;
        keepInView();
        update();
    }
    Q_EMIT statusChanged();
}

void ImageView::mouseReleaseEvent(QMouseEvent *)
{
    unsetCursor();
}

void ImageView::mouseDoubleClickEvent(QMouseEvent *)
{
    if (m_fitted)
        zoomToOriginal();
    else
        zoomToFit();
}

void ImageView::keyPressEvent(QKeyEvent *event)
{
    switch (event->key()) {
    case Qt::Key_Plus:
    case Qt::Key_Equal:
        return zoomIn();
    case Qt::Key_Minus:
        return zoomOut();
    case Qt::Key_0:
        return zoomToFit();
    case Qt::Key_1:
        return zoomToOriginal();
    default:
        QWidget::keyPressEvent(event);
    }
}

void ImageView::leaveEvent(QEvent *)
{
    m_cursor = nowhere;
    Q_EMIT statusChanged();
}

void ImageView::resizeEvent(QResizeEvent *)
{
    Q_EMIT statusChanged();
}
