// SPDX-License-Identifier: MIT
#include "ParamterWidget/FocusReturn.h"

#include <QApplication>
#include <QEvent>
#include <QTimer>
#include <QWidget>

FocusReturn::FocusReturn(QWidget *panel) : QObject(panel), m_panel(panel)
{
    connect(qApp, &QApplication::focusChanged, this, &FocusReturn::adopt);
}

void FocusReturn::adopt(QWidget *before, QWidget *now)
{
    if (now && now == m_lost) {
        m_lost->removeEventFilter(this);
        m_lost = nullptr;
    } else if (m_isMoving && m_lost) {
        m_successor = now;
    } else if (isLost(before)) {
        m_lost = before;
        m_successor = now;
        m_isMoving = true;
        QTimer::singleShot(0, this, [this] { m_isMoving = false; });
        before->installEventFilter(this);
    } else if (now && now != m_successor) {
        m_lost = nullptr;
    }
}

bool FocusReturn::isLost(const QWidget *before) const
{
    const bool isOwn =
        before && m_panel->isAncestorOf(before) && !before->isHidden() && !before->testAttribute(Qt::WA_ForceDisabled);
    return isOwn && !(before->isVisible() && before->isEnabled());
}

bool FocusReturn::eventFilter(QObject *watched, QEvent *event)
{
    const bool isBack = event->type() == QEvent::Show || event->type() == QEvent::EnabledChange;
    if (isBack && watched == m_lost && m_lost->isVisible() && m_lost->isEnabled()
        && QApplication::focusWidget() == m_successor)
        m_lost->setFocus();
    return false;
}
