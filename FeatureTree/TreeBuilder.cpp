// SPDX-License-Identifier: MIT
#include "FeatureTree/TreeBuilder.h"

#include <QSet>
#include <QVector>

#include "FeatureTree/FeatureKinds.h"
#include "FeatureTree/TreeItem.h"
#include "Features/NodeGuard.h"
#include "PanelBase/DeviceReading.h"

namespace {

/// Categories may list each other in any way; this and the number of rows keep a faulty description from using up the
/// stack and the memory.
constexpr int DeepestCategory = 100;
constexpr int MostRows = 200000;

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

class Builder
{
public:
    Builder(const GenApi::node_vector &all, DeviceReading *reading) : m_listed(listedByAny(all)), m_reading(reading) { }

    void addRows(const GenApi::node_vector &nodes, TreeItem &parent)
    {
        for (GenApi::INode *node : nodes) {
            if (node && m_rowBudget > 0)
                guardNode([&] { addRow(node, parent); });
        }
    }

private:
    bool isTopLevel() const { return m_openCategories.isEmpty(); }

    /// The root category, which nothing lists in a sound description.
    bool isRoot(GenApi::INode *node) const
    {
        return !m_listed.contains(node) || FeatureKinds::nodeName(node) == QLatin1String("Root");
    }

    bool isRow(GenApi::INode *node) const
    {
        if (!node->IsFeature())
            return false;
        return isTopLevel() ? isRoot(node) : node->GetVisibility() <= GenApi::Guru;
    }

    void addRow(GenApi::INode *node, TreeItem &parent)
    {
        if (!isRow(node))
            return;
        const QString text = isTopLevel() ? rootText(node) : FeatureKinds::nodeName(node);
        if (isCategory(node))
            addCategory(node, text, parent);
        else
            addFeature(node, text, parent);
    }

    /// A value for which there is no time now is read later.
    void addFeature(GenApi::INode *node, const QString &text, TreeItem &parent)
    {
        TreeItem *row = parent.appendChild({text, QVariant()});
        bindRow(node, row);
        row->setUnread();
        if (!m_reading || m_reading->hasTime())
            row->readFirst();
    }

    void addCategory(GenApi::INode *node, const QString &text, TreeItem &parent)
    {
        if (m_openCategories.contains(node) || m_openCategories.size() >= DeepestCategory)
            return;
        TreeItem *row = parent.appendChild({text, QVariant()});
        bindRow(node, row);
        m_openCategories.append(node);
        guardNode([&] { addRows(listedNodes(node), *row); });
        m_openCategories.removeLast();
        if (row->childCount() == 0 && !isTopLevel())
            parent.removeChildren(row->childNumber(), 1);
    }

    void bindRow(GenApi::INode *node, TreeItem *row)
    {
        row->SetFeature(node);
        --m_rowBudget;
    }

    QSet<GenApi::INode *> m_listed; ///< what categories list
    DeviceReading *m_reading;
    QVector<GenApi::INode *> m_openCategories; ///< from the root to the one whose rows are being added
    int m_rowBudget = MostRows; ///< rows that may still be added
};

} // namespace

void buildTree(const GenApi::node_vector &nodes, TreeItem &top)
{
    Builder(nodes, top.reading()).addRows(nodes, top);
}
