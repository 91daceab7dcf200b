// SPDX-License-Identifier: MIT
#include "Viewer/GlyphIcons.h"

#include <QGuiApplication>
#include <QIconEngine>
#include <QPainter>
#include <QPainterPath>
#include <QPalette>
#include <QPixmap>
#include <QTextStream>

namespace {

struct GlyphSpec
{
    Glyph glyph;
    /// A drawing on a 24 x 24 grid: M x y (move), L x y (line), Z (close), R x y w h (rounded rectangle),
    /// O x y r (circle), A x y r from sweep (arc, degrees counter-clockwise from three o'clock).
    const char *path;
    bool filled;
};

constexpr GlyphSpec Glyphs[] = {
    {Glyph::Refresh, "A 12 12 7 60 300 M 15.5 2.5 L 15.5 6.5 L 19.5 6.5", false},
    {Glyph::Open, "M 3 9 L 8 9 M 3 15 L 8 15 M 8 6 L 8 18 L 11 18 A 11 12 6 270 180 L 8 6 M 17 12 L 21 12", false},
    {Glyph::Close, "M 3 9 L 7 9 M 3 15 L 7 15 M 7 6 L 7 18 L 8 18 A 8 12 6 270 180 L 7 6 M 17 9 L 22 15 M 22 9 L 17 15",
     false},
    {Glyph::Start, "M 7 4 L 20 12 L 7 20 Z", true},
    {Glyph::Stop, "R 6 6 12 12", true},
    {Glyph::File, "M 6 3 L 14 3 L 19 8 L 19 21 L 6 21 Z M 14 3 L 14 8 L 19 8 M 9 13 L 16 13 M 9 17 L 16 17", false},
    {Glyph::Save, "M 4 15 L 4 20 L 20 20 L 20 15 M 12 3 L 12 15 M 7.5 10.5 L 12 15 L 16.5 10.5", false},
    {Glyph::Load, "M 4 15 L 4 20 L 20 20 L 20 15 M 12 15 L 12 3 M 7.5 7.5 L 12 3 L 16.5 7.5", false},
    {Glyph::Compare, "R 3 4 7 16 R 14 4 7 16 M 5 8.5 L 8 8.5 M 5 12 L 8 12 M 16 8.5 L 19 8.5 M 16 15.5 L 19 15.5",
     false},
    {Glyph::ZoomFit, "M 3 8 L 3 4 L 8 4 M 16 4 L 21 4 L 21 8 M 21 16 L 21 20 L 16 20 M 8 20 L 3 20 L 3 16 R 7 8 10 8",
     false},
    {Glyph::ZoomOriginal, "R 3 4 18 16 M 7.5 10 L 9 9 L 9 15 M 15 10 L 16.5 9 L 16.5 15 O 12.4 10.6 0.4 O 12.4 14 0.4",
     false},
    {Glyph::ZoomIn, "O 10.5 10.5 6.5 M 15.5 15.5 L 21 21 M 10.5 7.5 L 10.5 13.5 M 7.5 10.5 L 13.5 10.5", false},
    {Glyph::ZoomOut, "O 10.5 10.5 6.5 M 15.5 15.5 L 21 21 M 7.5 10.5 L 13.5 10.5", false},
    {Glyph::Copy, "R 8 8 12 13 M 5 16 L 4 16 L 4 3 L 15 3 L 15 5", false},
    {Glyph::Clear, "M 4 6 L 20 6 M 9 6 L 9 3 L 15 3 L 15 6 M 6 6 L 7 21 L 17 21 L 18 6 M 10 10 L 10 17 M 14 10 L 14 17",
     false},
    {Glyph::Camera, "R 2.5 7 15 12 O 10 13 3.2 M 17.5 11 L 21.5 9 L 21.5 17 L 17.5 15", false},
    {Glyph::Card,
     "R 3 5 18 11 M 6 16 L 6 19 M 9 16 L 9 19 M 12 16 L 12 19 M 15 16 L 15 19 R 7 8 5 5 M 15.5 8.5 L 18 8.5 M 15.5 12 "
     "L 18 12",
     false},
};

const GlyphSpec *specOf(Glyph glyph)
{
    for (const GlyphSpec &spec : Glyphs) {
        if (spec.glyph == glyph)
            return &spec;
    }
    return nullptr;
}

QPointF pointOf(QTextStream &in)
{
    double x = 0;
    double y = 0;
    in >> x >> y;
    return {x, y};
}

QRectF circle(const QPointF &centre, double radius)
{
    return {centre.x() - radius, centre.y() - radius, 2 * radius, 2 * radius};
}

void addElement(QPainterPath &path, QChar command, QTextStream &in)
{
    if (command == QLatin1Char('Z')) {
        path.closeSubpath();
        return;
    }
    const QPointF point = pointOf(in);
    double a = 0;
    double b = 0;
    double c = 0;
    switch (command.toLatin1()) {
    case 'M':
        path.moveTo(point);
        break;
    case 'L':
        path.lineTo(point);
        break;
    case 'R':
        in >> a >> b;
        path.addRoundedRect(QRectF(point, QSizeF(a, b)), 1.2, 1.2);
        break;
    case 'O':
        in >> a;
        path.addEllipse(circle(point, a));
        break;
    case 'A':
        in >> a >> b >> c;
        if (path.elementCount() == 0)
            path.arcMoveTo(circle(point, a), b);
        path.arcTo(circle(point, a), b, c);
        break;
    }
}

QPainterPath pathOf(const GlyphSpec &spec)
{
    QPainterPath path;
    QString text = QString::fromLatin1(spec.path);
    QTextStream in(&text);
    QString command;
    for (in >> command; !command.isEmpty(); in >> command)
        addElement(path, command.at(0), in);
    return path;
}

class GlyphEngine : public QIconEngine
{
public:
    GlyphEngine(Glyph glyph, const QColor &mark) : m_glyph(glyph), m_mark(mark) { }

