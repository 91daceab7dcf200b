// SPDX-License-Identifier: MIT
#include "Features/NodeText.h"

#include "Features/ValueKind.h"

namespace {

GenApi::INode *findNode(GenApi::INodeMap &map, const QString &name)
{
    GenApi::INode *node = map.GetNode(name.toUtf8().constData());
    if (!node)
        throw INVALID_ARGUMENT_EXCEPTION("There is no feature '%s'", name.toUtf8().constData());
    return node;
}

/// The text itself unless it is the number of an entry.
QString entryText(GenApi::IEnumeration &enumeration, const QString &text)
{
    bool isNumber = false;
    const qlonglong number = text.toLongLong(&isNumber);
    if (!isNumber || enumeration.GetEntryByName(text.toUtf8().constData()))
        return text;
    const GenApi::CEnumEntryPtr entry(enumeration.GetEntry(number));
    return entry.IsValid() ? QString::fromUtf8(entry->GetSymbolic().c_str()) : text;
}

QString booleanText(const QString &text)
{
    const QString word = text.toLower();
    if (word == QLatin1String("true"))
        return QStringLiteral("1");
    return word == QLatin1String("false") ? QStringLiteral("0") : text;
}

} // namespace

QString readNodeText(GenApi::INodeMap &map, const QString &name)
{
    GenApi::INode *node = findNode(map, name);
    return valueKind(node).text(node);
}

void writeNodeText(GenApi::INodeMap &map, const QString &name, const QString &text)
{
    GenApi::INode *node = findNode(map, name);
    valueKind(node).writeText(node, text);
}

QString settingText(GenApi::INode *node, const QString &text)
{
    const GenApi::CEnumerationPtr enumeration(node);
    if (enumeration.IsValid())
        return entryText(*enumeration, text);
    return GenApi::CBooleanPtr(node).IsValid() ? booleanText(text) : text;
}
