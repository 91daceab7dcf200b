// SPDX-License-Identifier: MIT
#pragma once

#include <functional>
#include <map>
#include <memory>
#include <string>
#include <utility>

#include <QSet>
#include <QString>
#include <QVector>
#include <QWidget>

#include <GenApi/GenApi.h>

#include "PanelBase/DeviceReading.h"
#include "PanelBase/Guarded.h"
#include "ParamterWidget/pages/RowSpec.h"

class CToolBox;
class ToolPageWidget;
class ToolPageWidgetItem;

/// A row of a page, and the group it belongs to.
struct PlacedRow
{
    ToolPageWidgetItem *row = nullptr;
    ToolPageWidget *group = nullptr;
};

/// What the controllers of one panel share instead of the panel itself. Owned by the panel, which owns all
/// widgets named here too; GUI thread only.
struct PanelContext
{
    QString deviceName; ///< the host's identifier of the device; empty in the default panel
    bool areaScan = false; ///< an area-scan camera
    bool card = false; ///< a card instead of a camera
    bool disabled = false; ///< the device must not be touched any more; stays true

    QVector<CToolBox *> toolBoxes; ///< of the inner tabs, first to fourth
    std::map<RowId, QWidget *> controls; ///< editors that the controllers made for rows of their own
    QVector<ToolPageWidgetItem *> rows; ///< of the curated pages, in the order of building
    std::map<RowId, PlacedRow> placedRows; ///< the rows among them that have an id
    QVector<ToolPageWidgetItem *> liveRows; ///< rows that keep showing the device while the first page is in view

    /// How the device is read; never null.
    std::unique_ptr<DeviceReading> reading = std::make_unique<DeviceReading>();

    /// Reads the device in the words of `access`; false, with nothing read, when it does not answer.
    template <class Access>
    bool read(Access &&access) const
    {
        if (reading->isSilent())
            return false;
        reading->read(nullptr, std::forward<Access>(access));
        return true;
    }

    /// To be called after features were written or commands executed beside the feature tree, which shows them then.
    std::function<void()> written = [] {};

    mutable QSet<QString> logged; ///< by log() and logOnce()

    /// The device name as the host wants it: UTF-8.
    std::string deviceKey() const { return deviceName.toStdString(); }
    /// The device's node map, owned by the host; null when it has none.
    GenApi::INodeMap *nodeMap() const;
    /// Both null without that row.
    PlacedRow placed(RowId id) const;
    /// Shows or hides a row, if there is one; a row whose feature is not available stays hidden.
    void showRow(RowId id, bool visible);
    /// Reads the pages in the first three tool boxes again, except folded groups.
    void refreshPages();
    /// Calls a function with one of the panel's controllers, unless the panel has none such or must not touch the
    /// device any more. No exception leaves it.
    template <class Controller, class Function>
    void use(const std::unique_ptr<Controller> &controller, Function &&function) const
    {
        if (controller && !disabled)
            guarded("ParamterWidget", [&] { function(*controller); });
    }
    /// Adds a line of `module` to the host's log.
    void log(const char *module, const QString &message) const;
    /// The same, unless this panel has done so before.
    void logOnce(const char *module, const QString &message) const;
};
