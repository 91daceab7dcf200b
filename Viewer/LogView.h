// SPDX-License-Identifier: MIT
#pragma once

#include "Viewer/RecordTable.h"

class LogModel;

/// The table of the log dock; its context menu clears the log.
class LogView : public RecordTable
{
    Q_OBJECT

public:
    explicit LogView(QWidget *parent = nullptr);

    LogModel &log() const { return *m_log; }

protected:
    void changeEvent(QEvent *event) override;
    void contextMenuEvent(QContextMenuEvent *event) override;

private:
    void retranslate();

    LogModel *m_log;
    QAction *m_clear;
};
