// SPDX-License-Identifier: MIT
#pragma once

#include <QHash>
#include <QString>

#include <GenApi/GenApi.h>

/// One pass of the tree's filter over its rows: what to show, and the availability nodes that were read so far, so
/// that each is read once however many features it switches. Lives no longer than the pass.
struct VisibilityPass
{
    int level; ///< highest GenICam visibility that is shown: 0 Beginner, 1 Expert, 2 Guru
    QString filter; ///< part of the feature names that are shown; empty shows all
    QHash<GenApi::INode *, bool> switches; ///< availability node, and whether its features are shown
};
