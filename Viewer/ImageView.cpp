// SPDX-License-Identifier: MIT
#include "Viewer/ImageView.h"

#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QWheelEvent>

#include <cmath>

#include "Viewer/RegionPainter.h"

namespace {

const QColor BackgroundColour(62, 64, 66);
const QColor FocusColour(79, 214, 156);
const QColor HintColour(196, 198, 200);
constexpr double ZoomStep = 1.25;
constexpr Qt::MouseButtons DragButtons = Qt::MouseButtons(Qt::LeftButton) | Qt::MiddleButton;
const QPointF Nowhere(-1, -1);

} // namespace

ImageView::ImageView(QWidget *parent)
    : QWidget(parent), m_regions(new RegionEditor(this)), m_rate(new FrameRate(this)), m_cursor(Nowhere)
{
    setObjectName(QStringLiteral("imageView"));
    setFocusPolicy(Qt::StrongFocus);
    setMouseTracking(true);
    setAttribute(Qt::WA_OpaquePaintEvent);
    connect(m_rate, &FrameRate::ended, this, &ImageView::statusChanged);
    connect(m_regions, &RegionEditor::changed, this, qOverload<>(&QWidget::update));
}

void ImageView::showFrame(const QImage &frame)
{
    m_rate->count();
    setImage(frame, QSize());
}

void ImageView::showStill(const QImage &frame)
{
    m_rate->restart();
    setImage(frame, QSize());
}

void ImageView::showCanvas(const QSize &size, const QString &hint, const QImage &picture, const QRect &place)
{
    m_rate->restart();
    m_hint = hint;
    m_below = picture;
    m_place = place;
    m_zoom.fit(); // there is nothing to look at closely
    setImage(QImage(), size);
}

void ImageView::clear(const QString &hint)
{
    m_rate->restart();
    m_hint = hint;
    setImage(QImage(), QSize());
}

void ImageView::setNotice(const QString &notice)
{
    m_notice = notice;
    update();
}

void ImageView::setImage(const QImage &frame, const QSize &canvas)
{
    m_frame = frame;
    m_canvas = canvas;
    m_zoom.setImageSize(imageSize());
    update();
    Q_EMIT statusChanged();
}

void ImageView::setZoom(double factor, const QPointF &anchor)
{
    if (imageSize().isEmpty())
        return;
    m_zoom.zoomTo(factor, anchor, space());
    update();
    Q_EMIT statusChanged();
}

void ImageView::zoomToFit()
{
    m_zoom.fit();
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
    zoomAroundCentre(ZoomStep);
}

void ImageView::zoomOut()
{
    zoomAroundCentre(1 / ZoomStep);
}

QString ImageView::pixelText() const
{
    if (m_frame.isNull() || m_cursor == Nowhere)
        return QString();
    const QPointF position = (m_cursor - imageRect().topLeft()) / m_zoom.scale(space());
    const QPoint pixel(int(std::floor(position.x())), int(std::floor(position.y())));
    if (!m_frame.rect().contains(pixel))
        return QString();
    const QString meaning = m_pixelReader ? m_pixelReader(pixel) : QString();
    if (!meaning.isEmpty())
        return meaning;
    const QRgb value = m_frame.pixel(pixel);
    const QString text = m_frame.format() == QImage::Format_Grayscale8
        ? QString::number(qGray(value))
        : QStringLiteral("%1, %2, %3").arg(qRed(value)).arg(qGreen(value)).arg(qBlue(value));
    return QStringLiteral("(%1, %2): %3").arg(pixel.x()).arg(pixel.y()).arg(text);
}

void ImageView::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    painter.fillRect(rect(), BackgroundColour);
    paintContent(painter);
    if (!hasFocus())
        return;
    painter.setPen(QPen(FocusColour, 2));
    painter.setBrush(Qt::NoBrush);
    painter.drawRect(rect().adjusted(1, 1, -1, -1));
}

