// SPDX-License-Identifier: MIT
#include "CuratedPanel.h"

#include <QLabel>

QStringList tabTexts(const QTabWidget *tabs)
{
    QStringList texts;
    for (int tab = 0; tab < tabs->count(); ++tab)
        texts << tabs->tabText(tab);
    return texts;
}

CuratedPanel::CuratedPanel(const CuratedFeatures &changes, PageSet pageSet,
                           const std::function<void(CuratedPanel &)> &prepare)
    : camera(changes)
{
    host.reset();
    host.setNodeMap(HostCore::FOCUS_CAMERA, "cam", camera.map);
    camera.port.resetCounters();
    panel->setAreaScan(true);
    panel->setPageSet(pageSet);
    if (prepare)
        prepare(*this);
    panel->initUI("cam"_s);
    panel->retranslate(0);
}

ToolPageWidgetItem *CuratedPanel::row(const char *label) const
{
    return panel->findChild<ToolPageWidgetItem *>(QString::fromUtf8(label));
}

QStringList CuratedPanel::labels(const char *toolBox) const
{
    const QObject *const parent = toolBox ? panel->findChild<QObject *>(QLatin1String(toolBox)) : panel.get();
    QStringList texts;
    for (const ToolPageWidgetItem *row : parent->findChildren<ToolPageWidgetItem *>()) {
        if (!row->isHidden())
            texts << row->findChild<QLabel *>()->text();
    }
    return texts;
}

QStringList CuratedPanel::groups() const
{
    QStringList titles;
    for (const char *toolBox : {"firstToolBox", "secondToolBox", "thirdToolBox", "fourthToolBox"}) {
        const auto *const page = panel->findChild<QObject *>(QLatin1String(toolBox));
        for (const auto *bar : page->findChildren<QPushButton *>("pushButtonFold"_s))
            titles << bar->accessibleName();
    }
    return titles;
}

void CuratedPanel::poke(const char *feature, uint64_t value)
{
    camera.port.poke(camera.address(feature), value);
    camera.map->InvalidateNodes();
}
