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

/// Makes the writes one after the other, whatever becomes of each. False when the device or the host refuses some;
/// one log line names what is refused by entry. What the device lacks is passed over.
bool writeSequence(const PanelContext &context, Table<NodeWrite> writes);
/// The same for writes that only select what is read next; a panel tells of the same refusal once.
bool selectToRead(const PanelContext &context, Table<NodeWrite> selection);
