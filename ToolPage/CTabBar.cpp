// SPDX-License-Identifier: MIT
#include "ToolPage/CTabBar.h"

#include <QPainter>
#include <QStyleOptionTab>

#include "PanelBase/StyleSheets.h"

namespace {

constexpr int FocusFrameWidth = 2; // pixels
constexpr QMargins FocusFrameMargins(4, 4, 4, 8); // clear of the underline

} // namespace

CTabBar::CTabBar(QWidget *parent) : QTabBar(parent)
{
    setAttribute(Qt::WA_Hover); // without it styles without hover effects never report a tab under the mouse
}

QSize CTabBar::tabSizeHint(int) const
{
    return QSize(width() / qMax(1, count()), m_tabHeight);
}

void CTabBar::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    for (int index = 0; index < count(); ++index)
        paintTab(painter, index);
}

void CTabBar::paintTab(QPainter &painter, int index) const
{
    QStyleOptionTab option;
    initStyleOption(&option, index);
    const QRect tab = tabRect(index);
    const int inset = tab.width() / 6;
    const int y = tab.bottom() + 1;
    const auto underline = [&](const QColor &color, int width, int left, int right) {
        painter.setPen(QPen(color, width, Qt::SolidLine, Qt::FlatCap));
        painter.drawLine(left, y, right, y);
    };
    underline(m_baselineColor, m_baselineWidth, tab.left(), tab.right() + 1);
    if (option.state & QStyle::State_MouseOver)
        underline(m_hoverColor, m_hoverWidth, tab.left() + inset, tab.right() - inset + 1);
    if (option.state & QStyle::State_Selected)
        underline(m_selectedColor, m_selectedWidth, tab.left() + inset, tab.right() - inset + 1);
    painter.setPen(Qt::black);
    painter.setBrush(Qt::NoBrush);
    painter.drawText(tab, Qt::AlignCenter, fontMetrics().elidedText(tabText(index), Qt::ElideRight, tab.width()));
    if (option.state & QStyle::State_HasFocus) {
        painter.setPen(QPen(StyleSheets::FocusColor, FocusFrameWidth));
        painter.drawRect(tab.marginsRemoved(FocusFrameMargins));
    }
}
