// SPDX-License-Identifier: MIT
#include "ToolPage/SwitchButton.h"

#include <QPainter>
#include <QSignalBlocker>
#include <QStyleOptionButton>

#include "ToolPage/StyleSheets.h"

SwitchButton::SwitchButton(QWidget *parent) : QPushButton(parent)
{
    setCheckable(true); // assistive technology reads the checked state
    setSwitch(false);
    connect(this, &QPushButton::clicked, this, [this] { setSwitch(!m_on); });
}

void SwitchButton::setSwitch(bool on)
{
    m_on = on;
    const QSignalBlocker blocker(this);
    setChecked(on);
    setStyleSheet(StyleSheets::switchButton(on));
}

void SwitchButton::paintEvent(QPaintEvent *event)
{
    QPushButton::paintEvent(event);
    QStyleOptionButton option;
    initStyleOption(&option);
    if (!(option.state & QStyle::State_HasFocus) || !(option.state & QStyle::State_KeyboardFocusChange))
        return;
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(QPen(palette().color(QPalette::WindowText), 1.5));
    const QRectF ring = QRectF(rect()).adjusted(0.75, 0.75, -0.75, -0.75);
    painter.drawRoundedRect(ring, ring.height() / 2, ring.height() / 2);
}
