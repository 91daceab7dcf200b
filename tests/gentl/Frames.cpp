// SPDX-License-Identifier: MIT
#include "tests/gentl/Frames.h"

#include <algorithm>
#include <cmath>
#include <deque>
#include <limits>
#include <numeric>
#include <utility>

#include "Simulation/Firmware.h"
#include "Simulation/ImageModel.h"
#include "Simulation/Picture.h"
#include "Simulation/ProfilerSource.h"
#include "Simulation/StructuredLightSource.h"
#include "tests/gentl/Chunks.h"
#include "tests/gentl/Pixels.h"

using std::chrono::milliseconds;
using std::chrono::nanoseconds;
using std::chrono::steady_clock;

namespace TestProducer {

namespace {

FramePart part(GenTL::PARTDATATYPE_IDS type, std::uint64_t format, int width, int height, QByteArray data)
{
    FramePart part{type, format, width, height, 0, 0, std::move(data), 0, 0};
    part.size = part.data.size();
    return part;
}

FramePart grayPart(const QImage &image)
{
    return part(GenTL::PART_DATATYPE_2D_IMAGE, Mono8, image.width(), image.height(), pixels(image, Mono8));
}

/// Takes images at the frame rate, or on triggers.
class AreaScanFrames : public FrameMaker
{
public:
    explicit AreaScanFrames(Firmware &firmware) : m_firmware(firmware) { }

    void setAcquiring(bool acquiring) override
    {
        m_isAcquiring = acquiring;
        m_pending = 0;
        m_next = steady_clock::now();
    }
    void trigger(int kind) override;
    std::optional<Frame> take(milliseconds passed, double rate) override;
    nanoseconds rest() const override
    {
        return m_isAcquiring ? std::max(nanoseconds(0), nanoseconds(m_next - steady_clock::now())) : milliseconds(20);
    }

private:
    enum TriggerKind { FrameStart, AcquisitionStart, FrameBurstStart, triggerKinds };

    bool isTriggered() const;
    FramePart picture();
    /// Costs next to nothing: a ramp that moves.
    FramePart quickPicture();

    Firmware &m_firmware;
    Picture m_picture;
    QByteArray m_ramp;
    steady_clock::time_point m_next;
    qint64 m_pending = 0; ///< images that triggers have asked for
    int m_taken = 0;
    bool m_isAcquiring = false;
};

void AreaScanFrames::trigger(int kind)
{
    if (kind == AcquisitionStart)
        m_pending = std::numeric_limits<qint64>::max() / 2;
    else if (kind == FrameBurstStart)
        m_pending += m_firmware.inspect(
            [](const RegisterMemory &memory) { return memory.integer("AcquisitionBurstFrameCount"); });
    else
        ++m_pending;
}

bool AreaScanFrames::isTriggered() const
{
    return m_firmware.inspect([](const RegisterMemory &memory) {
        int kind = 0;
        while (kind < triggerKinds && memory.integer("TriggerMode", kind) != 1)
            ++kind;
        return kind < triggerKinds;
    });
}

std::optional<Frame> AreaScanFrames::take(milliseconds, double rate)
{
    if (!m_isAcquiring || steady_clock::now() < m_next)
        return {};
    const double wanted = rate > 0.0 ? rate : m_firmware.inspect(&ImageModel::frameRate);
    const bool isTriggered = this->isTriggered();
    if (isTriggered && m_pending == 0) {
        m_next = steady_clock::now() + milliseconds(1);
        return {};
    }
    m_pending -= isTriggered ? 1 : 0;
    const auto interval = std::chrono::duration_cast<nanoseconds>(std::chrono::duration<double>(1.0 / wanted));
    m_next = std::max(m_next + interval, steady_clock::now() - 10 * interval);
    Frame frame;
    frame.parts = {rate > 0.0 ? quickPicture() : picture()};
    frame.timestamp = m_firmware.timestamp();
    m_firmware.frameTaken();
    frame.chunks = chunks(m_firmware);
    return frame;
}

FramePart AreaScanFrames::picture()
{
    std::uint64_t format = 0;
    const PictureSettings settings = m_firmware.inspect([&](const RegisterMemory &memory) {
        format = std::uint64_t(memory.integer("PixelFormat"));
        return PictureSettings::fromRegisters(memory, m_firmware.timestamp());
    });
    const QImage image = m_picture.draw(settings);
    FramePart result =
        part(GenTL::PART_DATATYPE_2D_IMAGE, format, image.width(), image.height(), pixels(image, format));
    result.x = settings.region.x();
    result.y = settings.region.y();
    return result;
}

FramePart AreaScanFrames::quickPicture()
{
    constexpr int Round = 256;
    std::uint64_t format = 0;
    const QRect region = m_firmware.inspect([&](const RegisterMemory &memory) {
        format = std::uint64_t(memory.integer("PixelFormat"));
        return ImageModel::region(memory);
    });
    const qint64 size = qint64(region.width()) * region.height() * qint64(format >> 16 & 0xFF) / 8;
    if (m_ramp.size() != size + Round) {
        m_ramp.resize(int(size + Round));
        std::iota(m_ramp.begin(), m_ramp.end(), char(0));
    }
    m_taken = (m_taken + 1) % Round;
    return {GenTL::PART_DATATYPE_2D_IMAGE,
            format,
            region.width(),
            region.height(),
            region.x(),
            region.y(),
            m_ramp,
            m_taken,
            size};
}

/// Heights in 65535 steps from the lowest to the highest; 0 where there is no data.
QByteArray heightSteps(const HeightFrame &heights)
{
    QByteArray data(int(heights.heights.size()) * 2, '\0');
    auto *to = reinterpret_cast<quint16 *>(data.data());
    const auto step = [](float height) {
        constexpr double Range = ProfilerSettings::HighestZ - ProfilerSettings::LowestZ;
        const double share = std::clamp((double(height) - ProfilerSettings::LowestZ) / Range, 0.0, 1.0);
        return std::isnan(height) ? quint16(0) : quint16(1 + std::lround(share * 65534.0));
    };
    std::transform(heights.heights.begin(), heights.heights.end(), to, step);
    return data;
}

QByteArray heightFloats(const HeightFrame &heights)
{
    return QByteArray(reinterpret_cast<const char *>(heights.heights.data()),
                      int(heights.heights.size() * sizeof(float)));
}

/// Drives a source of the simulation by hand: it needs no event loop then.
template <class Source>
class SourceFrames : public FrameMaker
{
public:
    using HeightData = QByteArray (*)(const HeightFrame &);

