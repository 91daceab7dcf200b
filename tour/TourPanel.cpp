// SPDX-License-Identifier: MIT
#include "tour/TourPanel.h"

#include <QTabBar>
#include <QTabWidget>
#include <QTextBrowser>

#include "ParamterWnd/ParamterWnd.h"
#include "tour/TourHand.h"

QWidget *TourPanel::widget() const
{
    const QList<QWidget *> panels = m_panels.findChildren<QWidget *>(QStringLiteral("ParamterWidget"));
    for (QWidget *panel : panels) {
        if (panel->isVisible())
            return panel;
    }
    return nullptr;
}

QTabWidget *TourPanel::tabs() const
{
    return part<QTabWidget>("tabMainWidget");
}

QTextBrowser *TourPanel::description() const
{
    return widget() ? widget()->findChild<QTextBrowser *>() : nullptr;
}

bool TourPanel::openTab(int number)
{
    QTabBar *bar = tabs() ? tabs()->tabBar() : nullptr;
    if (!bar || number >= bar->count())
        return false;
    TourHand::click(bar, bar->tabRect(number).center());
    return bar->currentIndex() == number;
}
