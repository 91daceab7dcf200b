// SPDX-License-Identifier: MIT
#include "ToolPage/RowLabel.h"

#include <QEvent>
#include <QPainter>

namespace {

constexpr int OneLine = Qt::AlignLeft | Qt::AlignVCenter;
constexpr int Wrapped = OneLine | Qt::TextWordWrap;
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
    if (event->type() == QEvent::ToolTip)
        setToolTip(fitsWrapped() || elidedText() == text() ? QString() : text());
    return QLabel::event(event);
}

void RowLabel::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    painter.setPen(palette().color(foregroundRole()));
    if (fitsWrapped())
        painter.drawText(rect(), Wrapped, breakable(text()));
    else
        painter.drawText(rect(), OneLine, elidedText());
}

bool RowLabel::fitsWrapped() const
{
    return rect().contains(fontMetrics().boundingRect(rect(), Wrapped, breakable(text())));
}

QString RowLabel::elidedText() const
{
    return fontMetrics().elidedText(text(), Qt::ElideRight, width());
}