void ImageView::paintContent(QPainter &painter) const
{
    if (imageSize().isEmpty()) {
        painter.setPen(HintColour);
        painter.drawText(rect().adjusted(24, 24, -24, -24), Qt::AlignCenter | Qt::TextWordWrap,
                         m_notice.isEmpty() ? m_hint : m_notice);
        return;
    }
    painter.setRenderHint(QPainter::SmoothPixmapTransform, zoom() < 1);
    if (isCanvas())
        paintCanvas(painter);
    painter.drawImage(imageRect(), m_frame);
    m_regions->paint(painter, placement(), rect(), hasFocus());
    paintHint(painter, m_notice, rect(), rect());
}

void ImageView::paintCanvas(QPainter &painter) const
{
    paintPlate(painter, imageRect());
    painter.save();
    painter.setClipRect(imageRect());
    painter.drawImage(placement().toView(m_place), m_below);
    painter.restore();
    paintHint(painter, m_hint, imageRect(), rect());
}

void ImageView::wheelEvent(QWheelEvent *event)
{
    if (event->angleDelta().y() == 0)
        return;
    setZoom(zoom() * std::pow(ZoomStep, event->angleDelta().y() / 120.0), event->position());
    event->accept();
}

void ImageView::mousePressEvent(QMouseEvent *event)
{
    const bool isSole = (event->buttons() & DragButtons) == event->button();
    if (!isSole || imageSize().isEmpty())
        return;
    m_cursor = event->localPos();
    m_dragButton = event->button();
    if (m_dragButton == Qt::LeftButton && m_regions->press(m_cursor, placement()))
        return;
    m_panning = !isFitted();
    m_dragFrom = m_cursor;
    showCursor();
}

void ImageView::mouseMoveEvent(QMouseEvent *event)
{
    m_cursor = event->localPos();
    if (m_panning)
        panTo(m_cursor);
    else if (m_regions->isDragging())
        m_regions->drag(m_cursor, placement());
    else if (event->buttons() == Qt::NoButton)
        showCursor();
    Q_EMIT statusChanged();
}

void ImageView::panTo(const QPointF &position)
{
    m_zoom.pan(position - m_dragFrom, space());
    m_dragFrom = position;
    update();
}

void ImageView::mouseReleaseEvent(QMouseEvent *event)
{
    if (event->button() != m_dragButton)
        return;
    m_dragButton = Qt::NoButton;
    m_panning = false;
    m_regions->release();
    showCursor();
}

void ImageView::showCursor()
{
    const RegionEdges part = imageSize().isEmpty() ? RegionEdges() : m_regions->partAt(m_cursor, placement());
    setCursor(m_panning ? Qt::ClosedHandCursor : regionCursor(part));
}

/// A double click on a region is just another press, so that two quick drags do not change the zoom.
void ImageView::mouseDoubleClickEvent(QMouseEvent *event)
{
    if (imageSize().isEmpty())
        return;
    const bool onRegion = m_regions->partAt(event->localPos(), placement()) != NoEdge;
    if (onRegion || event->button() != Qt::LeftButton)
        mousePressEvent(event);
    else if (isFitted())
        zoomToOriginal();
    else
        zoomToFit();
}

void ImageView::keyPressEvent(QKeyEvent *event)
{
    if (!imageSize().isEmpty() && m_regions->press(*event, placement()))
        return;
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

/// Tab walks through the regions before it leaves the view.
bool ImageView::focusNextPrevChild(bool next)
{
    return m_regions->selectNext(next) || QWidget::focusNextPrevChild(next);
}

void ImageView::focusInEvent(QFocusEvent *event)
{
    update();
    QWidget::focusInEvent(event);
}

void ImageView::focusOutEvent(QFocusEvent *event)
{
    update();
    QWidget::focusOutEvent(event);
}

void ImageView::leaveEvent(QEvent *)
{
    m_cursor = Nowhere;
    Q_EMIT statusChanged();
}

void ImageView::resizeEvent(QResizeEvent *)
{
    Q_EMIT statusChanged();
}
