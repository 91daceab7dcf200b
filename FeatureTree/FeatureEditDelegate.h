// SPDX-License-Identifier: MIT
#pragma once

#include <QModelIndex>
#include <QStyledItemDelegate>

#include <GenApi/GenApi.h>

class QTreeView;
class TreeItem;

/// Edits and paints the value column of the feature tree: an editor by the feature's type and representation, gray text
/// for values that cannot be written, a button for commands. No exception of a node leaves it.
///
/// An editor whose content the user did not change writes nothing, so walking over rows neither rounds nor rewrites
/// values. Numbers are shown with all digits and without group signs. Choosing an entry of a list writes it at once.
/// The mouse wheel scrolls the tree, never a value.
class FeatureEditDelegate : public QStyledItemDelegate
{
    Q_OBJECT

public:
    explicit FeatureEditDelegate(QObject *parent = nullptr);

    void paint(QPainter *painter, const QStyleOptionViewItem &viewItem, const QModelIndex &index) const override;
    QWidget *createEditor(QWidget *parent, const QStyleOptionViewItem &viewItem,
                          const QModelIndex &index) const override;
    void setEditorData(QWidget *editor, const QModelIndex &index) const override;
    void setModelData(QWidget *editor, QAbstractItemModel *model, const QModelIndex &index) const override;
    void updateEditorGeometry(QWidget *editor, const QStyleOptionViewItem &viewItem,
                              const QModelIndex &index) const override;
    QString displayText(const QVariant &value, const QLocale &locale) const override;

    /// Whether createEditor() makes an editor for the cell.
    bool isEditable(const QModelIndex &index) const;

    /// Set when the device is closed: from then on cells are painted as stored and no editor touches a node.
    bool dataDisabled = false;

Q_SIGNALS:
    /// The button of a command was clicked; the argument means nothing.
    void CommandClicked(bool checked);
    /// Never emitted.
    void comboxTextChanged(QString text);

public Q_SLOTS:
    /// Remembers the hovered cell if it is a boolean that can be written, and tells whether it is.
    bool cellEntered(const QModelIndex &index);

protected:
    void initStyleOption(QStyleOptionViewItem *viewItem, const QModelIndex &index) const override;
    bool eventFilter(QObject *editor, QEvent *event) override;

private:
    TreeItem *itemAt(const QModelIndex &index) const;
    GenApi::INode *nodeAt(const QModelIndex &index) const;
    bool isShownGray(TreeItem *item) const;
    void commitChoice(QWidget *list);

    QTreeView *view; ///< the parent, if it is one
    bool isHovering = false;
    QModelIndex hoverIndex;
};
