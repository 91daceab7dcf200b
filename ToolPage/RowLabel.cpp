// SPDX-License-Identifier: MIT
#include "ToolPage/RowLabel.h"

#include <QEvent>
#include <QPainter>

namespace {

constexpr int OneLine = Qt::AlignLeft | Qt::AlignVCenter;
constexpr int Wrapped = OneLine | Qt::TextWordWrap;

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
        painter.drawText(rect(), Wrapped, text());
    else
        painter.drawText(rect(), OneLine, elidedText());
}

bool RowLabel::fitsWrapped() const
{
    return rect().contains(fontMetrics().boundingRect(rect(), Wrapped, text()));
}

QString RowLabel::elidedText() const
{
    return fontMetrics().elidedText(text(), Qt::ElideRight, width());
}
