// SPDX-License-Identifier: MIT
#include "Viewer/LogModel.h"

#include <QStringList>

void LogModel::append(const QDateTime &time, const QString &module, const QString &message)
{
    if (repeatLast(time, module, message))
        return;
    if (int(m_lines.size()) >= MaximumLines) {
        beginRemoveRows(QModelIndex(), 0, 0);
        m_lines.pop_front();
        endRemoveRows();
    }
    const int row = int(m_lines.size());
    beginInsertRows(QModelIndex(), row, row);
    m_lines.push_back({time, module, message, 1});
    endInsertRows();
}

bool LogModel::repeatLast(const QDateTime &time, const QString &module, const QString &message)
{
    if (m_lines.empty() || m_lines.back().module != module || m_lines.back().message != message)
        return false;
    const int row = int(m_lines.size()) - 1;
    m_lines.back().time = time;
    ++m_lines.back().count;
    Q_EMIT dataChanged(index(row, TimeColumn), index(row, MessageColumn));
    return true;
}

void LogModel::clear()
{
    beginResetModel();
    m_lines.clear();
    endResetModel();
}

QString LogModel::cellText(const Line &line, int column)
{
    switch (column) {
    case TimeColumn:
        return line.time.toString(QStringLiteral("HH:mm:ss.zzz"));
    case ModuleColumn:
        return line.module;
    default:
        return line.count == 1 ? line.message
                               : QStringLiteral("%1 (\u00d7%2)").arg(line.message, QString::number(line.count));
    }
}

QString LogModel::lineText(int row) const
{
    QStringList cells;
    for (int column = 0; column < ColumnCount; ++column)
        cells << cellText(m_lines.at(size_t(row)), column);
    return cells.join(QLatin1Char('\t'));
}

void LogModel::retranslate()
{
    Q_EMIT headerDataChanged(Qt::Horizontal, 0, ColumnCount - 1);
}

int LogModel::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : int(m_lines.size());
}

int LogModel::columnCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : int(ColumnCount);
}

QVariant LogModel::data(const QModelIndex &index, int role) const
{
    if (!index.isValid() || (role != Qt::DisplayRole && role != Qt::ToolTipRole))
        return QVariant();
    return cellText(m_lines.at(size_t(index.row())), index.column());
}

QVariant LogModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (orientation != Qt::Horizontal || role != Qt::DisplayRole)
        return QVariant();
    switch (section) {
    case TimeColumn:
        return tr("Time");
    case ModuleColumn:
        return tr("Module");
    default:
        return tr("Message");
    }
}
