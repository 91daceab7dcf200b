// SPDX-License-Identifier: MIT
#include "Features/NodeText.h"

namespace {

GenApi::INode &findNode(GenApi::INodeMap &map, const QString &name)
{
    GenApi::INode *node = map.GetNode(name.toUtf8().constData());
    if (!node)
        throw INVALID_ARGUMENT_EXCEPTION("There is no feature '%s'", name.toUtf8().constData());
    return *node;
}

GenApi::IValue &valueOf(GenApi::INode &node)
{
    const GenApi::CValuePtr value(&node);
    if (!value.IsValid())
        throw INVALID_ARGUMENT_EXCEPTION("Feature '%s' has no value", node.GetName().c_str());
    return *value;
}

void writeEnumeration(GenApi::IEnumeration &enumeration, const QString &text)
{
    const GenICam::gcstring symbolic(text.toUtf8().constData());
    bool isNumber = false;
    const qlonglong number = text.toLongLong(&isNumber);
    if (isNumber && !enumeration.GetEntryByName(symbolic))
        enumeration.SetIntValue(number);
    else
        enumeration.FromString(symbolic);
}

} // namespace

QString readNodeText(GenApi::INodeMap &map, const QString &name)
{
    GenApi::INode &node = findNode(map, name);
    const GenApi::CBooleanPtr boolean(&node);
    if (boolean.IsValid())
        return boolean->GetValue() ? QStringLiteral("True") : QStringLiteral("False");
    return QString::fromUtf8(valueOf(node).ToString().c_str());
}

void writeNodeText(GenApi::INodeMap &map, const QString &name, const QString &text)
{
    GenApi::INode &node = findNode(map, name);
    const GenApi::CCommandPtr command(&node);
    const GenApi::CBooleanPtr boolean(&node);
    const GenApi::CEnumerationPtr enumeration(&node);
    if (command.IsValid() && text.isEmpty())
        command->Execute();
    else if (boolean.IsValid())
        boolean->FromString(text.toLower().toUtf8().constData());
    else if (enumeration.IsValid())
        writeEnumeration(*enumeration, text);
    else
        valueOf(node).FromString(text.toUtf8().constData());
}
