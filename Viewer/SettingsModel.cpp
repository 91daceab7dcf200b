// SPDX-License-Identifier: MIT
#include "Viewer/SettingsModel.h"

#include <QColor>
#include <QGuiApplication>
#include <QPalette>
#include <QStringList>

#include <algorithm>
#include <utility>

namespace {

constexpr QRgb FailedColour = 0xffb3261e;
constexpr int MostShown = 500; ///< characters of a value; its tool tip has more
constexpr int MostInToolTip = 4000;

bool isNote(const SettingsModel::Row &row, int column)
{
    return (column == SettingsModel::LeftColumn && row.left.isNote)
        || (column == SettingsModel::RightColumn && row.right.isNote);
}

} // namespace

void SettingsModel::setRows(std::vector<Row> rows)
{
    beginResetModel();
    m_rows = std::move(rows);
    endResetModel();
    Q_EMIT choiceChanged();
}

void SettingsModel::setTitles(const QString &left, const QString &right)
{
    m_leftTitle = left;
    m_rightTitle = right;
    Q_EMIT headerDataChanged(Qt::Horizontal, LeftColumn, RightColumn);
}

void SettingsModel::choose(const QList<int> &rows, bool isChosen)
{
    if (rows.isEmpty() || !m_isChoosable)
        return;
    for (int row : rows)
        m_rows[std::size_t(row)].isChosen = isChosen;
    const auto [first, last] = std::minmax_element(rows.begin(), rows.end());
    Q_EMIT dataChanged(index(*first, FeatureColumn), index(*last, FeatureColumn), {Qt::CheckStateRole});
    Q_EMIT choiceChanged();
}

void SettingsModel::setChoosable(bool choosable)
{
    m_isChoosable = choosable;
    if (!m_rows.empty())
        Q_EMIT dataChanged(index(0, FeatureColumn), index(rowCount() - 1, FeatureColumn));
    Q_EMIT choiceChanged();
}

int SettingsModel::chosenCount() const
{
    return int(std::count_if(m_rows.begin(), m_rows.end(), [](const Row &row) { return row.isChosen; }));
}

QString SettingsModel::rowText(int row) const
{
    QStringList cells;
    for (int column = 0; column < ColumnCount; ++column)
        cells << text(m_rows[std::size_t(row)], column);
    return cells.join(QLatin1Char('\t'));
}

int SettingsModel::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : int(m_rows.size());
}

int SettingsModel::columnCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : int(ColumnCount);
}

Qt::ItemFlags SettingsModel::flags(const QModelIndex &index) const
{
    const Qt::ItemFlags flags = QAbstractTableModel::flags(index);
    return index.column() == FeatureColumn && m_isChoosable ? flags | Qt::ItemIsUserCheckable : flags;
}

QString SettingsModel::text(const Row &row, int column)
{
    switch (column) {
    case FeatureColumn:
        return row.feature;
    case PositionColumn:
        return row.position;
    case LeftColumn:
        return row.left.text;
    case RightColumn:
        return row.right.text;
    default:
        return row.result;
    }
}

QVariant SettingsModel::colour(const Row &row, int column)
{
    if (row.isFailed && column == ResultColumn)
        return QColor(FailedColour);
    const bool isGray = isNote(row, column) || !(row.isDifferent || row.isFailed);
    return isGray ? QGuiApplication::palette().color(QPalette::Disabled, QPalette::Text) : QVariant();
}

QVariant SettingsModel::data(const QModelIndex &index, int role) const
{
    if (!index.isValid() || index.row() >= rowCount())
        return {};
    const Row &row = m_rows[std::size_t(index.row())];
    switch (role) {
    case Qt::DisplayRole:
        return text(row, index.column()).left(MostShown);
    case Qt::ToolTipRole:
        return text(row, index.column()).left(MostInToolTip).toHtmlEscaped();
    case Qt::ForegroundRole:
        return colour(row, index.column());
    case Qt::CheckStateRole:
        if (index.column() == FeatureColumn && m_isChoosable)
            return row.isChosen ? Qt::Checked : Qt::Unchecked;
        return {};
    default:
        return {};
    }
}

bool SettingsModel::setData(const QModelIndex &index, const QVariant &value, int role)
{
    if (role != Qt::CheckStateRole || index.column() != FeatureColumn || !m_isChoosable)
        return false;
    choose({index.row()}, value.toInt() == Qt::Checked);
    return true;
}

QVariant SettingsModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (orientation != Qt::Horizontal || role != Qt::DisplayRole)
        return {};
    switch (section) {
    case FeatureColumn:
        return tr("Feature");
    case PositionColumn:
        return tr("Position");
    case LeftColumn:
        return m_leftTitle;
    case RightColumn:
        return m_rightTitle;
    default:
        return tr("Result");
    }
}