    SourceFrames(Firmware &firmware, std::uint64_t format, HeightData heightData)
        : m_firmware(firmware), m_source(firmware), m_format(format), m_heightData(heightData)
    {
        QObject::connect(&m_source, &FrameSource::frameReady, [this] { keep(m_source.take()); });
    }

    void setAcquiring(bool acquiring) override { m_source.setAcquiring(acquiring); }
    void trigger(int kind) override { m_source.trigger(kind); }
    nanoseconds rest() const override { return milliseconds(m_ready.empty() ? 20 : 0); }

    std::optional<Frame> take(milliseconds passed, double) override
    {
        m_source.step(passed);
        if (m_ready.empty())
            return {};
        Frame frame = std::move(m_ready.front());
        m_ready.pop_front();
        return frame;
    }

private:
    struct Driven : public Source
    {
        using Source::Source;
        void step(milliseconds time) { this->ticked(time); }
    };

    void keep(const SimulatedFrame &taken)
    {
        if (taken.heights && !taken.heights->complete)
            return; // a part of a frame
        Frame frame;
        frame.timestamp = m_firmware.timestamp();
        if (taken.heights)
            addHeights(frame, *taken.heights);
        else
            frame.parts.push_back(grayPart(taken.image));
        m_ready.push_back(std::move(frame));
    }

    void addHeights(Frame &frame, const HeightFrame &heights)
    {
        frame.parts.push_back(
            part(GenTL::PART_DATATYPE_3D_IMAGE, m_format, heights.width, heights.height, m_heightData(heights)));
        if (!heights.intensity.isNull())
            frame.parts.push_back(grayPart(heights.intensity));
        for (const QImage &output : heights.outputs) {
            if (!output.isNull())
                frame.parts.push_back(grayPart(output));
        }
        if (frame.parts.size() == 1 && m_format == Coord3DC16)
            frame.parts[0].type = GenTL::PART_DATATYPE_2D_IMAGE; // profilers send a plain image then
    }

    Firmware &m_firmware;
    Driven m_source;
    const std::uint64_t m_format; ///< of heights
    const HeightData m_heightData;
    std::deque<Frame> m_ready;
};

} // namespace

qint64 Frame::size() const
{
    return std::accumulate(parts.begin(), parts.end(), qint64(chunks.size()),
                           [](qint64 sum, const FramePart &part) { return sum + part.size; });
}

std::unique_ptr<FrameMaker> areaScanFrames(Firmware &firmware)
{
    return std::make_unique<AreaScanFrames>(firmware);
}

std::unique_ptr<FrameMaker> profilerFrames(Firmware &firmware)
{
    return std::make_unique<SourceFrames<ProfilerSource>>(firmware, Coord3DC16, heightSteps);
}

std::unique_ptr<FrameMaker> structuredLightFrames(Firmware &firmware)
{
    return std::make_unique<SourceFrames<StructuredLightSource>>(firmware, Coord3DC32f, heightFloats);
}

} // namespace TestProducer
