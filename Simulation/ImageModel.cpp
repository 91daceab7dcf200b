// SPDX-License-Identifier: MIT
#include "Simulation/ImageModel.h"

#include <algorithm>
#include <cmath>

namespace ImageModel {

namespace {

constexpr double FreeRunningRate = 500.0;
constexpr int ChunkBytes = 64;
constexpr int PacketHeaders = 36; // bytes of a packet that carry no image
/// Exposure time that gives a medium gray picture in normal light without gain.
constexpr double MediumExposure = 10000.0;

int atLeastOne(qint64 value)
{
    return int(std::max<qint64>(1, value));
}

int roundedDown(qint64 value, int step)
{
    return int(value / step * step);
}

} // namespace

QRect region(const RegisterMemory &memory)
{
    return QRect(int(memory.integer("OffsetX")), int(memory.integer("OffsetY")), atLeastOne(memory.integer("Width")),
                 atLeastOne(memory.integer("Height")));
}

QSize reduction(const RegisterMemory &memory)
{
    return QSize(atLeastOne(memory.integer("BinningHorizontal") * memory.integer("DecimationHorizontal")),
                 atLeastOne(memory.integer("BinningVertical") * memory.integer("DecimationVertical")));
}

QSize reducedSensor(const RegisterMemory &memory)
{
    const QSize step = reduction(memory);
    return QSize(roundedDown(memory.integer("SensorWidth") / step.width(), 8),
                 roundedDown(memory.integer("SensorHeight") / step.height(), 2));
}

qint64 payloadSize(const RegisterMemory &memory)
{
    const QRect image = region(memory);
    const qint64 bitsPerPixel = memory.integer("PixelFormat") >> 16 & 0xFF;
    return qint64(image.width()) * image.height() * bitsPerPixel / 8 + memory.integer("ChunkModeActive") * ChunkBytes;
}

double throughput(const RegisterMemory &memory)
{
    const bool limited = memory.integer("DeviceLinkThroughputLimitMode") == 1;
    const double allowed = memory.number(limited ? "DeviceLinkThroughputLimit" : "DeviceLinkSpeed");
    const double packet = memory.number("GevSCPSPacketSize");
    const double delay = memory.number("GevSCPD") / memory.number("GevTimestampTickFrequency");
    return (packet - PacketHeaders) / (packet / allowed + delay);
}

double frameRate(const RegisterMemory &memory)
{
    const bool triggered = memory.integer("TriggerMode", 0) == 1;
    const bool limited = memory.integer("AcquisitionFrameRateEnable") == 1 && !triggered;
    const double wanted = limited ? memory.number("AcquisitionFrameRate") : FreeRunningRate;
    const double sensor = 1000000.0 / (double(memory.integer("Height")) * 10.0 + 400.0);
    const double exposure = 1000000.0 / (memory.number("ExposureTime") + 50.0);
    const double link = throughput(memory) / double(std::max<qint64>(1, payloadSize(memory)));
    return std::max(0.1, std::min({wanted, sensor, exposure, link}));
}

double brightness(const RegisterMemory &memory, qint64 timestamp)
{
    const double seconds = double(timestamp) * 1e-9;
    const double light = memory.number("TestSceneLight") / 100.0 * (1.0 + 0.1 * std::sin(seconds / 2.0));
    const double gain = std::pow(10.0, (memory.number("Gain", 0) + memory.number("Gain", 1)) / 20.0);
    return 0.5 * light * gain * memory.number("ExposureTime") / MediumExposure;
}

} // namespace ImageModel
