// SPDX-License-Identifier: MIT
#pragma once

#include <QHash>
#include <QPointer>
#include <QString>
#include <QVector>

#include <GenApi/GenApi.h>

#include "PanelBase/DeviceReading.h"

/// One pass of the tree's filter over its rows: what to show, and the availability nodes that were read so far, so
/// that each is read once however many features it switches. A slow device answers the rest of them later: until then
/// their features are shown as they were known before, at first as available.
struct VisibilityPass
{
    int level = 0; ///< highest GenICam visibility that is shown: 0 Beginner, 1 Expert, 2 Guru
    QString filter; ///< part of the feature names that are shown; empty shows all
    QHash<GenApi::INode *, bool> switches; ///< availability node read in this pass: whether its features are shown
    QHash<GenApi::INode *, bool> before; ///< the same of earlier passes
    QVector<GenApi::INode *> due; ///< nodes that are to be read yet
    QPointer<DeviceReading> reading; ///< null: nodes are read at once
    bool isKnownOnly = false; ///< nothing is read, now or later

    /// Begins the next pass. What is due stays so, since rows outside of it may wait for it, unless other rows are
    /// wanted.
    void restart(int newLevel, const QString &newFilter);
    /// False for a node that is to be read now; one that is to be read later becomes due.
    bool isKnown(GenApi::INode *node);
    void putOff(GenApi::INode *node);
    bool isOn(GenApi::INode *node) const { return switches.value(node, before.value(node, true)); }
};
