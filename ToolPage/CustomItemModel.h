// SPDX-License-Identifier: MIT
#pragma once

#include <QStandardItemModel>

/// The entries of a CComboBox; the first one is its placeholder, which shows no text whatever it holds.
class CustomItemModel : public QStandardItemModel
{
    Q_OBJECT

public:
    static constexpr int Placeholder = 0; ///< its row

    using QStandardItemModel::QStandardItemModel;

    QVariant data(const QModelIndex &index, int role = Qt::DisplayRole) const override
    {
        const bool hidden = role == Qt::DisplayRole && index.row() == Placeholder;
        return hidden ? QVariant(QString()) : QStandardItemModel::data(index, role);
    }
};
