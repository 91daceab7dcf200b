// SPDX-License-Identifier: MIT
#pragma once

#include <QStandardItemModel>

/// The entries of a CComboBox; row 0 is its placeholder, which shows no text whatever it holds.
class CustomItemModel : public QStandardItemModel
{
    Q_OBJECT

public:
    using QStandardItemModel::QStandardItemModel;

    QVariant data(const QModelIndex &index, int role = Qt::DisplayRole) const override
    {
        const bool hidden = role == Qt::DisplayRole && index.row() == 0;
        return hidden ? QVariant(QString()) : QStandardItemModel::data(index, role);
    }
};
