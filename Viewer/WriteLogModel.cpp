// SPDX-License-Identifier: MIT
#include "Viewer/WriteLogModel.h"

#include <QBrush>
#include <QColor>

#include "Tools/BytesText.h"
#include "Tools/Place.h"

namespace {

const QColor RefusedColour(0xb0, 0x00, 0x20);

} // namespace

WriteLogModel::WriteLogModel(const WriteLog &log, QObject *parent)
    : QAbstractTableModel(parent), m_log(log), m_rows(int(log.entries().size()))
{
    connect(&log, &WriteLog::appended, this, &WriteLogModel::adoptNewest);
    connect(&log, &WriteLog::cleared, this, &WriteLogModel::adoptClear);
}

void WriteLogModel::adoptNewest(bool isFirstForgotten)
{
    if (isFirstForgotten) {
        m_gone = 1;
        beginRemoveRows(QModelIndex(), 0, 0);
        m_gone = 0;
        --m_rows;
        endRemoveRows();
    }
    beginInsertRows(QModelIndex(), m_rows, m_rows);
    ++m_rows;
    endInsertRows();
}

void WriteLogModel::adoptClear()
{
    beginResetModel();
    m_rows = 0;
    endResetModel();
}

void WriteLogModel::retranslate()
{
    Q_EMIT headerDataChanged(Qt::Horizontal, 0, ColumnCount - 1);
    if (m_rows > 0)
        Q_EMIT dataChanged(index(0, ResultColumn), index(m_rows - 1, ResultColumn));
}

const WriteLog::Entry *WriteLogModel::entryAt(int row) const
{
    const int entry = row - m_gone;
    return entry >= 0 && entry < int(m_log.entries().size()) ? &m_log.entries()[size_t(entry)] : nullptr;
}

QString WriteLogModel::cellText(const WriteLog::Entry &entry, int column) const
{
    switch (column) {
    case TimeColumn:
        return entry.time.toString(QStringLiteral("HH:mm:ss.zzz"));
    case DeviceColumn:
        return entry.device;
    case FeatureColumn:
        return textOfBytes(placeText(entry.setting.feature, entry.setting.selection));
    case ValueColumn:
        return textOfBytes(entry.setting.value);
    default:
        return entry.isRefused() ? entry.refusal : tr("OK");
    }
}

bool WriteLogModel::contains(int row, const QString &text) const
{
    const WriteLog::Entry *entry = entryAt(row);
    for (int column = DeviceColumn; entry && column < ColumnCount; ++column) {
        if (cellText(*entry, column).contains(text, Qt::CaseInsensitive))
            return true;
    }
    return false;
}

int WriteLogModel::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : m_rows;
}

int WriteLogModel::columnCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : int(ColumnCount);
}

QVariant WriteLogModel::data(const QModelIndex &index, int role) const
{
    const WriteLog::Entry *entry = index.isValid() ? entryAt(index.row()) : nullptr;
    if (!entry)
        return QVariant();
    if (role == Qt::ForegroundRole && entry->isRefused())
        return QBrush(RefusedColour);
    const bool isText = role == Qt::DisplayRole || role == Qt::ToolTipRole;
    return isText ? cellText(*entry, index.column()) : QVariant();
}

QVariant WriteLogModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (orientation != Qt::Horizontal || role != Qt::DisplayRole)
        return QVariant();
    switch (section) {
    case TimeColumn:
        return tr("Time");
    case DeviceColumn:
        return tr("Device");
    case FeatureColumn:
        return tr("Feature");
    case ValueColumn:
        return tr("Value");
    default:
        return tr("Result");
    }
}
