// SPDX-License-Identifier: MIT
#pragma once

#include <vector>

#include <QAbstractTableModel>
#include <QList>
#include <QString>

/// Settings side by side, each with a check box and what came of it. GUI thread.
class SettingsModel : public QAbstractTableModel
{
    Q_OBJECT

public:
    enum Column { FeatureColumn, PositionColumn, LeftColumn, RightColumn, ResultColumn, ColumnCount };
    struct Cell
    {
        QString text;
        bool isNote = false; ///< tells why there is no value
    };
    struct Row
    {
        QString feature;
        QString position; ///< of its selectors
        Cell left;
        Cell right;
        QString result;
        bool isChosen = false;
        bool isDifferent = false;
        bool isFailed = false;
    };

    using QAbstractTableModel::QAbstractTableModel;

    const std::vector<Row> &rows() const { return m_rows; }
    void setRows(std::vector<Row> rows);
    void setTitles(const QString &left, const QString &right);
    void choose(const QList<int> &rows, bool isChosen);
    /// Whether there are check boxes; at first there are.
    void setChoosable(bool choosable);
    int chosenCount() const;
    /// The row as it is copied: columns separated by tabs.
    QString rowText(int row) const;

    int rowCount(const QModelIndex &parent = QModelIndex()) const override;
    int columnCount(const QModelIndex &parent = QModelIndex()) const override;
    Qt::ItemFlags flags(const QModelIndex &index) const override;
    QVariant data(const QModelIndex &index, int role = Qt::DisplayRole) const override;
    bool setData(const QModelIndex &index, const QVariant &value, int role = Qt::EditRole) override;
    QVariant headerData(int section, Qt::Orientation orientation, int role = Qt::DisplayRole) const override;

Q_SIGNALS:
    void choiceChanged();

private:
    static QString text(const Row &row, int column);
    static QVariant colour(const Row &row, int column);

    std::vector<Row> m_rows;
    QString m_leftTitle;
    QString m_rightTitle;
    bool m_isChoosable = true;
};
