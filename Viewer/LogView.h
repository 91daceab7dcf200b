// SPDX-License-Identifier: MIT
#pragma once

#include <QTableView>

class LogModel;
class QAction;

/// The table of the log dock. It follows the newest line while the last line is in view; the marked lines can
/// be copied (Ctrl+C) and the log cleared from the context menu.
class LogView : public QTableView
{
    Q_OBJECT

public:
    explicit LogView(QWidget *parent = nullptr);

    LogModel &log() const { return *m_log; }
    void copySelection();

protected:
    void changeEvent(QEvent *event) override;
    void contextMenuEvent(QContextMenuEvent *event) override;

private:
    void addActions();
    void retranslate();
    void keepNewestLineInView();

    LogModel *m_log;
    QAction *m_copy = nullptr;
    QAction *m_clear = nullptr;
    bool m_atEnd = true; ///< the last line was in view before lines were added
};
