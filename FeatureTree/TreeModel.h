// SPDX-License-Identifier: MIT
#pragma once

#include <memory>

#include <QAbstractItemModel>
#include <QHash>
#include <QString>
#include <QStringList>

#include <GenApi/GenApi.h>

class DeviceReading;
class TreeItem;

/// The features of one device as a tree with two columns, name and value. Rows nest under categories: a category's
/// rows are the features that it lists, every other feature is a leaf. A feature that two categories list has two
/// rows. A GenICam or other exception of a node never leaves the model. GUI thread only.
class TreeModel : public QAbstractItemModel
{
    Q_OBJECT

public:
    /// An empty tree with these column titles; AddModelData() fills it. Reads the translated texts from
    /// translate/feature.txt beside the application.
    TreeModel(const QStringList &headers, const GenApi::node_vector &nodes, QObject *parent = nullptr);
    ~TreeModel() override;

    /// How the device is read, to be set before rows are added; null: at once, however long it takes.
    void setReading(DeviceReading *reading);
    /// Adds the rows of a device: `nodes` are all nodes of its map, which must outlive the use of the model (until
    /// dataDisabled is set). Null nodes are skipped. `filter` is not used.
    void AddModelData(const GenApi::node_vector &nodes, const QString &filter);
    /// The same under any item, and without telling the views. `useFilter` is not used.
    static void setupModelData(const GenApi::node_vector &nodes, TreeItem *parent, bool useFilter);
    /// 0 English; with 1 the texts of cells are looked up in the translated texts.
    void setFeatureLanguage(int language);

    QVariant data(const QModelIndex &index, int role = Qt::DisplayRole) const override;
    bool setData(const QModelIndex &index, const QVariant &value, int role = Qt::EditRole) override;
    /// Value cells are always editable; the delegate decides whether an editor opens.
    Qt::ItemFlags flags(const QModelIndex &index) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role = Qt::DisplayRole) const override;
    bool setHeaderData(int section, Qt::Orientation orientation, const QVariant &value,
                       int role = Qt::EditRole) override;
    QModelIndex index(int row, int column, const QModelIndex &parent = QModelIndex()) const override;
    QModelIndex parent(const QModelIndex &index) const override;
    int rowCount(const QModelIndex &parent = QModelIndex()) const override;
    int columnCount(const QModelIndex &parent = QModelIndex()) const override;
    /// Columns are inserted into and removed from every row of the tree.
    bool insertColumns(int position, int columns, const QModelIndex &parent = QModelIndex()) override;
    bool removeColumns(int position, int columns, const QModelIndex &parent = QModelIndex()) override;
    bool insertRows(int position, int rows, const QModelIndex &parent = QModelIndex()) override;
    bool removeRows(int position, int rows, const QModelIndex &parent = QModelIndex()) override;

    /// The header item for an invalid index. Never null.
    TreeItem *getItem(const QModelIndex &index) const;

    /// Reads what the value cell of a row shows, each register once: the value, and whether it can be edited.
    void readRow(const QModelIndex &index);
    /// Whether the value of a row can be edited: now, or while the cells are shown as read when they were read last.
    bool isEditable(TreeItem *item) const;

    /// While true, cells are shown as readRow() has read them and no node is touched. For painting.
    bool showsReadCells = false;
    /// Set when the device is closed: from then on only stored cells are shown and no node is touched.
    bool dataDisabled = false;

private:
    bool canBeEdited(GenApi::INode *node) const;

    std::unique_ptr<TreeItem> m_rootItem; ///< the header row
    QHash<QString, QString> m_translations; ///< English text, translated text
    int m_language = 0;
};
