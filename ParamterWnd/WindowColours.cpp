// SPDX-License-Identifier: MIT
#include "ParamterWnd/WindowColours.h"

#include <QChildEvent>
#include <QWidget>

#include "Resources/LightPalette.h"

namespace {

/// What nobody has set for the widget itself, as style sheets do, becomes light.
void complete(QWidget *widget)
{
    const QPalette own = widget->palette();
    QPalette colours = LightPalette::palette();
    bool isComplete = true;
    for (int role = 0; role < QPalette::NColorRoles; ++role) {
        const bool isOwn = own.isBrushSet(QPalette::Active, QPalette::ColorRole(role));
        isComplete = isComplete && isOwn;
        for (int group = 0; isOwn && group < QPalette::NColorGroups; ++group)
            colours.setBrush(QPalette::ColorGroup(group), QPalette::ColorRole(role),
                             own.brush(QPalette::ColorGroup(group), QPalette::ColorRole(role)));
    }
    if (!isComplete)
        widget->setPalette(colours);
}

} // namespace

WindowColours::WindowColours(QWidget *window) : QObject(window)
{
    adopt(window);
}

bool WindowColours::eventFilter(QObject *watched, QEvent *event)
{
    switch (event->type()) {
    case QEvent::ChildAdded:
        adopt(static_cast<QChildEvent *>(event)->child());
        break;
    case QEvent::Polish: // a tool tip has got its own colours, a style sheet sets those of its texts after this
        static_cast<QWidget *>(watched)->setPalette(LightPalette::palette());
        break;
    case QEvent::PaletteChange: // a change of style sheets brings back the colours from before the first one
        complete(static_cast<QWidget *>(watched));
        break;
    default:
        break;
    }
    return false;
}

void WindowColours::adopt(QObject *object)
{
    if (!object->isWidgetType())
        return;
    object->installEventFilter(this);
    complete(static_cast<QWidget *>(object));
    for (QObject *child : object->children())
        adopt(child);
}
