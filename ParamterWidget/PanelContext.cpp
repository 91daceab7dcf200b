// SPDX-License-Identifier: MIT
#include "ParamterWidget/PanelContext.h"

#include "PanelBase/HostCall.h"
#include "ToolPage/CToolBox.h"
#include "ToolPage/ToolPageWidgetItem.h"

namespace {

/// The fourth tool box is not one of them.
constexpr int RefreshedToolBoxes = 3;

} // namespace

GenApi::INodeMap *PanelContext::nodeMap() const
{
    const HostCore::FOCUS_TYPE type = card ? HostCore::FOCUS_CARD : HostCore::FOCUS_CAMERA;
    return callHost<HostCore::GetAttrNodeMap>("PanelContext", type, deviceKey(), HostCore::NODE_MAP_DEVICE);
}

PlacedRow PanelContext::placed(RowId id) const
{
    const auto found = placedRows.find(id);
    return found == placedRows.end() ? PlacedRow() : found->second;
}

void PanelContext::showRow(RowId id, bool visible)
{
    if (ToolPageWidgetItem *const row = placed(id).row)
        row->setWidgetItemVisible(visible);
}

void PanelContext::refreshPages()
{
    for (CToolBox *toolBox : toolBoxes.mid(0, RefreshedToolBoxes))
        toolBox->updateWidget();
}

void PanelContext::log(const char *module, const QString &message) const
{
    logged.insert(message);
    logToHost(module, message.toStdString());
}

void PanelContext::logOnce(const char *module, const QString &message) const
{
    if (!logged.contains(message))
        log(module, message);
}
