// SPDX-License-Identifier: MIT
#pragma once

#include "Tags.h"

#include <string_view>
#include <vector>

namespace NodeEngine {

class Node;

/// One link of a node, in document order. The role is the element's tag (pValue, pMax, EnumEntry...).
struct Link
{
    Tag role;
    Node *target;
    std::string_view name; ///< pVariable: the variable
    std::string_view number; ///< pIndex, pValueIndexed: Offset or Index as it stands in the file
};
using Links = std::vector<Link>;

/// What a link means to the node that has it.
enum class LinkKind {
    Value, ///< its value comes from there
    Limit, ///< its minimum, maximum or increment does
    Gate, ///< its access mode does
    Content, ///< a category's feature, an enumeration's entry, a register's port
    Invalidator, ///< it has to be read again when that one is written
    Other ///< nothing follows from it
};
LinkKind kindOf(Tag role);

/// Whether the node reads a number from there: for its value, a limit or its access mode.
bool isNumberLink(Tag role);
/// Whether GetChildren(ctReadingChildren) and GetParents() show the link.
bool isReadingLink(Tag role);
/// Whether GetChildren(ctWritingChildren) shows the link.
bool isWritingLink(Tag role);

} // namespace NodeEngine
