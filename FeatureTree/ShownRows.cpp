// SPDX-License-Identifier: MIT
#include "FeatureTree/ShownRows.h"

#include <QTreeView>

#include "FeatureTree/TreeItem.h"
#include "FeatureTree/TreeModel.h"
#include "FeatureTree/VisibilityPass.h"

namespace {

constexpr int NameColumn = 0;

void hideRow(QTreeView &tree, int row, const QModelIndex &parent, bool hide)
{
    if (tree.isRowHidden(row, parent) != hide)
        tree.setRowHidden(row, parent, hide);
}

/// True if all rows under `parent` are hidden then, and so their parent is to be.
bool hideRowsOf(QTreeView &tree, const TreeModel &model, const QModelIndex &parent, VisibilityPass &pass)
{
    TreeItem *item = model.getItem(parent);
    bool isAllHidden = true;
    for (int row = 0; row < item->childCount(); ++row) {
        TreeItem *child = item->child(row);
        const bool hide = child->childCount() > 0 ? hideRowsOf(tree, model, model.index(row, NameColumn, parent), pass)
                                                  : !child->getVisiable(pass);
        hideRow(tree, row, parent, hide);
        isAllHidden = isAllHidden && hide;
    }
    return isAllHidden;
}

} // namespace

void ShownRows::apply(QTreeView &tree, const QModelIndex &row, VisibilityPass &pass)
{
    const auto *model = qobject_cast<const TreeModel *>(row.model());
    if (model && row.isValid())
        hideRow(tree, row.row(), row.parent(), hideRowsOf(tree, *model, row, pass));
}

bool ShownRows::isHidden(const QTreeView &tree, const QModelIndex &cell)
{
    return cell.isValid() && (tree.isRowHidden(cell.row(), cell.parent()) || isHidden(tree, cell.parent()));
}

QModelIndex ShownRows::nearest(const QTreeView &tree, const QModelIndex &cell)
{
    if (!cell.isValid())
        return cell;
    const QModelIndex parent = cell.parent();
    const QModelIndex shownParent = nearest(tree, parent);
    if (shownParent != parent || (parent.isValid() && !tree.isExpanded(parent)))
        return shownParent;
    for (int distance = 0; distance < tree.model()->rowCount(parent); ++distance) {
        for (const int row : {cell.row() + distance, cell.row() - distance}) {
            const QModelIndex nearby = cell.sibling(row, cell.column());
            if (nearby.isValid() && !tree.isRowHidden(row, parent))
                return nearby;
        }
    }
    return {};
}
