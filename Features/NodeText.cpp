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
