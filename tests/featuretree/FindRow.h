// SPDX-License-Identifier: MIT
#pragma once

#include <QAbstractItemModel>

/// The cell of the first row whose shown name is `name`; invalid if there is none.
inline QModelIndex findRow(const QAbstractItemModel &model, const char *name, int column = 0)
{
    const QModelIndexList found = model.match(model.index(0, 0), Qt::DisplayRole, QString::fromUtf8(name), 1,
                                              Qt::MatchExactly | Qt::MatchRecursive);
    return found.isEmpty() ? QModelIndex() : found.constFirst().siblingAtColumn(column);
}
