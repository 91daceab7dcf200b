// SPDX-License-Identifier: MIT
#include "FeatureTree/TreeModel.h"

#include <QCoreApplication>

#include "FeatureTree/FeatureKinds.h"
#include "FeatureTree/FeatureTexts.h"
#include "FeatureTree/NodeWarning.h"
#include "FeatureTree/TreeBuilder.h"
#include "FeatureTree/TreeItem.h"
#include "Features/NodeGuard.h"
#include "PanelBase/DeviceReading.h"
#include "PanelBase/HostCall.h"

namespace {

constexpr int NameColumn = 0;
constexpr int ValueColumn = 1;

QVector<QVariant> titles(const QStringList &headers)
{
    QVector<QVariant> cells;
    for (const QString &header : headers)
        cells.append(header);
    return cells;
}

} // namespace

TreeModel::TreeModel(const QStringList &headers, const GenApi::node_vector &, QObject *parent)
    : QAbstractItemModel(parent), m_rootItem(std::make_unique<TreeItem>(titles(headers))),
      m_translations(
          readFeatureTexts(QStringLiteral("%1/translate/feature.txt").arg(QCoreApplication::applicationDirPath())))
{ }

TreeModel::~TreeModel() = default;

void TreeModel::AddModelData(const GenApi::node_vector &nodes, const QString &)
{
    if (nodes.empty())
        return;
    beginResetModel();
    setupModelData(nodes, m_rootItem.get(), true);
    endResetModel();
}

void TreeModel::setupModelData(const GenApi::node_vector &nodes, TreeItem *parent, bool)
{
    buildTree(nodes, *parent);
}

void TreeModel::setReading(DeviceReading *reading)
{
    m_rootItem->setReading(reading);
}

void TreeModel::readRow(const QModelIndex &index)
{
    TreeItem *item = getItem(index);
    if (dataDisabled || !item->GetFeaturePtr())
        return;
    const auto readCell = [&] {
        const bool isEditable = canBeEdited(item->GetFeaturePtr());
        item->setCell({item->data(ValueColumn), isEditable});
    };
    if (DeviceReading *const reading = m_rootItem->reading())
        reading->readTogether(readCell);
    else
        readCell();
}

bool TreeModel::isEditable(TreeItem *item) const
{
    const DeviceReading *const reading = m_rootItem->reading();
    if (reading && reading->isSilent())
        return false;
    return showsReadCells ? item->cell().isEditable : canBeEdited(item->GetFeaturePtr());
}

void TreeModel::setFeatureLanguage(int index)
{
    m_language = index;
    Q_EMIT dataChanged(QModelIndex(), QModelIndex());
}

QVariant TreeModel::data(const QModelIndex &index, int role) const
{
    const bool isText = role == Qt::DisplayRole || role == Qt::EditRole;
    const bool isToolTip = role == Qt::ToolTipRole && index.column() == NameColumn;
    if (!index.isValid() || !(isText || isToolTip))
        return {};
    TreeItem *item = getItem(index);
    if (dataDisabled)
        return item->storedData(index.column());
    const bool isValue = index.column() == ValueColumn && item->GetFeaturePtr();
    if (isValue && !isEditable(item))
        return {};
    const QVariant value = isValue && showsReadCells ? item->cell().value : item->data(index.column());
    if (m_language != 1)
        return value;
    const auto translation = m_translations.constFind(value.toString());
    return translation == m_translations.constEnd() ? value : QVariant(translation.value());
}

bool TreeModel::canBeEdited(GenApi::INode *node) const
{
    bool isEditable = false;
    const auto ask = [&] { isEditable = node->IsFeature() && FeatureKinds::isWritable(node); };
    DeviceReading *const reading = m_rootItem->reading();
    guardNode([&] { reading ? reading->read(node, ask) : ask(); },
              [&](const GenICam::GenericException &error) {
                  const bool isTold = reading && reading->isSilent(); // once, for all rows
                  if (!isTold && m_rootItem->isNewFault(error.GetDescription()))
                      warnNodeError(error);
              },
              [this](const char *message) {
                  if (m_rootItem->isNewFault(message))
                      logToHost("TreeModel", message);
              });
    return isEditable;
}

