// SPDX-License-Identifier: MIT
#include "PanelBase/PressElsewhere.h"

#include <utility>

#include <QCoreApplication>
#include <QMouseEvent>
#include <QPointer>
#include <QWidget>

namespace {

const QWidget *panelOf(const QWidget *editor)
{
    const QWidget *panel = editor;
    while (!panel->isWindow() && !dynamic_cast<const EditScope *>(panel))
        panel = panel->parentWidget();
    return panel;
}

} // namespace

PressElsewhere::PressElsewhere(QWidget *editor, std::function<void()> onPress, QObject *parent)
    : QObject(parent), m_editor(editor), m_onPress(std::move(onPress))
{ }

void PressElsewhere::start()
{
    QCoreApplication::instance()->installEventFilter(this);
}

void PressElsewhere::stop()
{
    QCoreApplication::instance()->removeEventFilter(this);
}

bool PressElsewhere::eventFilter(QObject *watched, QEvent *event)
{
    const bool isPress = event->type() == QEvent::MouseButtonPress || event->type() == QEvent::MouseButtonDblClick;
    const QPointer<QWidget> pressed = isPress ? qobject_cast<QWidget *>(watched) : nullptr;
    if (!pressed || !m_editor->isVisible() || !m_editor->isEnabled()
        || !isElsewhere(pressed, static_cast<QMouseEvent *>(event)->pos()))
        return false;
    const bool wasUsable = pressed->isEnabled();
    m_onPress();
    return !pressed || !pressed->isVisible() || (wasUsable && !pressed->isEnabled());
}

/// A press that the editor has no use for goes on to what the editor lies in: it is none elsewhere.
bool PressElsewhere::isElsewhere(const QWidget *pressed, const QPoint &position) const
{
    const QWidget *const panel = panelOf(m_editor);
    if (panel != pressed && !panel->isAncestorOf(pressed))
        return false;
    if (pressed->isAncestorOf(m_editor))
        return !m_editor->rect().contains(m_editor->mapFrom(pressed, position));
    return pressed != m_editor && !m_editor->isAncestorOf(pressed);
}
