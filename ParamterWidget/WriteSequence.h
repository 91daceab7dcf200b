// SPDX-License-Identifier: MIT
#pragma once

#include "ParamterWidget/pages/RowSpec.h"

struct PanelContext;

/// One write of an interlocked sequence.
struct NodeWrite
{
    const char *feature;
    int entry; ///< of an enumeration, by its integer value; unused with a text
    const char *text; ///< written by name through the host; null: `entry` is written to the node
    int pause; ///< what the device gets to follow, in ms; blocks the GUI thread

    static constexpr NodeWrite ofEntry(const char *feature, int entry, int pause = 0)
    {
        return {feature, entry, nullptr, pause};
    }
    static constexpr NodeWrite ofText(const char *feature, const char *text, int pause = 0)
    {
        return {feature, 0, text, pause};
    }
};

/// Makes the writes one after the other, whatever becomes of each.
void writeSequence(const PanelContext &context, Table<NodeWrite> writes);
