// SPDX-License-Identifier: MIT
#include "Devices/gentl/GentlStream.h"

#include <atomic>
#include <cstring>
#include <mutex>
#include <set>
#include <utility>

namespace {

constexpr uint64_t LargestGap = 10'000; // beyond it the camera has begun to count anew
constexpr std::size_t LargestFrame = std::size_t(4) * 1024 * 1024 * 1024; // bytes

/// How many frames are missing, from their numbers or, where there are none, from what the stream says it had no memory
/// for.
class GapCount
{
public:
    qint64 before(std::optional<uint64_t> number, std::optional<uint64_t> dropped)
    {
        const std::optional<uint64_t> last = std::exchange(m_number, number);
        const uint64_t droppedBefore = std::exchange(m_dropped, dropped.value_or(m_dropped));
        if (!number)
            return static_cast<qint64>(m_dropped > droppedBefore ? m_dropped - droppedBefore : 0);
        const bool isGap = last && *number > *last + 1 && *number - *last <= LargestGap;
        return isGap ? static_cast<qint64>(*number - *last - 1) : 0;
    }

private:
    std::optional<uint64_t> m_number; ///< of the last frame
    uint64_t m_dropped = 0;
};

} // namespace

class GentlStream::Feed : public EventPump::Work
{
public:
    Feed(Plan plan, Receiver receiver) : m_plan(std::move(plan)), m_receiver(std::move(receiver)) { }

    std::size_t frameSize() const { return m_plan.frameSize; }
    /// Where the stream knows, it told with the last faulty frame: nobody but its thread asks it anything.
    std::size_t currentFrameSize(std::size_t told) const
    {
        const std::size_t ofStream = m_streamFrameSize;
        return ofStream > 0 ? ofStream : told;
    }

    ProducerEvent &begin() override
    {
        const std::shared_ptr<DeviceModule> device = m_plan.device.lock();
        if (!device)
            throw std::runtime_error("the camera is closed");
        if (m_plan.id.isEmpty())
            throw std::runtime_error("the producer has no stream of the camera");
        m_stream = device->openStream(m_plan.id);
        decideFrameSize();
        m_event = std::make_unique<ProducerEvent>(m_stream, m_stream->handle(), GenTL::EVENT_NEW_BUFFER);
        m_buffers = std::make_unique<StreamBuffers>(m_stream);
        m_buffers->announce(m_plan.frameSize);
        m_buffers->queueAll();
        gentl().check(
            "DSStartAcquisition",
            gentl()->DSStartAcquisition(m_stream->handle(), GenTL::ACQ_START_FLAGS_DEFAULT, GenTL::GENTL_INFINITE));
        m_isStarted = true;
        return *m_event;
    }

    void take(const QByteArray &data) override
    {
        const StreamBuffer *buffer = bufferOf(data);
        if (!buffer) {
            reportOnce(QStringLiteral("the producer delivers buffers that it was not given"));
            return;
        }
        Arrival arrival = arrivalOf(*buffer);
        if (!m_buffers->queue(*buffer))
            reportOnce(QStringLiteral("the producer does not take a buffer back"));
        const std::lock_guard<std::mutex> lock(m_mutex);
        if (m_receiver.take)
            m_receiver.take(std::move(arrival));
    }

    void fail(GenTL::GC_ERROR code) override
    {
        reportOnce(QStringLiteral("waiting for frames fails with ") + QString::fromStdString(gentlCodeName(code)));
    }

    void end() override
    {
        if (std::exchange(m_isStarted, false))
            stopAcquisition();
        m_event.reset();
        m_buffers.reset();
        m_stream.reset();
    }

    /// The receiver is told nothing from now on.
    void silence()
    {
        const std::lock_guard<std::mutex> lock(m_mutex);
        m_receiver = {};
    }

private:
    const Producer &gentl() const { return *m_stream->producer(); }

