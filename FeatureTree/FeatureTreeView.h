// SPDX-License-Identifier: MIT
#pragma once

#include <memory>

#include <QString>
#include <QTreeView>
#include <QVector>

#include <GenApi/GenApi.h>

#include "FeatureTree/VisibilityPass.h"

class FeatureEditDelegate;
class QTimer;
class TreeReader;

/// The feature tree of the attribute tab: shows a TreeModel, repaints each second so that values follow the device,
/// hides rows by level, name and availability, runs commands. What a slow device takes too long for is read in turns
/// (TreeReader). No exception of a node leaves it. GUI thread only.
///
/// Its focus policy is Qt::NoFocus, but editors take the focus, and when Enter or Escape closes one, the view has it:
/// arrow keys then walk the rows, F2 opens the editor of the current row, Tab and Backtab in an editor go on to the
/// next and previous value that can be edited. Where the current row is folded away or hidden, the keyboard goes on in
/// the nearest one; folding writes what was being typed, a row that is hidden drops it.
class FeatureTreeView : public QTreeView
{
    Q_OBJECT

public:
    explicit FeatureTreeView(QWidget *parent = nullptr);
    ~FeatureTreeView() override;

    void setModel(QAbstractItemModel *model) override;
    /// Shows the rows up to this visibility level (0 Beginner, 1 Expert, 2 Guru) whose name contains the filter.
    void SetFilter(const int &level, const QString &filter);
    /// SetFilter() after expandToDepth(), with one pass over the rows for both.
    void filterExpanded(int depth, int level, const QString &filter);
    /// Applies level and filter to the rows under `parent` and to its own row; does nothing for an invalid index.
    /// Reads each availability node once.
    void updateViewItemVisiable(const QModelIndex &parent);
    /// As QTreeView's, with one pass over the rows instead of one for each row that opens.
    void expandAll();
    void expandToDepth(int depth);
    /// From here to SetFilter() or releasePasses(), which makes the one pass for all that changes meanwhile, no row is
    /// shown or hidden.
    void holdPasses() { m_isHeld = true; }
    void releasePasses();
    /// Shows and hides rows by what is known of them, without reading.
    void showSwitched();
    /// The device does not answer: values are shown gray.
    void showSilence();
    /// To be called when the device is closed, with TreeModel::dataDisabled set: no node is touched any more.
    void setViewDataDisable();
    void selectionChanged(const QItemSelection &selected, const QItemSelection &deselected) override;

    QString deviceName; ///< the device of the features, as the host names it; set by the panel

Q_SIGNALS:
    /// A row was selected; `index` is the first one of the new selection.
    void SigSelectItem(const QModelIndex &index);
    /// A command other than TriggerSoftware is being executed.
    void commandExecute(QString name);
    /// Never emitted.
    void triggerModeChanged();

public Q_SLOTS:
    /// Something was written or executed beside this view, which may switch features: all such calls in one turn of the
    /// event loop lead to one pass over all rows. Behind other pages it waits until nothing more is written for
    /// a moment, so that it slows down nobody who works there, or until the view is shown. What is written in the view
    /// itself has its pass at once.
    void adoptDeviceChange();
    void onModelDataChanged(const QModelIndex &topLeft, const QModelIndex &bottomRight, const QVector<int> &roles);

protected:
    void paintEvent(QPaintEvent *event) override;
    void showEvent(QShowEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;
    void changeEvent(QEvent *event) override;
    int sizeHintForColumn(int column) const override;
    bool edit(const QModelIndex &index, EditTrigger trigger, QEvent *event) override;
    QModelIndex moveCursor(CursorAction action, Qt::KeyboardModifiers modifiers) override;
    void commitData(QWidget *editor) override;
    void closeEditor(QWidget *editor, QAbstractItemDelegate::EndEditHint hint) override;
    void focusInEvent(QFocusEvent *event) override;

private:
    void onExpanded(const QModelIndex &index);
    void leaveVanishedRow();
    void updateAfterExpanding();
    void updateAllVisibility();
    void dropUneditable();
    void onCommandClicked();
    void runCommand(const QString &name, GenApi::INode *node, DeviceReading *reading);

    QTimer *m_refreshTimer;
    QTimer *m_passTimer; ///< runs while a pass is due
    FeatureEditDelegate *m_delegate;
    VisibilityPass m_pass; ///< the last one
    std::unique_ptr<TreeReader> m_reader;
    int m_visibilityLevel = 0;
    QString m_filterText;
    bool m_isHeld = false;
    QVector<QMetaObject::Connection> m_modelConnections;
    enum { Idle, Expanding, Expanded } m_expansion = Idle; ///< of many rows at once, and whether one has opened
};
