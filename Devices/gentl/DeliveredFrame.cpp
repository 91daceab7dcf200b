// SPDX-License-Identifier: MIT
#include "Devices/gentl/DeliveredFrame.h"

#include <algorithm>
#include <limits>

#include "Devices/FrameImage.h"

namespace {

/// The codes that this program knows are those of the 32-bit naming convention, which GEV shares.
uint32_t knownFormat(std::optional<uint64_t> format, std::optional<uint64_t> nameSpace, uint32_t fallback)
{
    const uint64_t names = nameSpace.value_or(GenTL::PIXELFORMAT_NAMESPACE_UNKNOWN);
    const bool isForeign =
        names == GenTL::PIXELFORMAT_NAMESPACE_IIDC || names == GenTL::PIXELFORMAT_NAMESPACE_PFNC_16BIT;
    return isForeign || !format || *format == 0 ? fallback : static_cast<uint32_t>(*format);
}

/// 0 is how some producers say that they do not know.
int knownLength(std::optional<uint64_t> length, int fallback)
{
    const bool isKnown = length && *length > 0 && *length <= uint64_t(std::numeric_limits<int>::max());
    return isKnown ? static_cast<int>(*length) : fallback;
}

bool isShownPart(uint64_t type)
{
    return type == GenTL::PART_DATATYPE_2D_IMAGE || type == GenTL::PART_DATATYPE_2D_PLANE_BIPLANAR
        || type == GenTL::PART_DATATYPE_2D_PLANE_TRIPLANAR || type == GenTL::PART_DATATYPE_2D_PLANE_QUADPLANAR;
}

bool is3dPart(uint64_t type)
{
    return type >= GenTL::PART_DATATYPE_3D_IMAGE && type <= GenTL::PART_DATATYPE_3D_PLANE_QUADPLANAR;
}

} // namespace

std::size_t DeliveredFrame::Image::neededSize() const
{
    const std::size_t bitsPerPixel = (format.pixelFormat >> 16) & 0xff; // as all codes tell
    const std::size_t lineBytes = (std::size_t(format.width) * bitsPerPixel + 7) / 8;
    const std::size_t between = std::min(padding, room + 1); // a larger one is too large as well
    return format.height > 0 ? (lineBytes + between) * std::size_t(format.height) - between : 0;
}

DeliveredFrame::DeliveredFrame(const StreamModule &stream, const StreamBuffer &buffer, const FrameFormat &fallback)
    : m_stream(stream), m_buffer(buffer)
{
    if (m_buffer.base)
        findImage(fallback);
}

FrameFate DeliveredFrame::fate() const
{
    const std::size_t needed = m_image ? m_image->neededSize() : 0;
    if (info(GenTL::BUFFER_INFO_DATA_LARGER_THAN_BUFFER).value_or(0) != 0 || (m_image && needed > m_image->room))
        return FrameFate::TooLarge;
    if (info(GenTL::BUFFER_INFO_IS_INCOMPLETE).value_or(0) != 0)
        return FrameFate::MissingPackets;
    return m_image && needed > m_image->size ? FrameFate::Unknown : FrameFate::Good;
}

QImage DeliveredFrame::image() const
{
    if (!m_image || fate() != FrameFate::Good)
        return {};
    const FrameFormat &format = m_image->format;
    return frameImage(format.pixelFormat, format.width, format.height, m_image->data, m_image->size, m_image->padding);
}

bool DeliveredFrame::mayHaveChunks() const
{
    const uint64_t payload = info(GenTL::BUFFER_INFO_PAYLOADTYPE).value_or(GenTL::PAYLOAD_TYPE_UNKNOWN);
    return payload == GenTL::PAYLOAD_TYPE_CHUNK_DATA || payload == GenTL::PAYLOAD_TYPE_CHUNK_ONLY
        || info(GenTL::BUFFER_INFO_CONTAINS_CHUNKDATA).value_or(0) != 0;
}

std::vector<FrameChunk> DeliveredFrame::chunks(GenTL::GC_ERROR *code) const
{
    constexpr std::size_t Most = 1024;
    std::size_t count = 0;
    *code = gentl()->DSGetBufferChunkData(m_stream.handle(), m_buffer.handle, nullptr, &count);
    if (*code != GenTL::GC_ERR_SUCCESS || count > Most)
        return {};
    std::vector<GenTL::SINGLE_CHUNK_DATA> places(count);
    *code = gentl()->DSGetBufferChunkData(m_stream.handle(), m_buffer.handle, places.data(), &count);
    if (*code != GenTL::GC_ERR_SUCCESS)
        return {};
    places.resize(std::min(count, places.size()));
    std::vector<FrameChunk> chunks;
    for (const GenTL::SINGLE_CHUNK_DATA &place : places) {
        const char *data = m_buffer.base + place.ChunkOffset;
        if (place.ChunkOffset >= 0 && roomAt(data) >= place.ChunkLength)
            chunks.push_back({place.ChunkID, QByteArray(data, static_cast<int>(place.ChunkLength))});
    }
    return chunks;
}

