// SPDX-License-Identifier: MIT
#include "Devices/AravisStream.h"

#include <atomic>
#include <chrono>
#include <condition_variable>
#include <mutex>
#include <thread>
#include <utility>

#include <QByteArray>

#include "Devices/AravisHandle.h"
#include "Devices/FrameImage.h"

namespace {

constexpr int BufferCount = 8; // frames that Aravis may fill
constexpr guint64 PopTimeout = 50'000; // us
constexpr std::chrono::milliseconds StreamEndTimeout(500);
constexpr guint64 LargestGap = 10'000; // beyond it the camera has begun to count anew

/// Aravis takes a frame for good that has filled the whole buffer, however large it is.
bool isCutOff(ArvBuffer *buffer)
{
    if (arv_buffer_get_n_parts(buffer) == 0)
        return false;
    std::size_t size = 0;
    arv_buffer_get_part_data(buffer, 0, &size);
    const auto bitsPerPixel = (arv_buffer_get_part_pixel_format(buffer, 0) >> 16) & 0xff; // as all formats tell
    const qint64 pixels = qint64(arv_buffer_get_part_width(buffer, 0)) * qint64(arv_buffer_get_part_height(buffer, 0));
    return pixels * bitsPerPixel > qint64(size) * 8;
}

FrameFate fateOf(ArvBuffer *buffer)
{
    switch (arv_buffer_get_status(buffer)) {
    case ARV_BUFFER_STATUS_SUCCESS:
        return isCutOff(buffer) ? FrameFate::TooLarge : FrameFate::Good;
    case ARV_BUFFER_STATUS_TIMEOUT:
        return FrameFate::LatePackets;
    case ARV_BUFFER_STATUS_MISSING_PACKETS:
        return FrameFate::MissingPackets;
    case ARV_BUFFER_STATUS_WRONG_PACKET_ID:
        return FrameFate::WrongPackets;
    case ARV_BUFFER_STATUS_SIZE_MISMATCH:
        return FrameFate::TooLarge;
    case ARV_BUFFER_STATUS_FILLING:
    case ARV_BUFFER_STATUS_ABORTED:
        return FrameFate::Aborted;
    default:
        return FrameFate::Unknown;
    }
}

QImage toImage(ArvBuffer *buffer)
{
    if (arv_buffer_get_status(buffer) != ARV_BUFFER_STATUS_SUCCESS || arv_buffer_get_n_parts(buffer) == 0)
        return {};
    std::size_t size = 0;
    const void *data = arv_buffer_get_part_data(buffer, 0, &size);
    return frameImage(arv_buffer_get_part_pixel_format(buffer, 0), arv_buffer_get_part_width(buffer, 0),
                      arv_buffer_get_part_height(buffer, 0), data, size);
}

} // namespace

/// Lives until both the stream object and its thread have let go of it.
class AravisStream::Feed
{
public:
    Feed(ArvDevice *device, std::size_t frameSize, Receiver receiver) : m_receiver(std::move(receiver))
    {
        AravisError error;
        m_source.reset(arv_device_create_stream(device, nullptr, nullptr, error.out()));
        if (!m_source)
            throw RUNTIME_EXCEPTION("%s", error.text());
        for (int i = 0; i < BufferCount; ++i)
            arv_stream_push_buffer(m_source.get(), arv_buffer_new_allocate(frameSize));
    }

    void run()
    {
        while (ArvBuffer *buffer = nextBuffer()) {
            const Arrival arrival{toImage(buffer), fateOf(buffer), gapBefore(arv_buffer_get_frame_id(buffer))};
            arv_stream_push_buffer(m_source.get(), buffer);
            tell(arrival);
        }
        m_source.reset();
        const std::lock_guard<std::mutex> lock(m_mutex);
        m_finished = true;
        m_ended.notify_all();
    }

    void stop()
    {
        std::unique_lock<std::mutex> lock(m_mutex);
        m_receiver = nullptr;
        m_stopping = true;
        m_ended.wait_for(lock, StreamEndTimeout, [this] { return m_finished; });
    }

private:
    /// Null when the stream is over.
    ArvBuffer *nextBuffer()
    {
        ArvBuffer *buffer = nullptr;
        while (!m_stopping && !buffer) {
            buffer = arv_stream_timeout_pop_buffer(m_source.get(), PopTimeout);
            if (!buffer && hasIgnoredMore())
                tell({});
        }
        if (buffer && m_stopping)
            g_object_unref(std::exchange(buffer, nullptr));
        return buffer;
    }

    void tell(const Arrival &arrival)
    {
        const std::lock_guard<std::mutex> lock(m_mutex);
        if (m_receiver)
            m_receiver(arrival);
    }

    /// Aravis drops what fits no buffer without a word, but counts it.
    bool hasIgnoredMore()
    {
        guint64 ignored = 0;
        for (guint info = 0; info < arv_stream_get_n_infos(m_source.get()); ++info) {
            const QByteArray name = arv_stream_get_info_name(m_source.get(), info);
            if (name == "n_ignored_packets" || name == "n_ignored_bytes")
                ignored += arv_stream_get_info_uint64(m_source.get(), info);
        }
        return ignored > std::exchange(m_ignored, ignored);
    }

    /// How many numbers were left out; none where they go back, which they do at their end.
    qint64 gapBefore(guint64 number)
    {
        const bool isFirst = !std::exchange(m_hasNumber, true);
        const guint64 last = std::exchange(m_lastNumber, number);
        const bool isGap = !isFirst && number > last + 1 && number - last <= LargestGap;
        return isGap ? qint64(number - last - 1) : 0;
    }

    AravisHandle<ArvStream> m_source;
    guint64 m_ignored = 0; ///< packets and bytes that Aravis has dropped
    guint64 m_lastNumber = 0; ///< of the last frame that came
    bool m_hasNumber = false;
    std::atomic_bool m_stopping{false};
    std::mutex m_mutex; ///< guards what follows
    std::condition_variable m_ended;
    Receiver m_receiver;
    bool m_finished = false;
};

AravisStream::AravisStream(ArvDevice *device, std::size_t frameSize, Receiver receiver)
    : m_frameSize(frameSize), m_feed(std::make_shared<Feed>(device, frameSize, std::move(receiver)))
{
    std::thread([shared = m_feed] { shared->run(); }).detach();
}

AravisStream::~AravisStream()
{
    m_feed->stop();
}
