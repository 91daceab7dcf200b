// SPDX-License-Identifier: MIT
#include "Viewer/FeatureDump.h"

#include <QTextStream>

#include "FeatureTree/FeatureEditDelegate.h"
#include "FeatureTree/FeatureKinds.h"
#include "FeatureTree/FloatText.h"
#include "FeatureTree/TreeItem.h"
#include "FeatureTree/TreeModel.h"
#include "FeatureTree/VisibilityPass.h"
#include "Features/NodeGuard.h"

namespace {

constexpr int ValueColumn = 1;
constexpr int VisibilityLevel = 2; // Guru

const char *const TypeNames[] = {"Value",  "Base",     "Integer",  "Boolean",     "Command",   "Float",
                                 "String", "Register", "Category", "Enumeration", "EnumEntry", "Port"};
const char *const AccessNames[] = {"NI", "NA", "WO", "RO", "RW"};
const char *const VisibilityNames[] = {"Beginner", "Expert", "Guru", "Invisible"};
const char *const NoEditor = "-";

template <std::size_t count>
QString nameOf(const char *const (&names)[count], int number)
{
    return number >= 0 && static_cast<std::size_t>(number) < count ? QLatin1String(names[number])
                                                                   : QString::number(number);
}

/// A cell as the delegate paints it: the model's text, or the item's own for what cannot be written.
QString shownText(const TreeModel &model, const QModelIndex &cell)
{
    const QVariant shown = model.data(cell);
    const QVariant value = shown.isValid() ? shown : model.getItem(cell)->data(cell.column());
    if (value.userType() != QMetaType::Double)
        return value.toString().simplified();
    return shown.isValid() ? floatText(value.toDouble()) : readOnlyFloatText(value.toDouble());
}

class Dump
{
public:
    explicit Dump(const TreeModel &features) : m_model(features) { m_pass.level = VisibilityLevel; }

    /// The lines of the rows that the tree shows under a row: leaves by their own state, branches with their leaves.
    QStringList lines(const QModelIndex &parent, const QString &parentPath)
    {
        QStringList result;
        for (int row = 0; row < m_model.rowCount(parent); ++row) {
            const QModelIndex name = m_model.index(row, 0, parent);
            const QString path = parentPath + QLatin1Char('/') + m_model.data(name).toString().simplified();
            const QStringList below = lines(name, path);
            const bool isLeaf = !m_model.hasChildren(name);
            if (isLeaf ? m_model.getItem(name)->getVisiable(m_pass) : !below.isEmpty())
                result << line(name, path) << below;
        }
        return result;
    }

private:
    QString line(const QModelIndex &name, const QString &path)
    {
        QStringList fields{path};
        QString error;
        if (!guarded(&error, [&] { fields += nodeFields(name); }))
            fields += error.simplified();
        return fields.join(QLatin1Char('\t'));
    }

    QStringList nodeFields(const QModelIndex &name) const
    {
        GenApi::INode *node = m_model.getItem(name)->GetFeaturePtr();
        if (!node)
            return {};
        const QModelIndex value = name.sibling(name.row(), ValueColumn);
        const char *const editor = m_delegate.isEditable(value) ? FeatureKinds::editorKind(node).name : NoEditor;
        return {nameOf(TypeNames, node->GetPrincipalInterfaceType()), nameOf(AccessNames, node->GetAccessMode()),
                nameOf(VisibilityNames, node->GetVisibility()), shownText(m_model, value), QLatin1String(editor)};
    }

    const TreeModel &m_model;
    FeatureEditDelegate m_delegate;
    VisibilityPass m_pass;
};

} // namespace

void dumpFeatures(GenApi::INodeMap &map, QTextStream &out)
{
    GenApi::node_vector nodes;
    map.GetNodes(nodes);
    TreeModel model({QStringLiteral("Features"), QStringLiteral("Value")}, nodes);
    model.AddModelData(nodes, QString());
    for (const QString &line : Dump(model).lines(QModelIndex(), QString()))
        out << line << '\n';
}
