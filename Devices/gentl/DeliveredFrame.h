// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <optional>
#include <vector>

#include <QByteArray>
#include <QImage>

#include "Devices/FrameCounts.h"
#include "Devices/gentl/StreamBuffers.h"

/// What the camera itself says of its frames, for producers that do not tell.
struct FrameFormat
{
    uint32_t pixelFormat = 0;
    int width = 0;
    int height = 0;
};

/// One piece of data that a camera has added to a frame.
struct FrameChunk
{
    uint64_t id = 0;
    QByteArray data;
};

/// A buffer that the producer has filled. It must not be queued before this has gone.
class DeliveredFrame
{
public:
    DeliveredFrame(const StreamModule &stream, const StreamBuffer &buffer, const FrameFormat &fallback);

    FrameFate fate() const;
    /// For display. Null unless the frame is good and can be shown. The one copy of the frame.
    QImage image() const;
    /// None where the producer does not tell.
    std::optional<uint64_t> number() const { return info(GenTL::BUFFER_INFO_FRAMEID); }
    /// It has parts that are shapes, not images.
    bool has3dParts() const { return m_has3dParts; }
    bool mayHaveChunks() const;
    /// The pieces that lie in the buffer. `code` tells whether the producer knows of any.
    std::vector<FrameChunk> chunks(GenTL::GC_ERROR *code) const;

private:
    /// Where the image lies, and what it is.
    struct Image
    {
        FrameFormat format;
        std::size_t padding = 0; ///< bytes between lines
        const char *data = nullptr;
        std::size_t size = 0; ///< bytes that came
        std::size_t room = 0; ///< bytes that might have come

        std::size_t neededSize() const;
    };
    using Number = std::optional<uint64_t>;

    const Producer &gentl() const { return *m_stream.producer(); }
    Number info(GenTL::BUFFER_INFO_CMD command) const;
    Number partInfo(uint32_t part, GenTL::BUFFER_PART_INFO_CMD command) const;
    void findImage(const FrameFormat &fallback);
    /// True when one of the parts is an image.
    bool findPart(uint32_t count, const FrameFormat &fallback);
    Image partImage(uint32_t part, const FrameFormat &fallback) const;
    Image wholeImage(const FrameFormat &fallback) const;
    /// The bytes from there on that lie in the buffer.
    std::size_t roomAt(const char *data) const;

    const StreamModule &m_stream;
    const StreamBuffer &m_buffer;
    std::optional<Image> m_image;
    bool m_has3dParts = false;
};
