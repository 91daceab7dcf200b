// SPDX-License-Identifier: MIT
#pragma once

#include <QStyledItemDelegate>

/// Shows the entries of a CComboBox, except the placeholder, and reports presses on them.
class CustomItemDelegate : public QStyledItemDelegate
{
    Q_OBJECT

public:
    using QStyledItemDelegate::QStyledItemDelegate;

    void paint(QPainter *painter, const QStyleOptionViewItem &option, const QModelIndex &index) const override;
    QSize sizeHint(const QStyleOptionViewItem &option, const QModelIndex &index) const override;
    /// Takes presses of the left button on an entry.
    bool editorEvent(QEvent *event, QAbstractItemModel *model, const QStyleOptionViewItem &option,
                     const QModelIndex &index) override;

Q_SIGNALS:
    void pressed(const QModelIndex &index);
};
