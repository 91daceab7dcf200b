// SPDX-License-Identifier: MIT
#include "ToolPage/RowLabel.h"

#include <QEvent>
#include <QFontInfo>
#include <QPainter>
#include <QTextLayout>

namespace {

constexpr int OneLine = Qt::AlignLeft | Qt::AlignVCenter;
constexpr qreal TightestPitch = 1.15; ///< of lines, in units of the font's size
constexpr QChar BreakHere(0x200b); ///< takes no room

/// The text with places to break names such as AcquisitionFrameRate into their words.
QString breakable(const QString &text)
{
    QString result = text;
    for (int index = text.size() - 1; index > 0; --index) {
        if (text.at(index).isUpper() && text.at(index - 1).isLower())
            result.insert(index, BreakHere);
    }
    return result;
}

} // namespace

RowLabel::RowLabel(QWidget *parent) : QLabel(parent)
{
    setTextFormat(Qt::PlainText);
}

bool RowLabel::event(QEvent *event)
{
    if (event->type() == QEvent::ToolTip) {
        QTextLayout lines(breakable(text()), font());
        setToolTip(wrap(lines) || elidedText() == text() ? QString() : text());
    }
    return QLabel::event(event);
}

void RowLabel::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    painter.setPen(palette().color(foregroundRole()));
    QTextLayout lines(breakable(text()), font());
    if (wrap(lines))
        lines.draw(&painter, QPointF());
    else
        painter.drawText(rect(), OneLine, elidedText());
}

/// Fonts for many scripts are taller than most letters need: lines may come closer than the font wants.
bool RowLabel::wrap(QTextLayout &lines) const
{
    bool fits = true;
    lines.beginLayout();
    for (QTextLine line = lines.createLine(); line.isValid(); line = lines.createLine()) {
        line.setLineWidth(width());
        fits = fits && line.naturalTextWidth() <= width();
    }
    lines.endLayout();
    const int count = lines.lineCount();
    for (int index = 0; index < count; ++index) {
        QTextLine line = lines.lineAt(index);
        const qreal pitch = qMin(line.height(), height() / qreal(count));
        const qreal middle = height() / 2.0 + (index - (count - 1) / 2.0) * pitch;
        line.setPosition(QPointF(0, middle - line.height() / 2));
    }
    return fits && count * TightestPitch * QFontInfo(font()).pixelSize() <= height();
}

QString RowLabel::elidedText() const
{
    return fontMetrics().elidedText(text(), Qt::ElideRight, width());
}
