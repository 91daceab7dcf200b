// SPDX-License-Identifier: MIT
#include "ToolPage/CTabWidget.h"

#include "ToolPage/CTabBar.h"

CTabWidget::CTabWidget(QWidget *parent) : QTabWidget(parent)
{
    setTabBar(new CTabBar(this));
}

void CTabWidget::resizeEvent(QResizeEvent *event)
{
    QTabWidget::resizeEvent(event);
    tabBar()->setFixedWidth(width());
}
