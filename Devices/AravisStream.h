// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <functional>
#include <memory>
#include <optional>

#include <QImage>

#include "Devices/FrameCounts.h"

typedef struct _ArvDevice ArvDevice;

/// Fetches the frames of a camera on a thread of its own from construction to destruction.
class AravisStream
{
public:
    /// What came, and what did not.
    struct Arrival
    {
        QImage image; ///< null unless the frame is good and can be shown
        /// None: not a frame but packets that belong to none that fits; frames may have another size than before.
        std::optional<FrameFate> fate;
        qint64 lostBefore = 0; ///< frames between the last one and this one of which nothing came
    };
    /// Called on the stream's thread.
    using Receiver = std::function<void(const Arrival &)>;

    /// Throws a GenICam exception when the camera grants no stream.
    AravisStream(ArvDevice *device, std::size_t frameSize, Receiver receiver);
    /// Releasing the stream of a camera that is gone takes seconds; nobody waits for that.
    ~AravisStream();

    AravisStream(const AravisStream &) = delete;
    AravisStream &operator=(const AravisStream &) = delete;

    /// Bytes that were made ready for each frame.
    std::size_t frameSize() const { return m_frameSize; }

private:
    class Feed;
    const std::size_t m_frameSize;
    std::shared_ptr<Feed> m_feed;
};
