// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

#include "Devices/FrameCounts.h"
#include "Simulation/FrameSource.h"

/// The way of a simulated device's frames to the host, as bad as a test or a demonstration wants it.
class FrameFaults
{
public:
    /// Some frames get lost, others come in part.
    void setLosing(bool losing) { m_isLosing = losing; }
    bool isLosing() const { return m_isLosing; }
    /// Images are twice as wide and high as the device tells; frames with heights stay as they are.
    void setEnlarging(bool enlarging) { m_isEnlarging = enlarging; }
    bool isEnlarging() const { return m_isEnlarging; }

    /// An acquisition starts, with memory for frames of the size that they have then.
    void begin() { m_isReadyForLarge = m_isEnlarging; }
    struct Passage
    {
        FrameFate fate = FrameFate::Good;
        QString payloadChange; ///< not empty: the first frame of another size, for which there is memory from now on
    };
    /// What becomes of the next frame, which may be another one then.
    Passage pass(SimulatedFrame &frame);

private:
    bool m_isLosing = false;
    bool m_isEnlarging = false;
    bool m_isReadyForLarge = false;
    int m_passed = 0;
};