    void paint(QPainter *painter, const QRect &rect, QIcon::Mode mode, QIcon::State) override
    {
        const GlyphSpec *spec = specOf(m_glyph);
        if (!spec)
            return;
        painter->save();
        painter->setRenderHint(QPainter::Antialiasing);
        painter->translate(rect.topLeft());
        painter->scale(rect.width() / 24.0, rect.height() / 24.0);
        paintGlyph(*painter, *spec, colourFor(mode));
        paintMark(*painter);
        painter->restore();
    }

    QPixmap pixmap(const QSize &size, QIcon::Mode mode, QIcon::State state) override
    {
        QPixmap result(size);
        result.fill(Qt::transparent);
        QPainter painter(&result);
        paint(&painter, QRect(QPoint(), size), mode, state);
        return result;
    }

    QIconEngine *clone() const override { return new GlyphEngine(m_glyph, m_mark); }

private:
    static QColor colourFor(QIcon::Mode mode)
    {
        const bool disabled = mode == QIcon::Disabled;
        return QGuiApplication::palette().color(disabled ? QPalette::Disabled : QPalette::Active, QPalette::ButtonText);
    }

    static void paintGlyph(QPainter &painter, const GlyphSpec &spec, const QColor &colour)
    {
        painter.setPen(QPen(colour, 1.6, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
        painter.setBrush(spec.filled ? QBrush(colour) : QBrush(Qt::NoBrush));
        painter.drawPath(pathOf(spec));
    }

    void paintMark(QPainter &painter) const
    {
        if (!m_mark.isValid())
            return;
        painter.setPen(QPen(Qt::white, 1.5));
        painter.setBrush(m_mark);
        painter.drawEllipse(circle({19, 19}, 4.5));
    }

    Glyph m_glyph;
    QColor m_mark;
};

} // namespace

QIcon glyphIcon(Glyph glyph, const QColor &mark)
{
    return glyph == Glyph::None ? QIcon() : QIcon(new GlyphEngine(glyph, mark));
}
