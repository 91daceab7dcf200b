// SPDX-License-Identifier: MIT
#pragma once

#include <GenApi/GenApi.h>

class TreeItem;

/// Adds the rows of a device under `top`: the root category among `nodes`, which are all nodes of a map, and what it
/// lists, down to the leaves. A category without rows has none itself, unless it is the root. Null nodes are skipped,
/// and so are loops of categories. Reads each value once, or leaves it unread (TreeItem::isUnread())
/// when that would take too long now; no exception of a node leaves it.
void buildTree(const GenApi::node_vector &nodes, TreeItem &top);
