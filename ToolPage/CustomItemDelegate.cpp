// SPDX-License-Identifier: MIT
#include "ToolPage/CustomItemDelegate.h"

#include <QMouseEvent>

#include "ToolPage/CustomItemModel.h"

namespace {

constexpr QColor MarkTone(150, 150, 150); ///< styles derive the outline of check marks from it

} // namespace

void CustomItemDelegate::paint(QPainter *painter, const QStyleOptionViewItem &option, const QModelIndex &index) const
{
    if (!index.isValid() || index.row() == CustomItemModel::Placeholder)
        return;
    QStyleOptionViewItem entry = option;
    entry.state &= ~QStyle::State_HasFocus; // it would frame the text alone; the highlight marks the whole entry
    entry.palette.setColor(QPalette::Window, MarkTone);
    QStyledItemDelegate::paint(painter, entry, index);
}

QSize CustomItemDelegate::sizeHint(const QStyleOptionViewItem &option, const QModelIndex &index) const
{
    const QSize size = QStyledItemDelegate::sizeHint(option, index);
    return index.row() == CustomItemModel::Placeholder ? QSize(size.width(), 0) : size;
}

bool CustomItemDelegate::editorEvent(QEvent *event, QAbstractItemModel *model, const QStyleOptionViewItem &option,
                                     const QModelIndex &index)
{
    const auto *const mouse = event->type() == QEvent::MouseButtonPress ? static_cast<QMouseEvent *>(event) : nullptr;
    if (!mouse || mouse->button() != Qt::LeftButton || !option.rect.contains(mouse->pos()))
        return QStyledItemDelegate::editorEvent(event, model, option, index);
    Q_EMIT pressed(index);
    return true;
}
