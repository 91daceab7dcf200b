// SPDX-License-Identifier: MIT
#include "tests/gentl/Buffer.h"

#include <algorithm>
#include <cstring>
#include <utility>

#include "tests/gentl/Chunks.h"

using namespace GenTL;

namespace TestProducer {

namespace {

constexpr int HugeSide = 1 << 30;
constexpr std::uint64_t AlienFormat = 0x81230042;

} // namespace

Buffer::Buffer(std::shared_ptr<Module> stream, void *memory, std::size_t size, void *user)
    : Module(std::move(stream), "a buffer"), m_own(memory ? 0 : size),
      m_base(memory ? static_cast<unsigned char *>(memory) : m_own.data()), m_size(size), m_user(user)
{ }

bool Buffer::isMultiPart() const
{
    return m_parts.size() > 1 || (!m_parts.empty() && m_parts[0].type != PART_DATATYPE_2D_IMAGE);
}

void Buffer::begin(const Frame &frame, FrameFault fault)
{
    state = State::Filling;
    m_hasData = true;
    m_timestamp = frame.timestamp;
    m_chunkSize = std::size_t(frame.chunks.size());
    m_frameSize = std::size_t(frame.size()) * (fault == FrameFault::Grown ? 2 : 1);
    m_filled = std::min(m_frameSize, m_size);
    if (fault == FrameFault::Incomplete || fault == FrameFault::Empty)
        m_filled = fault == FrameFault::Empty ? 0 : m_filled / 2;
    m_parts = frame.parts;
    for (FramePart &part : m_parts) {
        part.data.clear();
        if (fault == FrameFault::Huge)
            part.width = part.height = HugeSide;
        if (fault == FrameFault::Alien)
            part.format = AlienFormat;
    }
}

void Buffer::copy(const Frame &frame)
{
    std::size_t at = 0;
    for (const FramePart &part : frame.parts)
        at = copy(part.data, part.first, part.size, at);
    copy(frame.chunks, 0, frame.chunks.size(), at);
}

std::size_t Buffer::copy(const QByteArray &data, qint64 first, qint64 length, std::size_t to)
{
    const std::size_t start = std::min(to, m_filled);
    const std::size_t fitting = std::min(std::size_t(length), m_filled - start);
    if (fitting > 0)
        std::memcpy(m_base + start, data.constData() + first, fitting);
    return to + std::size_t(length);
}

std::optional<Fact> Buffer::info(BUFFER_INFO_CMD command, const std::string &transport) const
{
    if (command == BUFFER_INFO_TLTYPE)
        return text(transport);
    if (auto fact = stateInfo(command))
        return fact;
    require(m_hasData && state != State::Filling, GC_ERR_NO_DATA, "there is no frame in the buffer");
    if (auto fact = frameInfo(command))
        return fact;
    return imageInfo(command);
}

std::optional<Fact> Buffer::stateInfo(BUFFER_INFO_CMD command) const
{
    switch (command) {
    case BUFFER_INFO_BASE:
        return address(m_base);
    case BUFFER_INFO_SIZE:
        return size(m_size);
    case BUFFER_INFO_USER_PTR:
        return address(m_user);
    case BUFFER_INFO_NEW_DATA:
        return flag(m_hasData);
    case BUFFER_INFO_IS_QUEUED:
        return flag(state == State::Input || state == State::Output);
    case BUFFER_INFO_IS_ACQUIRING:
        return flag(state == State::Filling);
    case BUFFER_INFO_IS_COMPOSITE:
        return flag(false);
    default:
        return {};
    }
}

PAYLOADTYPE_INFO_IDS Buffer::payloadType() const
{
    if (isMultiPart())
        return PAYLOAD_TYPE_MULTI_PART;
    return m_chunkSize > 0 ? PAYLOAD_TYPE_CHUNK_DATA : PAYLOAD_TYPE_IMAGE;
}

std::optional<Fact> Buffer::frameInfo(BUFFER_INFO_CMD command) const
{
    switch (command) {
    case BUFFER_INFO_TIMESTAMP:
    case BUFFER_INFO_TIMESTAMP_NS:
        return longWord(std::uint64_t(m_timestamp));
    case BUFFER_INFO_IS_INCOMPLETE:
        return flag(m_filled < m_frameSize);
    case BUFFER_INFO_DATA_LARGER_THAN_BUFFER:
        return flag(m_frameSize > m_size);
    case BUFFER_INFO_SIZE_FILLED:
        return size(m_filled);
    case BUFFER_INFO_DATA_SIZE:
        return size(m_frameSize);
    case BUFFER_INFO_FRAMEID:
        return longWord(frameId);
    case BUFFER_INFO_PAYLOADTYPE:
        return size(payloadType());
    case BUFFER_INFO_DELIVERED_CHUNKPAYLOADSIZE:
        return size(m_chunkSize);
    case BUFFER_INFO_CONTAINS_CHUNKDATA:
        return flag(m_chunkSize > 0);
    case BUFFER_INFO_PIXEL_ENDIANNESS:
        return word(PIXELENDIANNESS_LITTLE);
    default:
        return {};
    }
}

std::optional<Fact> Buffer::imageInfo(BUFFER_INFO_CMD command) const
{
    const bool knows = command >= BUFFER_INFO_WIDTH && command <= BUFFER_INFO_DELIVERED_IMAGEHEIGHT;
    require(!knows || !isMultiPart(), GC_ERR_NOT_AVAILABLE, "the buffer has several parts");
    const FramePart &image = m_parts[0];
    switch (command) {
    case BUFFER_INFO_WIDTH:
        return size(std::uint64_t(image.width));
    case BUFFER_INFO_HEIGHT:
    case BUFFER_INFO_DELIVERED_IMAGEHEIGHT:
        return size(std::uint64_t(image.height));
    case BUFFER_INFO_XOFFSET:
        return size(std::uint64_t(image.x));
    case BUFFER_INFO_YOFFSET:
        return size(std::uint64_t(image.y));
    case BUFFER_INFO_XPADDING:
    case BUFFER_INFO_YPADDING:
    case BUFFER_INFO_IMAGEOFFSET:
        return size(0);
    case BUFFER_INFO_IMAGEPRESENT:
        return flag(m_filled > 0);
    case BUFFER_INFO_PIXELFORMAT:
        return longWord(image.format);
    case BUFFER_INFO_PIXELFORMAT_NAMESPACE:
        return longWord(PIXELFORMAT_NAMESPACE_PFNC_32BIT);
    default:
        return {};
    }
}

std::optional<Fact> Buffer::partInfo(std::uint32_t index, BUFFER_PART_INFO_CMD command) const
{
    require(index < partCount(), GC_ERR_INVALID_INDEX, "there is no such part");
    const FramePart &part = m_parts[index];
    qint64 offset = 0;
    for (std::uint32_t i = 0; i < index; ++i)
        offset += m_parts[i].size;
    switch (command) {
    case BUFFER_PART_INFO_BASE:
        return address(m_base + offset);
    case BUFFER_PART_INFO_DATA_SIZE:
        return size(std::uint64_t(part.size));
    case BUFFER_PART_INFO_DATA_TYPE:
        return size(part.type);
    case BUFFER_PART_INFO_DATA_FORMAT:
        return longWord(part.format);
    case BUFFER_PART_INFO_DATA_FORMAT_NAMESPACE:
        return longWord(PIXELFORMAT_NAMESPACE_PFNC_32BIT);
    case BUFFER_PART_INFO_WIDTH:
        return size(std::uint64_t(part.width));
    case BUFFER_PART_INFO_HEIGHT:
    case BUFFER_PART_INFO_DELIVERED_IMAGEHEIGHT:
        return size(std::uint64_t(part.height));
    case BUFFER_PART_INFO_XOFFSET:
    case BUFFER_PART_INFO_YOFFSET:
    case BUFFER_PART_INFO_XPADDING:
        return size(0);
    case BUFFER_PART_INFO_SOURCE_ID:
    case BUFFER_PART_INFO_REGION_ID:
        return longWord(0);
    case BUFFER_PART_INFO_DATA_PURPOSE_ID:
        return longWord(part.type == PART_DATATYPE_3D_IMAGE ? 4 : 1); // Range, Intensity
    default:
        return {};
    }
}

std::vector<SINGLE_CHUNK_DATA> Buffer::chunkList() const
{
    require(m_hasData, GC_ERR_NO_DATA, "there is no frame in the buffer");
    require(m_chunkSize > 0, GC_ERR_NO_DATA, "the frame has no chunks");
    require(m_filled == m_frameSize, GC_ERR_PARSING_CHUNK_DATA, "the frame is incomplete");
    return {{ChunkId, std::ptrdiff_t(m_frameSize - m_chunkSize), m_chunkSize}};
}

} // namespace TestProducer
