// SPDX-License-Identifier: MIT
#pragma once

#include <QVector>

#include <GenApi/GenApi.h>

#include "ParamterWidget/pages/RowSpec.h"

class CToolBox;
class QWidget;
class ToolPageWidget;
class ToolPageWidgetItem;
struct PanelContext;

/// Makes rows and groups out of the tables of a catalogue. GUI thread only.
class PageBuilder
{
public:
    /// Rows get bound to the features of `nodeMap`; they and their groups become children of `panel`, and of the
    /// tool box that shows them.
    PageBuilder(PanelContext &context, QWidget *panel, GenApi::INodeMap *nodeMap);

    /// Appends the groups of a tab to a tool box and returns their rows in reading order. Rows with a custom
    /// editor take it from PanelContext::controls; a row whose feature the camera lacks stays hidden. Labels
    /// get their texts with CToolBox::setLanguage(); the object name of a row is its English label.
    QVector<ToolPageWidgetItem *> build(const TabSpec &tab, CToolBox *toolBox);

private:
    void buildRows(const GroupSpec &group, ToolPageWidget *page, QVector<ToolPageWidgetItem *> &rows);
    void fillRow(const RowSpec &spec, ToolPageWidgetItem *row);
    QWidget *control(const RowSpec &spec) const;
    GenApi::INode *find(const RowSpec &spec) const;

    PanelContext &m_context;
    QWidget *m_panel;
    GenApi::INodeMap *m_nodeMap;
};
