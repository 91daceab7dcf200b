// SPDX-License-Identifier: MIT
#include "ParamterWidget/ShownAgain.h"

#include <QEvent>
#include <QWidget>

ShownAgain::ShownAgain(QWidget *panel) : QObject(panel)
{
    panel->installEventFilter(this);
}

void ShownAgain::watch(QWidget *page, const std::function<void()> &shown)
{
    m_pages.insert(page, shown);
    page->installEventFilter(this);
}

/// A panel is told after its pages that it is shown.
bool ShownAgain::eventFilter(QObject *watched, QEvent *event)
{
    if (event->type() != QEvent::Show)
        return false;
    m_panelWasShown = m_panelWasShown || watched == parent();
    if (!m_panelWasShown || event->spontaneous())
        return false;
    for (const auto &shown : m_pages.values(watched))
        shown();
    return false;
}
