// SPDX-License-Identifier: MIT
#pragma once

#include <QPersistentModelIndex>
#include <QPointer>
#include <QStyledItemDelegate>

#include <GenApi/GenApi.h>

class QKeyEvent;
class QTreeView;
class TreeItem;

/// Edits and paints the value column of the feature tree: an editor by the feature's type and representation, gray text
/// for values that cannot be written, a button for commands. No exception of a node leaves it.
///
/// An edit ends by Enter, Tab, the release of an arrow of a number field, the choice of an entry, or a press elsewhere
/// in the panel; nothing else commits or closes an editor with input. What was typed is written even if it is what the
/// editor opened with; an editor that was not touched writes nothing, so walking over rows neither rounds nor rewrites
/// values. Numbers are shown with all digits and without group signs. The mouse wheel scrolls the tree, never a value.
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

    /// The editor that was opened last, and its cell; null once it has gone.
    QWidget *editor() const { return m_openEditor; }
    QModelIndex editedIndex() const { return m_openIndex; }
    /// False for an editor with input, unless its edit is being ended.
    bool mayEnd(QWidget *editor) const;
    /// Closes the open editor, if there is one, and drops its input.
    void dropEditor();

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
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    TreeItem *itemAt(const QModelIndex &index) const;
    GenApi::INode *nodeAt(const QModelIndex &index) const;
    bool isShownGray(const QModelIndex &index) const;
    QVariant grayValue(const QModelIndex &index) const;
    void watch(QWidget *editor, const QModelIndex &index);
    void commit(QWidget *editor);
    void end(QWidget *editor, EndEditHint hint);
    bool handleKey(QWidget *editor, QKeyEvent &event);

    QTreeView *m_view; ///< the parent, if it is one
    bool m_isHovering = false;
    QModelIndex m_hoverIndex;
    QPointer<QWidget> m_openEditor;
    QPersistentModelIndex m_openIndex;
    bool m_isEnding = false; ///< while an edit ends by what the class comment names
};
