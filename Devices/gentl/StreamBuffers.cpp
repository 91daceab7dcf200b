// SPDX-License-Identifier: MIT
#include "Devices/gentl/StreamBuffers.h"

#include <algorithm>
#include <utility>

namespace {

constexpr std::size_t UsualCount = 8; // frames that may be filled while one is looked at
constexpr std::size_t SmallestCount = 3;
constexpr std::size_t MostCount = 256; // whatever the producer wants
constexpr std::size_t MuchMemory = 1024 * 1024 * 1024; // bytes; beyond it there are fewer buffers
constexpr std::size_t PageSize = 4096; // bytes
constexpr std::size_t LargestAlignment = 1024 * 1024; // bytes

bool isPowerOfTwo(std::size_t number)
{
    return number > 0 && (number & (number - 1)) == 0;
}

} // namespace

void StreamBuffers::announce(std::size_t frameSize)
{
    const std::size_t count = wantedCount(frameSize);
    while (m_buffers.size() < count && announceOwn(frameSize)) { }
    while (m_buffers.size() < count && announceProducers(frameSize)) { }
}

StreamBuffers::~StreamBuffers()
{
    if (m_buffers.empty())
        return;
    takeBack();
    bool isRevoked = true;
    for (const StreamBuffer &buffer : m_buffers) {
        void *memory = nullptr;
        void *user = nullptr;
        const GenTL::GC_ERROR code = gentl()->DSRevokeBuffer(m_stream->handle(), buffer.handle, &memory, &user);
        gentl().note("DSRevokeBuffer", code);
        isRevoked = isRevoked && code == GenTL::GC_ERR_SUCCESS;
    }
    if (isRevoked)
        return;
    for (Memory &memory : m_memory) // the producer may write into it at any time
        static_cast<void>(memory.release());
}

void StreamBuffers::takeBack() const
{
    const GenTL::DS_HANDLE stream = m_stream->handle();
    if (gentl()->DSFlushQueue(stream, GenTL::ACQ_QUEUE_ALL_DISCARD) == GenTL::GC_ERR_SUCCESS)
        return;
    gentl().note("DSFlushQueue", gentl()->DSFlushQueue(stream, GenTL::ACQ_QUEUE_INPUT_TO_OUTPUT));
    gentl().note("DSFlushQueue", gentl()->DSFlushQueue(stream, GenTL::ACQ_QUEUE_OUTPUT_DISCARD));
}

std::size_t StreamBuffers::wantedCount(std::size_t frameSize) const
{
    const std::size_t affordable = std::max(SmallestCount, MuchMemory / std::max<std::size_t>(frameSize, 1));
    const std::size_t needed = m_stream->number(GenTL::STREAM_INFO_BUF_ANNOUNCE_MIN).value_or(0);
    return std::min(std::max(std::min(UsualCount, affordable), needed + 1), MostCount);
}

std::size_t StreamBuffers::alignment() const
{
    const std::size_t told = m_stream->number(GenTL::STREAM_INFO_BUF_ALIGNMENT).value_or(1);
    return isPowerOfTwo(told) && told <= LargestAlignment ? std::max(told, PageSize) : PageSize;
}

bool StreamBuffers::announceOwn(std::size_t frameSize)
{
    if (m_buffers.size() > m_memory.size()) // the producer's are in use
        return false;
    const std::size_t unit = alignment();
    Memory memory(std::aligned_alloc(unit, (frameSize + unit - 1) / unit * unit));
    if (!memory)
        throw std::bad_alloc();
    GenTL::BUFFER_HANDLE handle = nullptr;
    if (gentl()->DSAnnounceBuffer(m_stream->handle(), memory.get(), frameSize, nullptr, &handle)
        != GenTL::GC_ERR_SUCCESS)
        return false;
    m_buffers.push_back({handle, static_cast<const char *>(memory.get()), frameSize});
    m_memory.push_back(std::move(memory));
    return true;
}

bool StreamBuffers::announceProducers(std::size_t frameSize)
{
    StreamBuffer buffer;
    const GenTL::GC_ERROR code =
        gentl()->DSAllocAndAnnounceBuffer(m_stream->handle(), frameSize, nullptr, &buffer.handle);
    if (code != GenTL::GC_ERR_SUCCESS && m_buffers.size() >= SmallestCount)
        return false;
    gentl().check("DSAllocAndAnnounceBuffer", code);
    m_buffers.push_back(buffer);
    const auto number = [&](GenTL::BUFFER_INFO_CMD command) {
        return askNumber([&](GenTL::INFO_DATATYPE *type, void *data, std::size_t *size) {
            return gentl()->DSGetBufferInfo(m_stream->handle(), buffer.handle, command, type, data, size);
        });
    };
    const auto base = number(GenTL::BUFFER_INFO_BASE);
    m_buffers.back().base = reinterpret_cast<const char *>(base.value_or(0));
    m_buffers.back().size = base ? number(GenTL::BUFFER_INFO_SIZE).value_or(frameSize) : 0;
    return true;
}

void StreamBuffers::queueAll() const
{
    for (const StreamBuffer &buffer : m_buffers)
        gentl().check("DSQueueBuffer", gentl()->DSQueueBuffer(m_stream->handle(), buffer.handle));
}

bool StreamBuffers::queue(const StreamBuffer &buffer) const
{
    return gentl()->DSQueueBuffer(m_stream->handle(), buffer.handle) == GenTL::GC_ERR_SUCCESS;
}

const StreamBuffer *StreamBuffers::find(GenTL::BUFFER_HANDLE handle) const
{
    const auto buffer = std::find_if(m_buffers.begin(), m_buffers.end(),
                                     [handle](const StreamBuffer &one) { return one.handle == handle; });
    return buffer == m_buffers.end() ? nullptr : &*buffer;
}
