// SPDX-License-Identifier: MIT
#include "CuratedPanel.h"

#include <QLabel>
#include <QTabWidget>

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
    panel->initUI(QStringLiteral("cam"));
    panel->retranslate(0);
}

CuratedPanel::~CuratedPanel() = default;

ToolPageWidgetItem *CuratedPanel::row(const char *label) const
{
    return panel->findChild<ToolPageWidgetItem *>(QString::fromUtf8(label));
}

QStringList CuratedPanel::labels(const char *toolBox) const
{
    const QObject *const parent =
        toolBox ? panel->findChild<QObject *>(QString::fromLatin1(toolBox)) : static_cast<QObject *>(panel.get());
    QStringList texts;
    for (const ToolPageWidgetItem *row : parent->findChildren<ToolPageWidgetItem *>()) {
        if (!row->isHidden())
            texts << row->findChild<QLabel *>()->text();
    }
    return texts;
}

QTabWidget *CuratedPanel::innerTabs() const
{
    return panel->findChild<QTabWidget *>(QStringLiteral("tabWidget"));
}
