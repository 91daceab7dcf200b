// SPDX-License-Identifier: MIT
// Building the rows of a TreeModel from the nodes of a device.
#include "FeatureTree/TreeModel.h"

#include <iostream>

#include "FeatureTree/FeatureKinds.h"
#include "FeatureTree/FeatureValues.h"
#include "FeatureTree/TreeItem.h"
#include "Features/NodeGuard.h"
#include "PanelBase/HostCall.h"

namespace {

/// Categories may list each other in any way; with rowBudget this keeps a faulty description from using up the stack.
constexpr int DeepestCategory = 100;

bool isCategory(GenApi::INode *node)
{
    return node->GetPrincipalInterfaceType() == GenApi::intfICategory;
}

QString rootText(GenApi::INode *node)
{
    const GenICam::gcstring toolTip = node->GetToolTip();
    return QString::fromUtf8((toolTip.empty() ? node->GetDeviceName() : toolTip).c_str());
}

/// The nodes that a category lists, in its order.
GenApi::node_vector listedNodes(GenApi::INode *category)
{
    GenApi::value_vector features;
    GenApi::CCategoryPtr(category)->GetFeatures(features);
    GenApi::node_vector nodes;
    for (GenApi::IValue *feature : features) {
        if (feature)
            nodes.push_back(feature->GetNode());
    }
    return nodes;
}

/// The nodes that are listed by any of the categories among `nodes`.
QSet<GenApi::INode *> listedByAny(const GenApi::node_vector &nodes)
{
    QSet<GenApi::INode *> listed;
    const auto addListed = [&listed](GenApi::INode *node) {
        if (!isCategory(node))
            return;
        for (GenApi::INode *feature : listedNodes(node))
            listed.insert(feature);
    };
    for (GenApi::INode *node : nodes) {
        if (node)
            guardNode([&] { addListed(node); });
    }
    return listed;
}

} // namespace

void TreeModel::AddModelData(const GenApi::node_vector &nodes, const QString &)
{
    if (nodes.empty())
        return;
    beginResetModel();
    setupModelData(nodes, m_rootItem.get(), true);
    m_listedFeatures = {};
    endResetModel();
}

void TreeModel::setupModelData(const GenApi::node_vector &nodes, TreeItem *parent, bool useFilter)
{
    if (isTopLevel())
        m_listedFeatures = listedByAny(nodes);
    for (GenApi::INode *node : nodes) {
        if (node && m_rowBudget > 0)
            guardNode([&] { addRow(node, parent, useFilter); });
    }
}

/// The root category, which nothing lists in a sound description.
bool TreeModel::isRoot(GenApi::INode *node) const
{
    return !m_listedFeatures.contains(node) || FeatureKinds::nodeName(node) == QLatin1String("Root");
}

bool TreeModel::isRow(GenApi::INode *node) const
{
    if (!node->IsFeature())
        return false;
    return isTopLevel() ? isRoot(node) : node->GetVisibility() <= GenApi::Guru;
}

void TreeModel::addRow(GenApi::INode *node, TreeItem *parent, bool useFilter)
{
    if (!isRow(node))
        return;
    const QString text = isTopLevel() ? rootText(node) : FeatureKinds::nodeName(node);
    if (isCategory(node))
        addCategory(node, text, parent, useFilter);
    else
        addFeature(node, text, parent, useFilter);
}

void TreeModel::addFeature(GenApi::INode *node, const QString &text, TreeItem *parent, bool useFilter)
{
    if (useFilter && !m_filterText.isEmpty()
        && !FeatureKinds::nodeName(node).contains(m_filterText, Qt::CaseInsensitive))
        return;
    parent->appendChild({text, initialValue(node)})->SetFeature(node);
    --m_rowBudget;
}

void TreeModel::addCategory(GenApi::INode *node, const QString &text, TreeItem *parent, bool useFilter)
{
    if (m_openCategories.contains(node) || m_openCategories.size() >= DeepestCategory)
        return;
    TreeItem *row = parent->appendChild({text, QVariant()});
    row->SetFeature(node);
    --m_rowBudget;
    const bool isMatch = text.contains(m_filterText, Qt::CaseInsensitive);
    m_openCategories.append(node);
    guardNode([&] { setupModelData(listedNodes(node), row, useFilter && !isMatch); });
    m_openCategories.removeLast();
    const bool isWanted = isTopLevel() && (isMatch || !useFilter);
    if (row->childCount() == 0 && !isWanted)
        parent->removeChildren(row->childNumber(), 1);
}

QVariant TreeModel::initialValue(GenApi::INode *node)
{
    QVariant value;
    guardNode(
        [&] {
            const bool isLocal = node->GetPrincipalInterfaceType() == GenApi::intfIString
                && FeatureKinds::isLocalText(FeatureKinds::nodeName(node));
            value = isLocal ? QVariant(QString::fromLocal8Bit(GenApi::CStringPtr(node)->GetValue().c_str()))
                            : FeatureValues::read(node);
        },
        [this](const GenICam::GenericException &error) {
            if (m_rootItem->isNewFault(error.GetDescription()))
                std::cout << error.GetDescription() << std::endl;
        },
        [this](const char *message) {
            if (m_rootItem->isNewFault(message))
                logToHost("TreeItem", message);
        });
    return value;
}
