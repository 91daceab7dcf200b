// SPDX-License-Identifier: MIT
#pragma once

#include <functional>
#include <utility>

#include <QEvent>
#include <QWidget>

/// Calls a function each time that a widget is shown by its application. Owned by the widget.
class ShowWatcher : public QObject
{
public:
    ShowWatcher(QWidget *watched, std::function<void()> shown) : QObject(watched), m_shown(std::move(shown))
    {
        watched->installEventFilter(this);
    }

protected:
    bool eventFilter(QObject *, QEvent *event) override
    {
        if (event->type() == QEvent::Show && !event->spontaneous())
            m_shown();
        return false;
    }

private:
    const std::function<void()> m_shown;
};
