// SPDX-License-Identifier: MIT
#include "FeatureTree/TreeItem.h"

#include <cstring>

#include <QDebug>
#include <QThread>

#include "FeatureTree/FeatureKinds.h"
#include "FeatureTree/FeatureValues.h"
#include "FeatureTree/VisibilityPass.h"
#include "Features/NodeGuard.h"
#include "PanelBase/HostCall.h"

namespace {

constexpr int valueColumn = 1;
constexpr unsigned long settleMs = 50;
/// A device that words each of its faults differently must not fill the memory.
constexpr int mostFaults = 200;

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

TreeItem::TreeItem(const QVector<QVariant> &data, TreeItem *parent) : itemData(data), parentItem(parent) { }

TreeItem::~TreeItem()
{
    qDeleteAll(childItems);
}

TreeItem *TreeItem::child(int number)
{
    return childItems.value(number, nullptr);
}

int TreeItem::childNumber() const
{
    return parentItem ? parentItem->childItems.indexOf(const_cast<TreeItem *>(this)) : 0;
}

TreeItem *TreeItem::appendChild(const QVector<QVariant> &data)
{
    childItems.append(new TreeItem(data, this));
    return childItems.last();
}

bool TreeItem::insertChildren(int position, int count, int columns)
{
    if (position < 0 || position > childItems.size())
        return false;
    for (int i = 0; i < count; ++i)
        childItems.insert(position, new TreeItem(QVector<QVariant>(columns), this));
    return true;
}

bool TreeItem::insertColumns(int position, int columns)
{
    if (position < 0 || position > itemData.size())
        return false;
    if (columns > 0)
        itemData.insert(position, columns, QVariant());
    for (TreeItem *item : qAsConst(childItems))
        item->insertColumns(position, columns);
    return true;
}

bool TreeItem::removeChildren(int position, int count)
{
    if (position < 0 || count > childItems.size() - position)
        return false;
    for (int i = 0; i < count; ++i)
        delete childItems.takeAt(position);
    return true;
}

bool TreeItem::removeColumns(int position, int columns)
{
    if (position < 0 || columns > itemData.size() - position)
        return false;
    if (columns > 0)
        itemData.remove(position, columns);
    for (TreeItem *item : qAsConst(childItems))
        item->removeColumns(position, columns);
    return true;
}

QVariant TreeItem::data(int column)
{
    if (column != valueColumn || !feature.IsValid())
        return storedData(column);
    QVariant value;
    bool unreadable = false;
    guardNode([&] { value = FeatureValues::shown(feature); },
              [&](const GenICam::GenericException &error) { unreadable = isUnreadable(error); },
              [this](const char *message) { logNewFault(message); });
    if (unreadable)
        return QStringLiteral("{Not Available}");
    if (!value.isValid())
        return storedData(column);
    if (column < itemData.size())
        itemData[column] = value;
    return value;
}

bool TreeItem::setData(int column, const QVariant &value)
{
    if (column < 0 || column >= itemData.size() || !value.isValid()) {
        qDebug("Data is invalid!");
        return false;
    }
    if (column == 0) {
        itemData[column] = value;
    } else if (!feature.IsValid()) {
        qDebug("Feature is invalid!");
        itemData[column] = value;
    } else {
        QVariant old;
        const auto rollBack = [&](const GenICam::GenericException &error) {
            itemData[column] = old;
            qDebug("Failed to set data for %s", qUtf8Printable(featureName));
            logLine("Set " + featureName.toStdString() + " value failed, message = " + error.GetDescription());
        };
        guardNode([&] { write(column, value, old); }, rollBack, logLine);
    }
    return true;
}

void TreeItem::write(int column, const QVariant &value, QVariant &old)
{
    const bool isPlain = FeatureValues::isPlain(feature);
    const bool isReadable = feature->GetAccessMode() != GenApi::WO;
    if (isPlain && isReadable)
        old = FeatureValues::read(feature);
    if (!FeatureValues::write(feature, value))
        return;
    QThread::msleep(settleMs);
    if (!isReadable)
        return;
    FeatureValues::refresh(feature);
    if (isPlain)
        itemData[column] = FeatureValues::read(feature);
}

GenApi::INode *TreeItem::GetFeaturePtr() const
{
    return feature.IsValid() ? feature.operator->() : nullptr;
}

void TreeItem::SetFeature(const GenApi::CPointer<GenApi::INode> &node)
{
    feature = node;
    featureName.clear();
    availability.reset();
    if (feature.IsValid())
        guardNode([this] { featureName = FeatureKinds::nodeName(feature); });
}

bool TreeItem::EnterEditMode(QString &interfaceName)
{
    bool found = false;
    guardNode([&] {
        GenICam::gcstring value;
        GenICam::gcstring attribute;
        found = feature.IsValid() && feature->GetProperty("Interface", value, attribute);
        if (found)
            interfaceName = QString::fromUtf8(value.c_str());
    });
    return found;
}

bool TreeItem::getVisiable(const int &level, const QString &filter)
{
    VisibilityPass pass{level, filter, {}};
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
            isShown = feature->GetVisibility() <= pass.level
                && (featureName.contains(pass.filter, Qt::CaseInsensitive)
                    || feature->GetPrincipalInterfaceType() == GenApi::intfICategory)
                && isSwitchedOn(pass);
        },
        [](const GenICam::GenericException &) {}, onForeign);
    return isShown;
}

GenApi::INode *TreeItem::availabilityNode()
{
    if (availability)
        return *availability;
    GenICam::gcstring name;
    GenICam::gcstring attribute;
    const bool isSwitched = feature->GetProperty("pIsAvailable", name, attribute);
    GenApi::INodeMap *nodeMap = isSwitched ? feature->GetNodeMap() : nullptr;
    availability = nodeMap ? nodeMap->GetNode(name) : nullptr;
    return *availability;
}

bool TreeItem::isSwitchedOn(VisibilityPass &pass)
{
    GenApi::INode *node = availabilityNode();
    if (!node)
        return true;
    const auto known = pass.switches.constFind(node);
    if (known != pass.switches.constEnd())
        return known.value();
    bool &isOn = pass.switches[node];
    guardNode([&] { isOn = isNonZero(node); }, [](const GenICam::GenericException &) {},
              [&](const char *message) {
                  isOn = true;
                  logNewFault(message);
              });
    return isOn;
}

bool TreeItem::isNewFault(const char *message)
{
    TreeItem *top = this;
    while (top->parentItem)
        top = top->parentItem;
    const int before = top->reportedFaults.size();
    if (before < mostFaults)
        top->reportedFaults.insert(message);
    return top->reportedFaults.size() > before;
}

void TreeItem::logNewFault(const char *message)
{
    if (isNewFault(message))
        logLine(message);
}
