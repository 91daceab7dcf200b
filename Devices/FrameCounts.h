// SPDX-License-Identifier: MIT
#pragma once

#include <QtGlobal>

/// What became of a frame on its way to the host.
enum class FrameFate {
    Good,
    MissingPackets,
    LatePackets, ///< some had not come in time
    WrongPackets,
    Aborted,
    Unknown, ///< not usable, and nobody says why
    Lost, ///< nothing of it came; the numbers of the frames tell that it was sent
    TooLarge, ///< for the memory that was made ready for it
};

/// How many frames of an acquisition came, and how many did not as they should have.
struct FrameCounts
{
    qint64 good = 0;
    qint64 incomplete = 0; ///< came in part
    qint64 lost = 0;
    qint64 tooLarge = 0;

    bool isFaultless() const { return incomplete == 0 && lost == 0 && tooLarge == 0; }
};
