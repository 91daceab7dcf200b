// SPDX-License-Identifier: MIT
#include "ParamterWidget/pages/PageBuilder.h"

#include "PanelBase/Guarded.h"
#include "ParamterWidget/NodeAccess.h"
#include "ParamterWidget/PanelContext.h"
#include "ToolPage/CToolBox.h"
#include "ToolPage/ToolPageWidget.h"
#include "ToolPage/ToolPageWidgetItem.h"

namespace {

QStringList texts(const BilingualText &text)
{
    return {QString::fromUtf8(text.english), QString::fromUtf8(text.chinese)};
}

} // namespace

PageBuilder::PageBuilder(PanelContext &context, QWidget *panel, GenApi::INodeMap *nodeMap)
    : m_context(context), m_panel(panel), m_nodeMap(nodeMap)
{ }

QVector<ToolPageWidgetItem *> PageBuilder::build(const TabSpec &tab, CToolBox *toolBox)
{
    QVector<ToolPageWidgetItem *> rows;
    for (const GroupSpec &group : tab.groups) {
        auto *const page = new ToolPageWidget(m_panel);
        page->setTitleStays(group.titleStays);
        toolBox->addWidget(QString::fromUtf8(group.title.english), QString::fromUtf8(group.title.chinese), page);
        buildRows(group, page, rows);
    }
    m_context.rows += rows;
    return rows;
}

/// Pages and rows are placed before they are filled: all that moves with a widget is styled anew, which is slow.
void PageBuilder::buildRows(const GroupSpec &group, ToolPageWidget *page, QVector<ToolPageWidgetItem *> &rows)
{
    for (const RowSpec &spec : group.rows) {
        auto *const row = new ToolPageWidgetItem(m_panel);
        page->addWidget(row);
        fillRow(spec, row);
        rows.append(row);
        if (spec.id != RowId::None)
            m_context.placedRows[spec.id] = {row, page};
    }
}

void PageBuilder::fillRow(const RowSpec &spec, ToolPageWidgetItem *row)
{
    row->setObjectName(QString::fromUtf8(spec.label.english));
    row->deviceName = m_context.deviceName;
    row->setReading(m_context.reading.get());
    if (spec.lookup == Lookup::Custom || spec.lookup == Lookup::Nothing)
        row->setItemInfo(texts(spec.label), texts(spec.description), control(spec));
    else
        row->setItemInfo(texts(spec.label), texts(spec.description), find(spec), spec.flag != RowSpec::AlwaysShown);
    if (spec.flag == RowSpec::Live)
        m_context.liveRows.append(row);
}

/// Null for a label without a control, and where the control could not be made.
QWidget *PageBuilder::control(const RowSpec &spec) const
{
    const auto made = m_context.controls.find(spec.id);
    return spec.lookup == Lookup::Custom && made != m_context.controls.end() ? made->second : nullptr;
}

/// A look-up that throws costs its row only: rows without a page would lie about in the panel.
GenApi::INode *PageBuilder::find(const RowSpec &spec) const
{
    if (spec.lookup == Lookup::Alias)
        return FindNodeByLogicalName(QString::fromUtf8(spec.feature), m_nodeMap);
    GenApi::INode *node = nullptr;
    guarded("PageBuilder", [&] { node = m_nodeMap->GetNode(spec.feature); });
    return node;
}
