// SPDX-License-Identifier: MIT
#include "ToolPage/SwitchButton.h"

#include <QSignalBlocker>
#include <QStyleOptionButton>
#include <QStylePainter>

#include "PanelBase/StyleSheets.h"

namespace {

constexpr qreal FocusRingWidth = 1.5; // pixels

} // namespace

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
    const QString style = StyleSheets::switchButton(on);
    if (style != styleSheet()) // styling anew is slow
        setStyleSheet(style);
}

void SwitchButton::paintEvent(QPaintEvent *)
{
    QStyleOptionButton option;
    initStyleOption(&option);
    const bool showsFocus = hasFocus() && (option.state & QStyle::State_KeyboardFocusChange);
    option.state &= ~QStyle::State_HasFocus; // the style's rectangle does not fit the round switch
    QStylePainter painter(this);
    painter.drawControl(QStyle::CE_PushButton, option);
    if (!showsFocus)
        return;
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(QPen(StyleSheets::FocusColor, FocusRingWidth));
    const QRectF ring = QRectF(rect()).marginsRemoved(QMarginsF() + FocusRingWidth / 2);
    painter.drawRoundedRect(ring, ring.height() / 2, ring.height() / 2);
}