    void decideFrameSize()
    {
        const bool isOfStream = m_stream->number(GenTL::STREAM_INFO_DEFINES_PAYLOADSIZE).value_or(0) != 0;
        m_definesFrameSize = isOfStream || m_plan.frameSize == 0;
        askFrameSize();
        if (m_definesFrameSize)
            m_plan.frameSize = m_streamFrameSize;
        if (m_plan.frameSize == 0 || m_plan.frameSize > LargestFrame)
            throw std::runtime_error("frames of " + std::to_string(m_plan.frameSize) + " bytes are announced");
    }

    void askFrameSize()
    {
        if (m_definesFrameSize)
            m_streamFrameSize = m_stream->number(GenTL::STREAM_INFO_PAYLOAD_SIZE).value_or(0);
    }

    void stopAcquisition()
    {
        if (gentl()->DSStopAcquisition(m_stream->handle(), GenTL::ACQ_STOP_FLAGS_DEFAULT) != GenTL::GC_ERR_SUCCESS)
            gentl().note("DSStopAcquisition",
                         gentl()->DSStopAcquisition(m_stream->handle(), GenTL::ACQ_STOP_FLAGS_KILL));
    }

    const StreamBuffer *bufferOf(const QByteArray &data) const
    {
        GenTL::BUFFER_HANDLE handle = nullptr; // the first member of EVENT_NEW_BUFFER_DATA
        if (data.size() < static_cast<int>(sizeof handle))
            return nullptr;
        std::memcpy(&handle, data.constData(), sizeof handle);
        return m_buffers->find(handle);
    }

    Arrival arrivalOf(const StreamBuffer &buffer)
    {
        const DeliveredFrame frame(*m_stream, buffer, m_plan.format);
        Arrival arrival;
        arrival.fate = frame.fate();
        arrival.image = frame.image();
        if (arrival.fate != FrameFate::Good)
            askFrameSize();
        arrival.lostBefore = m_gaps.before(frame.number(), m_stream->number(GenTL::STREAM_INFO_NUM_UNDERRUN));
        if (frame.has3dParts())
            reportOnce(QStringLiteral("frames have 3D parts, which are not shown"));
        if (m_plan.wantsChunks && arrival.fate == FrameFate::Good && frame.mayHaveChunks()) {
            GenTL::GC_ERROR code = GenTL::GC_ERR_SUCCESS;
            arrival.chunks = frame.chunks(&code);
            if (code == GenTL::GC_ERR_NOT_IMPLEMENTED)
                reportOnce(QStringLiteral("frames have chunk data, but the producer does not take them apart"));
        }
        return arrival;
    }

    void reportOnce(const QString &line)
    {
        const std::lock_guard<std::mutex> lock(m_mutex);
        if (m_reported.insert(line).second && m_receiver.report)
            m_receiver.report(line);
    }

    Plan m_plan;
    bool m_definesFrameSize = false; ///< the stream knows, or nobody else does
    std::atomic<std::size_t> m_streamFrameSize{0}; ///< as the stream told last; 0 when that is not asked
    std::shared_ptr<StreamModule> m_stream;
    std::unique_ptr<ProducerEvent> m_event;
    std::unique_ptr<StreamBuffers> m_buffers;
    bool m_isStarted = false;
    GapCount m_gaps;
    std::mutex m_mutex; ///< guards what follows
    Receiver m_receiver;
    std::set<QString> m_reported;
};

GentlStream::GentlStream(const Plan &plan, Receiver receiver)
    : m_feed(std::make_shared<Feed>(plan, std::move(receiver))), m_pump(std::make_unique<EventPump>(m_feed))
{ }

GentlStream::~GentlStream()
{
    m_feed->silence();
}

std::size_t GentlStream::frameSize() const
{
    return m_feed->frameSize();
}

std::size_t GentlStream::currentFrameSize(std::size_t told) const
{
    return m_feed->currentFrameSize(told);
}
