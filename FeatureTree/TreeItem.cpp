// SPDX-License-Identifier: MIT
#include "FeatureTree/TreeItem.h"

#include <cstring>
#include <iostream>

#include <QDebug>
#include <QThread>

#include "FeatureTree/FeatureKinds.h"
#include "FeatureTree/VisibilityPass.h"
#include "Features/NodeGuard.h"
#include "Features/ValueKind.h"
#include "PanelBase/HostCall.h"
#include "PanelBase/NodeWrites.h"

namespace {

constexpr int ValueColumn = 1;
constexpr unsigned long SettleMs = 50;
/// A device that words each of its faults differently must not fill the memory.
constexpr int MostFaults = 200;

void logLine(const std::string &message)
{
    logToHost("TreeItem", message);
}

bool isUnreadable(const GenICam::GenericException &error)
{
    return std::strstr(error.GetDescription(), "Node is not readable") != nullptr;
}

bool isNonZero(GenApi::INode *node)
{
    return node->GetPrincipalInterfaceType() == GenApi::intfIInteger
        && GenApi::CIntegerPtr(node)->GetValue(true, true) != 0;
}

} // namespace

TreeItem::TreeItem(const QVector<QVariant> &data, TreeItem *parent) : m_itemData(data), m_parentItem(parent) { }

TreeItem::~TreeItem()
{
    qDeleteAll(m_childItems);
}

TreeItem *TreeItem::child(int number)
{
    return m_childItems.value(number, nullptr);
}

int TreeItem::childNumber() const
{
    return m_parentItem ? m_parentItem->m_childItems.indexOf(const_cast<TreeItem *>(this)) : 0;
}

TreeItem *TreeItem::appendChild(const QVector<QVariant> &data)
{
    m_childItems.append(new TreeItem(data, this));
    return m_childItems.last();
}

bool TreeItem::insertChildren(int position, int count, int columns)
{
    if (position < 0 || position > m_childItems.size())
        return false;
    for (int i = 0; i < count; ++i)
        m_childItems.insert(position, new TreeItem(QVector<QVariant>(columns), this));
    return true;
}

bool TreeItem::insertColumns(int position, int columns)
{
    if (position < 0 || position > m_itemData.size())
        return false;
    if (columns > 0)
        m_itemData.insert(position, columns, QVariant());
    for (TreeItem *item : qAsConst(m_childItems))
        item->insertColumns(position, columns);
    return true;
}

bool TreeItem::removeChildren(int position, int count)
{
    if (position < 0 || count > m_childItems.size() - position)
        return false;
    for (int i = 0; i < count; ++i)
        delete m_childItems.takeAt(position);
    return true;
}

bool TreeItem::removeColumns(int position, int columns)
{
    if (position < 0 || columns > m_itemData.size() - position)
        return false;
    if (columns > 0)
        m_itemData.remove(position, columns);
    for (TreeItem *item : qAsConst(m_childItems))
        item->removeColumns(position, columns);
    return true;
}

QVariant TreeItem::data(int column)
{
    const DeviceReading *const way = reading();
    if (column != ValueColumn || !m_feature.IsValid() || (way && way->isSilent()))
        return storedData(column);
    QVariant value;
    bool unreadable = false;
    guardNode([&] { read([&] { value = FeatureKinds::editorKind(m_feature).shown(m_feature); }); },
              [&](const GenICam::GenericException &error) { unreadable = isUnreadable(error); },
              [this](const char *message) { logNewFault(message); });
    m_isUnread = m_isUnread && way && way->isSilent();
    if (unreadable)
        return QStringLiteral("{Not Available}");
    if (!value.isValid())
        return storedData(column);
    if (column < m_itemData.size())
        m_itemData[column] = value;
    return value;
}

/// Passes on what it throws.
void TreeItem::read(const std::function<void()> &access)
{
    if (DeviceReading *const way = reading())
        way->read(m_feature, access);
    else
        access();
}

/// A value that cannot be read is told once for each fault in the tree.
void TreeItem::readFirst()
{
    if (!m_isUnread || !m_feature.IsValid())
        return;
    m_isUnread = false;
    QVariant &value = m_itemData[ValueColumn];
    const auto first = [&] {
        const FeatureKinds::EditorKind &kind = FeatureKinds::editorKind(m_feature);
        m_format = kind.format;
        value = kind.initial(m_feature);
    };
    guardNode([&] { read(first); },
              [this](const GenICam::GenericException &error) {
                  if (isNewFault(error.GetDescription()))
                      std::cout << error.GetDescription() << std::endl;
              },
              [this](const char *message) { logNewFault(message); });
    m_isUnread = reading() && reading()->isSilent();
}

bool TreeItem::setData(int column, const QVariant &value)
{
    if (column < 0 || column >= m_itemData.size() || !value.isValid()) {
        qDebug("Data is invalid!");
        return false;
    }
    if (column == 0) {
        m_itemData[column] = value;
    } else if (!m_feature.IsValid()) {
        qDebug("Feature is invalid!");
        m_itemData[column] = value;
    } else {
        QVariant old;
        const auto rollBack = [&](const GenICam::GenericException &error) {
            m_itemData[column] = old;
            qDebug("Failed to set data for %s", qUtf8Printable(m_featureName));
            logLine("Set " + m_featureName.toStdString() + " value failed, message = " + error.GetDescription());
        };
        const auto exchange = [&] { write(column, value, old); };
        DeviceReading *const way = reading();
        guardNode([&] { way ? way->write(m_feature, exchange) : exchange(); }, rollBack, logLine);
    }
    return true;
}

