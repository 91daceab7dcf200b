// SPDX-License-Identifier: MIT
#pragma once

#include <string>

#include <QString>
#include <QVector>
#include <QWidget>

#include <GenApi/GenApi.h>

class CToolBox;
class ToolPageWidgetItem;

/// What the controllers of one panel share instead of the panel itself. Owned by the panel, which owns all
/// widgets named here too; GUI thread only.
struct PanelContext
{
    QString deviceName; ///< the host's identifier of the device; empty in the default panel
    bool areaScan = false; ///< an area-scan camera
    bool card = false; ///< a card instead of a camera
    int language = 0; ///< 0 English, any other value Chinese

    QVector<CToolBox *> toolBoxes; ///< of the inner tabs, first to fourth
    QVector<ToolPageWidgetItem *> rows; ///< of the curated pages, in the order of building
    QVector<ToolPageWidgetItem *> liveRows; ///< rows that follow the device while the first page is in view
    QVector<QWidget *> roiHiddenWidgets; ///< hidden while a region is being drawn
    ToolPageWidgetItem *selectedRow = nullptr; ///< the row clicked last
    ToolPageWidgetItem *userSetLoadRow = nullptr; ///< disabled while the camera acquires; null without that page

    /// The device name as the host wants it: UTF-8.
    std::string deviceKey() const { return deviceName.toStdString(); }
    /// The device's node map, owned by the host; null when it has none.
    GenApi::INodeMap *nodeMap() const;
};
