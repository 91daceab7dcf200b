// SPDX-License-Identifier: MIT
#pragma once

#include <QWidget>

#include "Viewer/SettingsFilter.h"

class QCheckBox;
class QLabel;
class QLineEdit;
class QPushButton;
class QTableView;

/// A table of settings with what a person needs to find and tick rows: a search field, a switch that leaves the
/// interesting rows, and buttons for all rows that are shown. Space ticks the marked rows, Ctrl+C copies them.
class SettingsTable : public QWidget
{
    Q_OBJECT

public:
    explicit SettingsTable(QWidget *parent = nullptr);

    SettingsModel &settings() { return *m_settings; }
    QTableView &view() { return *m_view; }
    /// What the switch leaves, Different at first, and whether it is on.
    void offerOnly(SettingsFilter::Only only, bool isOn);
    /// Of the present rows.
    void fitColumns();
    void setChoosable(bool choosable);
    /// For the dialog that this is in: room for the columns, but not more than its window.
    QSize dialogSize() const;

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;
    void changeEvent(QEvent *event) override;

private:
    void buildView();
    void layOut();
    void showOnly();
    void showCount();
    void retranslate();
    QList<int> shownRows() const;
    QList<int> markedRows() const;
    void tickMarked();
    void copyMarked() const;

    SettingsModel *m_settings;
    SettingsFilter *m_filter;
    QLineEdit *m_search;
    QCheckBox *m_only;
    QTableView *m_view;
    QLabel *m_count;
    QPushButton *m_tick;
    QPushButton *m_untick;
    SettingsFilter::Only m_offered = SettingsFilter::Only::Different;
};
