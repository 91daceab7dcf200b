// SPDX-License-Identifier: MIT
#include "Simulation/FrameFaults.h"

#include "Devices/FrameTally.h"

namespace {

constexpr int Period = 8; // frames, of which each of these gets a fault
constexpr int LostOne = 2;
constexpr int IncompleteOne = 6;

} // namespace

FrameFaults::Passage FrameFaults::pass(SimulatedFrame &frame)
{
    m_passed = (m_passed + 1) % Period;
    if (m_isLosing && m_passed == LostOne)
        return {FrameFate::Lost, {}};
    if (m_isLosing && m_passed == IncompleteOne)
        return {FrameFate::MissingPackets, {}};
    if (frame.heights)
        return {};
    const QImage large = m_isEnlarging || m_isReadyForLarge ? frame.image.scaled(frame.image.size() * 2) : QImage();
    const qint64 ready = (m_isReadyForLarge ? large : frame.image).sizeInBytes();
    if (m_isEnlarging)
        frame.image = large;
    if (m_isEnlarging == m_isReadyForLarge)
        return {};
    m_isReadyForLarge = m_isEnlarging;
    return {m_isEnlarging ? FrameFate::TooLarge : FrameFate::MissingPackets,
            payloadChange(ready, frame.image.sizeInBytes())};
}