bool TreeModel::setData(const QModelIndex &index, const QVariant &value, int role)
{
    if (dataDisabled || (role != Qt::DisplayRole && role != Qt::EditRole))
        return false;
    if (!getItem(index)->setData(index.column(), value))
        return false;
    Q_EMIT dataChanged(index, index);
    return true;
}

Qt::ItemFlags TreeModel::flags(const QModelIndex &index) const
{
    if (!index.isValid())
        return Qt::NoItemFlags;
    const Qt::ItemFlags base = QAbstractItemModel::flags(index);
    switch (index.column()) {
    case NameColumn:
        return base | Qt::ItemIsSelectable | Qt::ItemIsDragEnabled | Qt::ItemIsDropEnabled;
    case ValueColumn:
        return base | Qt::ItemIsEditable;
    default:
        return base;
    }
}

QVariant TreeModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (orientation != Qt::Horizontal || role != Qt::DisplayRole)
        return {};
    return m_rootItem->data(section);
}

bool TreeModel::setHeaderData(int section, Qt::Orientation orientation, const QVariant &value, int role)
{
    if (orientation != Qt::Horizontal || role != Qt::EditRole || !m_rootItem->setData(section, value))
        return false;
    Q_EMIT headerDataChanged(orientation, section, section);
    return true;
}

QModelIndex TreeModel::index(int row, int column, const QModelIndex &parent) const
{
    if (parent.isValid() && parent.column() != 0)
        return {};
    TreeItem *child = getItem(parent)->child(row);
    return child ? createIndex(row, column, child) : QModelIndex();
}

QModelIndex TreeModel::parent(const QModelIndex &index) const
{
    if (!index.isValid())
        return {};
    TreeItem *parentItem = getItem(index)->parent();
    if (!parentItem || parentItem == m_rootItem.get())
        return {};
    return createIndex(parentItem->childNumber(), 0, parentItem);
}

int TreeModel::rowCount(const QModelIndex &parent) const
{
    return parent.column() > 0 ? 0 : getItem(parent)->childCount();
}

int TreeModel::columnCount(const QModelIndex &) const
{
    return m_rootItem->columnCount();
}

bool TreeModel::insertColumns(int position, int columns, const QModelIndex &parent)
{
    if (columns < 1 || position < 0 || position > m_rootItem->columnCount())
        return false;
    beginInsertColumns(parent, position, position + columns - 1);
    const bool isDone = m_rootItem->insertColumns(position, columns);
    endInsertColumns();
    return isDone;
}

bool TreeModel::removeColumns(int position, int columns, const QModelIndex &parent)
{
    if (columns < 1 || position < 0 || columns > m_rootItem->columnCount() - position)
        return false;
    beginRemoveColumns(parent, position, position + columns - 1);
    const bool isDone = m_rootItem->removeColumns(position, columns);
    endRemoveColumns();
    if (m_rootItem->columnCount() == 0)
        removeRows(0, rowCount());
    return isDone;
}

bool TreeModel::insertRows(int position, int rows, const QModelIndex &parent)
{
    TreeItem *item = getItem(parent);
    if (rows < 1 || position < 0 || position > item->childCount())
        return false;
    beginInsertRows(parent, position, position + rows - 1);
    const bool isDone = item->insertChildren(position, rows, m_rootItem->columnCount());
    endInsertRows();
    return isDone;
}

bool TreeModel::removeRows(int position, int rows, const QModelIndex &parent)
{
    TreeItem *item = getItem(parent);
    if (rows < 1 || position < 0 || rows > item->childCount() - position)
        return false;
    beginRemoveRows(parent, position, position + rows - 1);
    const bool isDone = item->removeChildren(position, rows);
    endRemoveRows();
    return isDone;
}

TreeItem *TreeModel::getItem(const QModelIndex &index) const
{
    auto *item = index.isValid() ? static_cast<TreeItem *>(index.internalPointer()) : nullptr;
    return item ? item : m_rootItem.get();
}
