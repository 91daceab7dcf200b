// SPDX-License-Identifier: MIT
#pragma once

#include <QPersistentModelIndex>
#include <QPointer>
#include <QRegion>
#include <QSet>
#include <QVector>

#include "FeatureTree/VisibilityPass.h"
#include "PanelBase/DeviceReading.h"

class FeatureTreeView;
class TreeItem;
class TreeModel;

/// Reads a feature tree: at once while the device is fast, in turns otherwise, the rows in view first, then what
/// decides which rows are shown, then values that were never read. GUI thread only.
class TreeReader : public DeviceReading::Job
{
public:
    /// Both must outlive this; `pass` is the view's.
    TreeReader(FeatureTreeView &view, VisibilityPass &pass);
    ~TreeReader() override;
    TreeReader(const TreeReader &) = delete;
    TreeReader &operator=(const TreeReader &) = delete;

    /// The model that the view shows from now on; may be null.
    void setModel(TreeModel *model);
    /// Reads the rows that are about to be painted in a region of the viewport. A row that has to wait is painted
    /// once more when it was read.
    void readRows(const QRegion &region);
    /// Reads a row that is about to be painted, if there is time; false when there is not, or the device does not
    /// answer.
    bool readAhead(const QModelIndex &row);
    /// Rows are about to go: nothing waits any more. What is left joins again with adoptRows(), as after a reset.
    void dropRows();
    void adoptRows();
    /// Whether rows in view are still to be read.
    bool isBehind() const { return !m_rows.isEmpty(); }
    /// What the pass has put off joins what waits.
    void adoptPass();

    bool isInView() const override;
    bool readNext() override;
    void endSlice() override;

private:
    bool isNow() const;
    QVector<QModelIndex> rowsIn(const QRegion &region) const;
    bool needsReading(const QModelIndex &row, bool wasBehind);
    bool readRowInView();
    bool readSwitch();
    bool readFirstValue();

    FeatureTreeView &m_view;
    VisibilityPass &m_pass;
    QPointer<TreeModel> m_model;
    QPointer<DeviceReading> m_reading;
    QVector<QPersistentModelIndex> m_rows; ///< in view when they were put off
    QVector<QPersistentModelIndex> m_readRows; ///< in this slice
    QSet<TreeItem *> m_fresh; ///< read in a slice, not painted yet
    QVector<TreeItem *> m_unread; ///< of the model, the next one last
    bool m_isPassAhead = false; ///< switches were read in this slice
    int m_readCount = 0;
};
