// SPDX-License-Identifier: MIT
#pragma once

#include "ParamterWidget/pages/RowSpec.h"

struct PanelContext;

/// One write of an interlocked sequence.
struct NodeWrite
{
    static constexpr int Command = -1;

    const char *feature;
    int entry; ///< of an enumeration, by its integer value, or Command; unused with a text
    const char *text; ///< written by name through the host; null: the node is written, or executed
    int pause; ///< before the next write, for the device to take this one, in ms; blocks the GUI thread

    static constexpr NodeWrite ofEntry(const char *feature, int entry, int pause = 0)
    {
        return {feature, entry, nullptr, pause};
    }
    static constexpr NodeWrite ofCommand(const char *feature, int pause = 0)
    {
        return {feature, Command, nullptr, pause};
    }
    static constexpr NodeWrite ofText(const char *feature, const char *text, int pause = 0)
    {
        return {feature, 0, text, pause};
    }
};

/// Makes the writes one after the other, whatever becomes of each; what the device lacks is passed over. False when
/// one was refused: one log line names what the device refuses, the host reports by itself what it refuses by name.
bool writeSequence(PanelContext &context, Table<NodeWrite> writes);
/// The same for writes that only select what is read next; a panel tells of the same refusal once.
bool selectToRead(PanelContext &context, Table<NodeWrite> selection);
