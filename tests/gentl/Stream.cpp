// SPDX-License-Identifier: MIT
#include "tests/gentl/Stream.h"

#include <algorithm>

#include "Simulation/StructuredLightSettings.h"
#include "tests/gentl/World.h"

using namespace GenTL;

namespace TestProducer {

using State = Buffer::State;

Stream::Stream(World &theWorld, std::shared_ptr<LocalDevice> theDevice)
    : OwnPort(theDevice, "stream of " + theDevice->name(), "stream"), m_world(theWorld), m_device(std::move(theDevice))
{ }

Port::Identity Stream::identity() const
{
    Identity identity = m_device->identity();
    identity.id = Id;
    identity.module = "TLDataStream";
    identity.portName = "StreamPort";
    return identity;
}

std::vector<std::shared_ptr<Buffer>> Stream::announced() const
{
    return m_world.handles.children<Buffer>(this);
}

std::size_t Stream::count(State state) const
{
    const auto all = announced();
    return size_t(
        std::count_if(all.begin(), all.end(), [state](const auto &buffer) { return buffer->state == state; }));
}

/// Structured-light cameras leave it to the stream how large a frame is.
std::uint64_t Stream::payload() const
{
    if (m_device->camera().model().frames != structuredLightFrames)
        return 0;
    const int binning = m_device->camera().inside().inspect(
        [](const RegisterMemory &memory) { return StructuredLightSettings::fromRegisters(memory).binning; });
    const auto columns = std::uint64_t(StructuredLightSettings::Columns / binning);
    const auto rows = std::uint64_t(StructuredLightSettings::Rows / binning);
    return columns * rows * (sizeof(float) + StructuredLightSettings::outputCount);
}

std::optional<Fact> Stream::info(STREAM_INFO_CMD command) const
{
    switch (command) {
    case STREAM_INFO_ID:
        return text(Id);
    case STREAM_INFO_NUM_DELIVERED:
        return longWord(m_delivered);
    case STREAM_INFO_NUM_UNDERRUN:
        return longWord(m_underruns);
    case STREAM_INFO_NUM_ANNOUNCED:
        return size(announced().size());
    case STREAM_INFO_NUM_QUEUED:
        return size(m_input.size());
    case STREAM_INFO_NUM_AWAIT_DELIVERY:
        return size(m_output.size());
    case STREAM_INFO_NUM_STARTED:
        return longWord(m_started);
    case STREAM_INFO_PAYLOAD_SIZE:
        require(payload() > 0, GC_ERR_NOT_AVAILABLE, "the camera tells the size of its frames");
        return size(payload());
    case STREAM_INFO_IS_GRABBING:
        return flag(m_isGrabbing);
    case STREAM_INFO_DEFINES_PAYLOADSIZE:
        return flag(payload() > 0);
    case STREAM_INFO_TLTYPE:
        return text(m_device->camera().model().transport);
    case STREAM_INFO_NUM_CHUNKS_MAX:
        return size(1);
    case STREAM_INFO_BUF_ANNOUNCE_MIN:
        return size(FewestBuffers);
    case STREAM_INFO_BUF_ALIGNMENT:
        return size(Alignment);
    default:
        return {};
    }
}

std::shared_ptr<Buffer> Stream::announce(void *memory, std::size_t size, void *user)
{
    require(size > 0, GC_ERR_INVALID_PARAMETER, "a buffer has a size");
    require(reinterpret_cast<std::uintptr_t>(memory) % Alignment == 0, GC_ERR_INVALID_BUFFER,
            "the buffer is not aligned");
    for (const auto &other : announced())
        require(!memory || other->base() != memory, GC_ERR_RESOURCE_IN_USE, "the buffer is announced already");
    return std::make_shared<Buffer>(shared_from_this(), memory, size, user);
}

void Stream::revoke(Buffer &buffer)
{
    require(buffer.state == State::Unqueued, GC_ERR_BUSY, "the buffer is in a queue");
    m_world.handles.remove(&buffer);
}

void Stream::put(const std::shared_ptr<Buffer> &buffer, State state)
{
    buffer->state = state;
    if (state == State::Input)
        m_input.push_back(buffer);
    else if (state == State::Output)
        m_output.push_back(buffer);
    m_world.changed.notify_all();
}

void Stream::queue(const std::shared_ptr<Buffer> &buffer)
{
    require(buffer->state == State::Unqueued, GC_ERR_BUSY, "the buffer is in a queue already");
    buffer->forget();
    put(buffer, State::Input);
}

void Stream::moveAll(State from, State to)
{
    if (from == State::Input)
        m_input.clear();
    if (from == State::Output)
        m_output.clear();
    for (const auto &buffer : announced()) {
        if (buffer->state == from)
            put(buffer, to);
    }
}

void Stream::flush(ACQ_QUEUE_TYPE operation, Lock &lock)
{
    m_world.changed.wait(lock, [this] { return count(State::Filling) == 0; });
    switch (operation) {
    case ACQ_QUEUE_INPUT_TO_OUTPUT:
        return moveAll(State::Input, State::Output);
    case ACQ_QUEUE_OUTPUT_DISCARD:
        return moveAll(State::Output, State::Unqueued);
    case ACQ_QUEUE_ALL_TO_INPUT:
        moveAll(State::Output, State::Input);
        return moveAll(State::Unqueued, State::Input);
    case ACQ_QUEUE_UNQUEUED_TO_INPUT:
        return moveAll(State::Unqueued, State::Input);
    case ACQ_QUEUE_ALL_DISCARD:
        moveAll(State::Input, State::Unqueued);
        return moveAll(State::Output, State::Unqueued);
    default:
        require(false, GC_ERR_INVALID_PARAMETER, "there is no such operation");
    }
}

void Stream::start(std::uint64_t frames)
{
    require(!m_isGrabbing, GC_ERR_RESOURCE_IN_USE, "the stream is started already");
    require(frames > 0, GC_ERR_INVALID_PARAMETER, "no frame is to be taken");
    require(announced().size() >= FewestBuffers, GC_ERR_INVALID_BUFFER, "there are too few buffers");
    m_isGrabbing = true;
    m_wanted = frames;
    m_frameId = m_started = m_delivered = m_underruns = 0;
}

void Stream::stop()
{
    require(m_isGrabbing, GC_ERR_NOT_AVAILABLE, "the stream is not started");
    m_isGrabbing = false;
    m_world.changed.notify_all();
}

void Stream::finish(Lock &lock)
{
    if (m_isGrabbing)
        m_world.complain(name() + " is closed while it runs");
    m_isGrabbing = false;
    m_world.changed.wait(lock, [this] { return count(State::Filling) == 0; });
}

void Stream::closed()
{
    m_isGrabbing = false;
    m_input.clear();
    m_output.clear();
}

Event::Queue Stream::newBuffers()
{
    const auto take = [this] {
        const std::shared_ptr<Buffer> first = m_output.front();
        m_output.pop_front();
        first->state = State::Unqueued;
        const EVENT_NEW_BUFFER_DATA data{m_world.handles.of(first.get()), first->user()};
        return std::string(reinterpret_cast<const char *>(&data), sizeof data);
    };
    return {[this] { return m_output.size(); }, take, [this] { moveAll(State::Output, State::Unqueued); }};
}

std::shared_ptr<Buffer> Stream::nextBuffer(const Frame &frame)
{
    if (!m_isGrabbing || !m_device->isLinked())
        return nullptr;
    ++m_started;
    ++m_frameId;
    const FrameSpoiling &spoiling = m_world.spoiling[m_device->camera().model().id];
    const FrameFault fault = m_frameId % spoiling.every == 0 ? spoiling.fault : FrameFault::Good;
    if (fault == FrameFault::Lost)
        return nullptr;
    if (m_input.empty()) {
        ++m_underruns;
        return nullptr;
    }
    std::shared_ptr<Buffer> buffer = m_input.front();
    m_input.pop_front();
    buffer->frameId = m_frameId;
    buffer->begin(frame, fault);
    return buffer;
}

void Stream::deliver(const Frame &frame)
{
    Lock lock(m_world.mutex);
    const std::shared_ptr<Buffer> buffer = nextBuffer(frame);
    if (!buffer)
        return;
    lock.unlock();
    buffer->copy(frame);
    lock.lock();
    put(buffer, State::Output);
    ++m_delivered;
    if (m_delivered >= m_wanted)
        m_isGrabbing = false;
}

void Stream::refresh(ModuleRegisters &registers)
{
    RegisterMemory &memory = registers.memory();
    registers.setText("StreamID", Id);
    registers.setText("StreamType", m_device->camera().model().transport);
    memory.setInteger("StreamAnnouncedBufferCount", qint64(announced().size()));
    memory.setInteger("StreamAnnounceBufferMinimum", qint64(FewestBuffers));
    memory.setInteger("StreamDeliveredFrameCount", qint64(m_delivered));
    memory.setInteger("StreamLostFrameCount", qint64(m_underruns));
    memory.setInteger("StreamInputBufferCount", qint64(m_input.size()));
    memory.setInteger("StreamOutputBufferCount", qint64(m_output.size()));
    memory.setInteger("StreamIsGrabbing", m_isGrabbing);
}

} // namespace TestProducer