void TreeItem::write(int column, const QVariant &value, QVariant &old)
{
    const ValueKind &kind = valueKind(m_feature);
    const bool isReadable = m_feature->GetAccessMode() != GenApi::WO;
    if (kind.isRestorable && isReadable) {
        old = storedData(column); // for a device that does not even read
        old = kind.read(m_feature);
    }
    if (!NodeWrites::writeValue(reading(), m_feature, value))
        return;
    QThread::msleep(SettleMs);
    if (!isReadable)
        return;
    kind.readFresh(m_feature);
    if (kind.isRestorable)
        m_itemData[column] = kind.read(m_feature);
}

GenApi::INode *TreeItem::GetFeaturePtr() const
{
    return m_feature.IsValid() ? m_feature.operator->() : nullptr;
}

void TreeItem::SetFeature(const GenApi::CPointer<GenApi::INode> &node)
{
    m_feature = node;
    m_featureName.clear();
    m_isAvailabilityKnown = false;
    if (!m_feature.IsValid())
        return;
    guardNode([this] { m_featureName = FeatureKinds::nodeName(m_feature); });
    const QString title = storedData(0).toString();
    if (title == m_featureName)
        m_featureName = title; // one text in memory
    guardNode([this] { availabilityNode(); }); // later the map may be locked by a read that takes its time
}

bool TreeItem::EnterEditMode(QString &interfaceName)
{
    bool found = false;
    guardNode([&] {
        GenICam::gcstring value;
        GenICam::gcstring attribute;
        found = m_feature.IsValid() && m_feature->GetProperty("Interface", value, attribute);
        if (found)
            interfaceName = QString::fromUtf8(value.c_str());
    });
    return found;
}

bool TreeItem::getVisiable(const int &level, const QString &filter)
{
    VisibilityPass pass;
    pass.level = level;
    pass.filter = filter;
    return getVisiable(pass);
}

bool TreeItem::getVisiable(VisibilityPass &pass)
{
    bool isShown = false;
    const auto onForeign = [&](const char *message) {
        isShown = true;
        logNewFault(message);
    };
    guardNode(
        [&] {
            isShown = m_feature->GetVisibility() <= pass.level
                && (m_featureName.contains(pass.filter, Qt::CaseInsensitive)
                    || m_feature->GetPrincipalInterfaceType() == GenApi::intfICategory)
                && isSwitchedOn(pass);
        },
        [](const GenICam::GenericException &) {}, onForeign);
    return isShown;
}

GenApi::INode *TreeItem::availabilityNode()
{
    if (m_isAvailabilityKnown)
        return m_availability;
    GenICam::gcstring name;
    GenICam::gcstring attribute;
    const bool isSwitched = m_feature->GetProperty("pIsAvailable", name, attribute);
    GenApi::INodeMap *nodeMap = isSwitched ? m_feature->GetNodeMap() : nullptr;
    m_availability = nodeMap ? nodeMap->GetNode(name) : nullptr;
    m_isAvailabilityKnown = true;
    return m_availability;
}

TreeItem::Cell TreeItem::cell() const
{
    if (m_hasCell)
        return {m_cellValue, m_isCellEditable};
    const QVariant first = storedData(ValueColumn);
    return {m_format && first.isValid() ? m_format(first) : first, false};
}

void TreeItem::setCell(const Cell &cell)
{
    m_cellValue = cell.value;
    m_isCellEditable = cell.isEditable;
    m_hasCell = true;
}

bool TreeItem::isSwitchedOn(VisibilityPass &pass)
{
    GenApi::INode *node = availabilityNode();
    if (!node)
        return true;
    if (!pass.isKnown(node))
        readSwitch(node, pass);
    return pass.isOn(node);
}

void TreeItem::readSwitch(GenApi::INode *node, VisibilityPass &pass)
{
    bool isOn = false;
    const auto ask = [&] { isOn = isNonZero(node); };
    DeviceReading *const way = reading();
    guardNode([&] { way ? way->read(node, ask) : ask(); }, [](const GenICam::GenericException &) {},
              [&](const char *message) {
                  isOn = true;
                  logNewFault(message);
              });
    if (way && way->isSilent())
        pass.putOff(node);
    else
        pass.switches[node] = isOn;
}

const TreeItem *TreeItem::top() const
{
    const TreeItem *item = this;
    while (item->m_parentItem)
        item = item->m_parentItem;
    return item;
}

TreeItem::WholeTree &TreeItem::wholeTree()
{
    std::unique_ptr<WholeTree> &whole = const_cast<TreeItem *>(top())->m_wholeTree;
    if (!whole)
        whole = std::make_unique<WholeTree>();
    return *whole;
}

DeviceReading *TreeItem::reading() const
{
    const WholeTree *whole = top()->m_wholeTree.get();
    return whole ? whole->reading.data() : nullptr;
}

bool TreeItem::isNewFault(const char *message)
{
    QSet<QByteArray> &reported = wholeTree().reportedFaults;
    const int before = reported.size();
    if (before < MostFaults)
        reported.insert(message);
    return reported.size() > before;
}

void TreeItem::logNewFault(const char *message)
{
    if (isNewFault(message))
        logLine(message);
}
