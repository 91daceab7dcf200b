// SPDX-License-Identifier: MIT
#include "ParamterWidget/PanelPlace.h"

#include <functional>

#include <QAbstractScrollArea>
#include <QLineEdit>
#include <QPushButton>
#include <QScrollBar>
#include <QTabWidget>
#include <QToolButton>

#include "FeatureTree/FeatureTreeView.h"
#include "FeatureTree/TreeItem.h"
#include "FeatureTree/TreeModel.h"
#include "ParamterWidget/ScrollReturn.h"
#include "ToolPage/CToolBox.h"
#include "ToolPage/CToolPage.h"

namespace {

const QString Tree = QStringLiteral("widget_featrue");
const QString SearchField = QStringLiteral("edit_search");
const QString FoldButton = QStringLiteral("toolButton");
const QString TitleBar = QStringLiteral("pushButtonFold");
constexpr const char *FoldedProperty = "collapse"; ///< of the fold button

FeatureTreeView *treeOf(const QWidget &panel)
{
    return panel.findChild<FeatureTreeView *>(Tree);
}

const TreeModel *modelOf(const QWidget &panel)
{
    const FeatureTreeView *const tree = treeOf(panel);
    return tree ? dynamic_cast<const TreeModel *>(tree->model()) : nullptr;
}

bool isTreeFolded(const QWidget &panel)
{
    const auto *const button = panel.findChild<QToolButton *>(FoldButton);
    return button && button->property(FoldedProperty).toBool();
}

QString nameOfPage(const QTabWidget &tabs, int index)
{
    return tabs.widget(index) ? tabs.widget(index)->objectName() : QString();
}

using RowVisitor = std::function<void(const QModelIndex &row, const QStringList &path)>;

/// Visits all rows, categories before what they list.
void visitRows(const TreeModel &model, const QModelIndex &parent, const QStringList &path, const RowVisitor &visit)
{
    for (int row = 0; row < model.rowCount(parent); ++row) {
        const QModelIndex index = model.index(row, 0, parent);
        const QStringList place = path + QStringList(model.getItem(index)->storedData(0).toString());
        visit(index, place);
        visitRows(model, index, place, visit);
    }
}

using GroupVisitor = std::function<void(CToolPage &group, const QString &name)>;

void visitGroups(const QWidget &panel, const GroupVisitor &visit)
{
    for (const CToolBox *toolBox : panel.findChildren<CToolBox *>()) {
        for (CToolPage *group : toolBox->findChildren<CToolPage *>()) {
            const auto *const titleBar = group->findChild<QPushButton *>(TitleBar);
            visit(*group, toolBox->objectName() + QLatin1Char('/') + titleBar->accessibleName());
        }
    }
}

/// Those that have a place of their own, by name.
QMap<QString, QScrollBar *> scrollBars(const QWidget &panel)
{
    QMap<QString, QScrollBar *> bars;
    for (const CToolBox *toolBox : panel.findChildren<CToolBox *>())
        bars.insert(toolBox->objectName(), toolBox->findChild<QAbstractScrollArea *>()->verticalScrollBar());
    if (const FeatureTreeView *const tree = treeOf(panel))
        bars.insert(Tree, tree->verticalScrollBar());
    return bars;
}

} // namespace

PanelPlace PanelPlace::take(QWidget &panel)
{
    PanelPlace place;
    for (const QTabWidget *tabs : panel.findChildren<QTabWidget *>())
        place.m_tabs.insert(tabs->objectName(), nameOfPage(*tabs, tabs->currentIndex()));
    for (CToolBox *toolBox : panel.findChildren<CToolBox *>())
        toolBox->setLanguage(0);
    visitGroups(panel, [&place](const CToolPage &group, const QString &name) {
        if (!group.isExpanded())
            place.m_foldedGroups += name;
    });
    const QMap<QString, QScrollBar *> bars = scrollBars(panel);
    for (auto bar = bars.begin(); bar != bars.end(); ++bar)
        place.m_scrollPositions.insert(bar.key(), bar.value()->value());
    place.takeTree(panel);
    return place;
}

void PanelPlace::takeTree(const QWidget &panel)
{
    m_isTreeFolded = isTreeFolded(panel);
    if (const auto *const field = panel.findChild<QLineEdit *>(SearchField))
        m_search = field->text();
    const TreeModel *const model = modelOf(panel);
    if (!model)
        return;
    const FeatureTreeView &tree = *treeOf(panel);
    visitRows(*model, {}, {}, [&](const QModelIndex &row, const QStringList &path) {
        if (tree.isExpanded(row))
            m_openRows += path;
        if (row == tree.currentIndex().siblingAtColumn(0))
            m_currentRow = path;
    });
}

void PanelPlace::giveBack(QWidget &panel) const
{
    for (QTabWidget *tabs : panel.findChildren<QTabWidget *>()) {
        for (int index = 0; index < tabs->count(); ++index) {
            const QString name = nameOfPage(*tabs, index);
            if (!name.isEmpty() && name == m_tabs.value(tabs->objectName()))
                tabs->setCurrentIndex(index);
        }
    }
    visitGroups(panel, [this](CToolPage &group, const QString &name) {
        if (m_foldedGroups.contains(name))
            group.collapse();
    });
    giveBackTree(panel);
    const QMap<QString, QScrollBar *> bars = scrollBars(panel);
    for (auto bar = bars.begin(); bar != bars.end(); ++bar) {
        if (m_scrollPositions.value(bar.key()) > 0)
            new ScrollReturn(bar.value(), m_scrollPositions.value(bar.key()));
    }
}

/// The search text and the fold button first: both fold and unfold rows themselves.
void PanelPlace::giveBackTree(const QWidget &panel) const
{
    const TreeModel *const model = modelOf(panel);
    if (!model)
        return;
    panel.findChild<QLineEdit *>(SearchField)->setText(m_search);
    if (isTreeFolded(panel) != m_isTreeFolded)
        panel.findChild<QToolButton *>(FoldButton)->click();
    FeatureTreeView &tree = *treeOf(panel);
    tree.holdPasses();
    visitRows(*model, {}, {}, [&](const QModelIndex &row, const QStringList &path) {
        if (tree.isExpanded(row) != m_openRows.contains(path))
            tree.setExpanded(row, m_openRows.contains(path));
        if (path == m_currentRow)
            tree.setCurrentIndex(row);
    });
    tree.releasePasses();
}
