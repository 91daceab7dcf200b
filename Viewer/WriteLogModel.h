// SPDX-License-Identifier: MIT
#pragma once

#include <QAbstractTableModel>

#include "Tools/WriteLog.h"

/// The rows of a WriteLog for a table.
class WriteLogModel : public QAbstractTableModel
{
    Q_OBJECT

public:
    enum Column { TimeColumn, DeviceColumn, FeatureColumn, ValueColumn, ResultColumn, ColumnCount };

    /// `log` must outlive this.
    explicit WriteLogModel(const WriteLog &log, QObject *parent = nullptr);

    /// Whether one of the row's texts, but the time, contains `text`, in capitals or not.
    bool contains(int row, const QString &text) const;
    /// To be called after a language change.
    void retranslate();

    int rowCount(const QModelIndex &parent = QModelIndex()) const override;
    int columnCount(const QModelIndex &parent = QModelIndex()) const override;
    QVariant data(const QModelIndex &index, int role = Qt::DisplayRole) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role = Qt::DisplayRole) const override;

private:
    void adoptNewest(bool isFirstForgotten);
    void adoptClear();
    /// Null for the first row while it goes: its entry is gone already.
    const WriteLog::Entry *entryAt(int row) const;
    QString cellText(const WriteLog::Entry &entry, int column) const;

    const WriteLog &m_log;
    int m_rows;
    int m_gone = 0; ///< rows at the top whose entries are forgotten
};
