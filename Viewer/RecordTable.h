// SPDX-License-Identifier: MIT
#pragma once

#include <QTableView>

class QAction;

/// A table of what was recorded, the newest in the last row. It follows the newest while the last row is in view; the
/// marked rows can be copied (Ctrl+C). Its actions are its context menu.
class RecordTable : public QTableView
{
    Q_OBJECT

public:
    explicit RecordTable(QWidget *parent = nullptr);

    void setModel(QAbstractItemModel *model) override;
    /// Wide enough for the text.
    void fitColumn(int column, const QString &text);
    /// One line for each marked row, with tabs between the cells.
    void copySelection();

protected:
    void changeEvent(QEvent *event) override;
    void contextMenuEvent(QContextMenuEvent *event) override;
    void showEvent(QShowEvent *event) override;

private:
    void retranslate();
    void keepNewestInView();

    QAction *m_copy;
    bool m_atEnd = true; ///< the last row was in view before rows were added
};
