// SPDX-License-Identifier: MIT
#include "Viewer/ImageView.h"

#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QWheelEvent>

#include <algorithm>
#include <cmath>

#include "Viewer/RegionPainter.h"

namespace {

const QColor BackgroundColour(62, 64, 66);
const QColor FocusColour(79, 214, 156);
const QColor HintColour(196, 198, 200);
constexpr double ZoomStep = 1.25;
constexpr qint64 RateWindow = 1000; // ms
constexpr int Silence = 2000; // ms without a frame
constexpr Qt::MouseButtons DragButtons = Qt::MouseButtons(Qt::LeftButton) | Qt::MiddleButton;
const QPointF Nowhere(-1, -1);

} // namespace

ImageView::ImageView(QWidget *parent) : QWidget(parent), m_regions(new RegionEditor(this)), m_cursor(Nowhere)
{
    setObjectName(QStringLiteral("imageView"));
    setFocusPolicy(Qt::StrongFocus);
    setMouseTracking(true);
    setAttribute(Qt::WA_OpaquePaintEvent);
    m_clock.start();
    m_silence.setSingleShot(true);
    m_silence.setInterval(Silence);
    connect(&m_silence, &QTimer::timeout, this, [this] {
        m_arrivals.clear();
        Q_EMIT statusChanged();
    });
    connect(m_regions, &RegionEditor::changed, this, qOverload<>(&QWidget::update));
}

void ImageView::showFrame(const QImage &frame)
{
    countFrame();
    setImage(frame, QSize());
}

void ImageView::showStill(const QImage &frame)
{
    m_arrivals.clear();
    setImage(frame, QSize());
}

void ImageView::showCanvas(const QSize &size, const QString &hint, const QImage &picture, const QRect &place)
{
    m_arrivals.clear();
    m_hint = hint;
    m_below = picture;
    m_place = place;
    m_fitted = true; // there is nothing to look at closely
    setImage(QImage(), size);
}

void ImageView::clear(const QString &hint)
{
    m_arrivals.clear();
    m_hint = hint;
    setImage(QImage(), QSize());
}

void ImageView::setImage(const QImage &frame, const QSize &canvas)
{
    const QSize before = imageSize();
    m_frame = frame;
    m_canvas = canvas;
    if (imageSize() != before)
        m_centre = imageCentre();
    update();
    Q_EMIT statusChanged();
}

void ImageView::countFrame()
{
    const qint64 now = m_clock.elapsed();
    m_arrivals.push_back(now);
    while (m_arrivals.size() > 2 && m_arrivals.front() < now - RateWindow)
        m_arrivals.pop_front();
    m_silence.start();
}

double ImageView::framesPerSecond() const
{
    if (m_arrivals.size() < 2 || m_arrivals.back() == m_arrivals.front())
        return 0;
    return 1000.0 * double(m_arrivals.size() - 1) / double(m_arrivals.back() - m_arrivals.front());
}

double ImageView::fittingZoom() const
{
    if (imageSize().isEmpty())
        return 1;
    const QSizeF view = QSizeF(size()) * devicePixelRatioF();
    return std::min(view.width() / imageSize().width(), view.height() / imageSize().height());
}

double ImageView::zoom() const
{
    return m_fitted ? fittingZoom() : m_zoom;
}

QRectF ImageView::imageRect() const
{
    const double scale = zoom() / devicePixelRatioF();
    const QPointF centre = m_fitted ? imageCentre() : m_centre;
    const QPointF topLeft = QRectF(rect()).center() - centre * scale;
    return {topLeft, QSizeF(imageSize()) * scale};
}

void ImageView::setZoom(double zoom, const QPointF &anchor)
{
    if (imageSize().isEmpty())
        return;
    const QRectF before = imageRect();
    const double oldScale = this->zoom() / devicePixelRatioF();
    const QPointF pixel = (anchor - before.topLeft()) / oldScale;
    m_zoom = std::clamp(zoom, MinimumZoom, MaximumZoom);
    m_fitted = false;
    m_centre = pixel + (QRectF(rect()).center() - anchor) / (m_zoom / devicePixelRatioF());
    keepInView();
    update();
    Q_EMIT statusChanged();
}

void ImageView::keepInView()
{
    m_centre.setX(std::clamp(m_centre.x(), 0.0, double(imageSize().width())));
    m_centre.setY(std::clamp(m_centre.y(), 0.0, double(imageSize().height())));
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
    const QPointF position = (m_cursor - imageRect().topLeft()) * devicePixelRatioF() / zoom();
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
        painter.drawText(rect().adjusted(24, 24, -24, -24), Qt::AlignCenter | Qt::TextWordWrap, m_hint);
        return;
    }
    painter.setRenderHint(QPainter::SmoothPixmapTransform, zoom() < 1);
    if (isCanvas())
        paintCanvas(painter);
    painter.drawImage(imageRect(), m_frame);
    m_regions->paint(painter, placement(), rect(), hasFocus());
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
    m_panning = !m_fitted;
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
    m_centre -= (position - m_dragFrom) * devicePixelRatioF() / zoom();
    m_dragFrom = position;
    keepInView();
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

/// On a region it is one more press: hurried drags must not change the zoom.
void ImageView::mouseDoubleClickEvent(QMouseEvent *event)
{
    if (imageSize().isEmpty())
        return;
    const bool onRegion = m_regions->partAt(event->localPos(), placement()) != NoEdge;
    if (onRegion || event->button() != Qt::LeftButton)
        mousePressEvent(event);
    else if (m_fitted)
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
