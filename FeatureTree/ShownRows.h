// SPDX-License-Identifier: MIT
#pragma once

#include <QModelIndex>

class QTreeView;
struct VisibilityPass;

/// Which rows of a tree over a TreeModel are shown.
namespace ShownRows {

/// Shows and hides a row and all rows under it. A category is shown as long as one of its rows is; it is never asked
/// itself. An invalid index stands for no row.
void apply(QTreeView &tree, const QModelIndex &row, VisibilityPass &pass);

/// Whether the cell is hidden by the filter or by the device, not by folding.
bool isHidden(const QTreeView &tree, const QModelIndex &cell);

/// The cell itself if its row is shown, else the folded category that it is in, or the nearest row beside it or beside
/// the category that vanished with it.
QModelIndex nearest(const QTreeView &tree, const QModelIndex &cell);

} // namespace ShownRows
