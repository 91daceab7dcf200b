// SPDX-License-Identifier: MIT
#include "FeatureTree/VisibilityPass.h"

void VisibilityPass::restart(int newLevel, const QString &newFilter)
{
    if (level != newLevel || filter != newFilter)
        due.clear();
    level = newLevel;
    filter = newFilter;
    for (auto read = switches.constBegin(); read != switches.constEnd(); ++read)
        before[read.key()] = read.value();
    switches.clear();
}

bool VisibilityPass::isKnown(GenApi::INode *node)
{
    if (isKnownOnly || switches.contains(node))
        return true;
    if (!reading || reading->hasTime())
        return false;
    putOff(node);
    return true;
}

void VisibilityPass::putOff(GenApi::INode *node)
{
    if (!due.contains(node))
        due.append(node);
}
