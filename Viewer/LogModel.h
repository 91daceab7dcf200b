// SPDX-License-Identifier: MIT
#pragma once

#include <QAbstractTableModel>
#include <QDateTime>

#include <deque>

/// The last lines of the host's log: time, module, message. GUI thread.
class LogModel : public QAbstractTableModel
{
    Q_OBJECT

public:
    enum Column { TimeColumn, ModuleColumn, MessageColumn, ColumnCount };
    static constexpr int MaximumLines = 5000;

    using QAbstractTableModel::QAbstractTableModel;

    /// Adds a line at the end; the oldest goes when there are more than maximumLines. A repetition of the last line
    /// only renews its time and counts in its message.
    void append(const QDateTime &time, const QString &module, const QString &message);
    void clear();
    /// The line as it is copied: columns separated by tabs.
    QString lineText(int row) const;
    /// To be called after a language change: the column titles are translated anew.
    void retranslate();

    int rowCount(const QModelIndex &parent = QModelIndex()) const override;
    int columnCount(const QModelIndex &parent = QModelIndex()) const override;
    QVariant data(const QModelIndex &index, int role = Qt::DisplayRole) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role = Qt::DisplayRole) const override;

private:
    struct Line
    {
        QDateTime time;
        QString module;
        QString message;
        int count = 1;
    };

    bool repeatLast(const QDateTime &time, const QString &module, const QString &message);
    static QString cellText(const Line &line, int column);

    std::deque<Line> m_lines;
};
