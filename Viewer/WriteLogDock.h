// SPDX-License-Identifier: MIT
#pragma once

#include <QDockWidget>

class QHBoxLayout;
class QLineEdit;
class QPushButton;
class RecordTable;
class WriteLog;
class WriteLogModel;

/// Shows what was written to devices, with a search; clears it and saves it as a text or as a script that does it
/// again.
class WriteLogDock : public QDockWidget
{
    Q_OBJECT

public:
    /// `log` must outlive the dock.
    explicit WriteLogDock(WriteLog &log, QWidget *parent = nullptr);

    /// All or nothing, and the whole log whatever is searched for. False, with a sentence in `error`, on failure.
    bool saveText(const QString &path, QString *error) const;
    /// The same; the script can be run.
    bool saveScript(const QString &path, QString *error) const;

protected:
    void changeEvent(QEvent *event) override;

private:
    QHBoxLayout *makeBar();
    void addShortcuts();
    void bringForward(bool isShown);
    void askForText();
    void askForScript();
    /// Saves with `save` where the person says.
    void ask(const QString &title, const QString &name, const QString &filter,
             bool (WriteLogDock::*save)(const QString &, QString *) const);
    void updateButtons();
    void retranslate();

    WriteLog &m_log;
    WriteLogModel *m_model;
    RecordTable *m_table;
    QLineEdit *m_search;
    QPushButton *m_saveText;
    QPushButton *m_saveScript;
    QPushButton *m_clear;
};
