// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <functional>
#include <memory>
#include <optional>

#include <QImage>

#include "Devices/FrameCounts.h"
#include "Devices/gentl/DeliveredFrame.h"
#include "Devices/gentl/EventPump.h"

/// Fetches the frames of a camera on a thread of its own from construction to destruction.
class GentlStream
{
public:
    struct Plan
    {
        std::weak_ptr<DeviceModule> device;
        QByteArray id; ///< of the stream
        std::size_t frameSize = 0; ///< bytes, as the camera tells; 0: it does not. The stream may know better.
        FrameFormat format; ///< as the camera tells
        bool wantsChunks = false;
    };
    /// What came, and what did not.
    struct Arrival
    {
        QImage image; ///< null unless the frame is good and can be shown
        FrameFate fate = FrameFate::Good;
        qint64 lostBefore = 0; ///< frames between the last one and this one of which nothing came
        std::vector<FrameChunk> chunks;
    };
    /// Called on the stream's thread.
    struct Receiver
    {
        std::function<void(Arrival arrival)> take;
        std::function<void(const QString &line)> report; ///< each thing once
    };

    /// Throws when the producer grants no stream, or does not come back.
    GentlStream(const Plan &plan, Receiver receiver);
    /// Nobody waits for a producer that does not come back.
    ~GentlStream();

    GentlStream(const GentlStream &) = delete;
    GentlStream &operator=(const GentlStream &) = delete;

    /// Bytes that were made ready for each frame.
    std::size_t frameSize() const;
    /// Bytes that a frame has now, if the camera tells so many.
    std::size_t currentFrameSize(std::size_t told) const;

private:
    class Feed;
    std::shared_ptr<Feed> m_feed;
    std::unique_ptr<EventPump> m_pump;
};