DeliveredFrame::Number DeliveredFrame::info(GenTL::BUFFER_INFO_CMD command) const
{
    return askNumber([&](GenTL::INFO_DATATYPE *type, void *data, std::size_t *size) {
        return gentl()->DSGetBufferInfo(m_stream.handle(), m_buffer.handle, command, type, data, size);
    });
}

DeliveredFrame::Number DeliveredFrame::partInfo(uint32_t part, GenTL::BUFFER_PART_INFO_CMD command) const
{
    return askNumber([&](GenTL::INFO_DATATYPE *type, void *data, std::size_t *size) {
        return gentl()->DSGetBufferPartInfo(m_stream.handle(), m_buffer.handle, part, command, type, data, size);
    });
}

void DeliveredFrame::findImage(const FrameFormat &fallback)
{
    uint32_t parts = 0;
    if (gentl()->DSGetNumBufferParts(m_stream.handle(), m_buffer.handle, &parts) != GenTL::GC_ERR_SUCCESS)
        parts = 0;
    if (findPart(std::min(parts, 64U), fallback))
        return;
    const uint64_t payload = info(GenTL::BUFFER_INFO_PAYLOADTYPE).value_or(GenTL::PAYLOAD_TYPE_UNKNOWN);
    const bool isMultiPart = payload == GenTL::PAYLOAD_TYPE_MULTI_PART && parts > 0;
    const bool isAbsent = info(GenTL::BUFFER_INFO_IMAGEPRESENT).value_or(1) == 0;
    if (!isMultiPart && !isAbsent && payload != GenTL::PAYLOAD_TYPE_CHUNK_ONLY)
        m_image = wholeImage(fallback);
}

bool DeliveredFrame::findPart(uint32_t count, const FrameFormat &fallback)
{
    for (uint32_t part = 0; part < count; ++part) {
        const uint64_t type = partInfo(part, GenTL::BUFFER_PART_INFO_DATA_TYPE).value_or(GenTL::PART_DATATYPE_UNKNOWN);
        m_has3dParts = m_has3dParts || is3dPart(type);
        if (!m_image && isShownPart(type))
            m_image = partImage(part, fallback);
    }
    return m_image.has_value();
}

DeliveredFrame::Image DeliveredFrame::partImage(uint32_t part, const FrameFormat &fallback) const
{
    const auto number = [&](GenTL::BUFFER_PART_INFO_CMD command) { return partInfo(part, command); };
    const int height = knownLength(number(GenTL::BUFFER_PART_INFO_HEIGHT), fallback.height);
    Image image;
    image.format = {knownFormat(number(GenTL::BUFFER_PART_INFO_DATA_FORMAT),
                                number(GenTL::BUFFER_PART_INFO_DATA_FORMAT_NAMESPACE), fallback.pixelFormat),
                    knownLength(number(GenTL::BUFFER_PART_INFO_WIDTH), fallback.width),
                    knownLength(number(GenTL::BUFFER_PART_INFO_DELIVERED_IMAGEHEIGHT), height)};
    image.padding = number(GenTL::BUFFER_PART_INFO_XPADDING).value_or(0);
    image.data = reinterpret_cast<const char *>(number(GenTL::BUFFER_PART_INFO_BASE).value_or(0));
    image.room = roomAt(image.data);
    image.size = std::min<std::size_t>(number(GenTL::BUFFER_PART_INFO_DATA_SIZE).value_or(image.room), image.room);
    return image;
}

DeliveredFrame::Image DeliveredFrame::wholeImage(const FrameFormat &fallback) const
{
    const int height = knownLength(info(GenTL::BUFFER_INFO_HEIGHT), fallback.height);
    const std::size_t offset = info(GenTL::BUFFER_INFO_IMAGEOFFSET).value_or(0);
    const std::size_t filled =
        std::min<std::size_t>(info(GenTL::BUFFER_INFO_SIZE_FILLED).value_or(m_buffer.size), m_buffer.size);
    Image image;
    image.format = {knownFormat(info(GenTL::BUFFER_INFO_PIXELFORMAT), info(GenTL::BUFFER_INFO_PIXELFORMAT_NAMESPACE),
                                fallback.pixelFormat),
                    knownLength(info(GenTL::BUFFER_INFO_WIDTH), fallback.width),
                    knownLength(info(GenTL::BUFFER_INFO_DELIVERED_IMAGEHEIGHT), height)};
    image.padding = info(GenTL::BUFFER_INFO_XPADDING).value_or(0);
    image.data = m_buffer.base + std::min(offset, m_buffer.size);
    image.room = roomAt(image.data);
    image.size = filled > offset ? filled - offset : 0;
    return image;
}

std::size_t DeliveredFrame::roomAt(const char *data) const
{
    const bool isInside = data >= m_buffer.base && data <= m_buffer.base + m_buffer.size;
    return isInside ? static_cast<std::size_t>(m_buffer.base + m_buffer.size - data) : 0;
}
