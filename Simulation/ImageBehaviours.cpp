// SPDX-License-Identifier: MIT
#include <algorithm>
#include <cmath>
#include <iterator>

#include "Simulation/Behaviour.h"
#include "Simulation/Firmware.h"
#include "Simulation/ImageModel.h"

using std::chrono::milliseconds;

namespace {

constexpr qint64 Mono8 = 0x01080001;

/// Binning and decimation exclude each other and change how large the image can be.
class ImageSize : public Behaviour
{
public:
    void written(Firmware &firmware, const RegisterWrite &write) override
    {
        RegisterMemory &memory = firmware.memory();
        const bool horizontal = write.is("BinningHorizontal") || write.is("DecimationHorizontal");
        const bool vertical = write.is("BinningVertical") || write.is("DecimationVertical");
        if (!horizontal && !vertical)
            return;
        if (write.is("BinningHorizontal") && write.value > 1)
            memory.setInteger("DecimationHorizontal", 1);
        if (write.is("BinningVertical") && write.value > 1)
            memory.setInteger("DecimationVertical", 1);
        const QSize largest = ImageModel::reducedSensor(memory);
        if (horizontal)
            fit(memory, "Width", "OffsetX", largest.width());
        else
            fit(memory, "Height", "OffsetY", largest.height());
    }

private:
    /// The image fills the reduced sensor again, as cameras do that do not scale the region.
    static void fit(RegisterMemory &memory, const char *size, const char *offset, int largest)
    {
        memory.setInteger(offset, 0);
        memory.setInteger(size, largest);
    }
};

/// A pixel format that is deeper than the converter falls back to the simplest one.
class PixelDepth : public Behaviour
{
public:
    void written(Firmware &firmware, const RegisterWrite &write) override
    {
        if (write.is("SensorDigitizationBits") && formatBits(firmware.memory()) > write.value)
            firmware.memory().setInteger("PixelFormat", Mono8);
    }

private:
    static int formatBits(const RegisterMemory &memory)
    {
        switch (memory.integer("PixelFormat")) {
        case 0x01100003:
            return 10;
        case 0x01100005:
        case 0x010C0047:
        case 0x01100011:
            return 12;
        default:
            return 8;
        }
    }
};

/// Refuses frame rates whose images the link cannot carry.
class LinkBandwidth : public Behaviour
{
public:
    QString objection(const Firmware &firmware, const RegisterWrite &write) const override
    {
        if (!write.is("AcquisitionFrameRate"))
            return {};
        const double needed = write.value * double(ImageModel::payloadSize(firmware.memory()));
        const double possible = ImageModel::throughput(firmware.memory());
        if (needed <= possible)
            return {};
        return QStringLiteral("%1 frames per second need %2 MB/s, the link carries %3 MB/s")
            .arg(write.value, 0, 'f', 1)
            .arg(needed / 1e6, 0, 'f', 1)
            .arg(possible / 1e6, 0, 'f', 1);
    }
};

/// Automatic exposure and gain: the values creep towards the target brightness ten times a second.
class AutoBrightness : public Behaviour
{
public:
    void elapsed(Firmware &firmware, milliseconds time) override
    {
        m_sinceStep += time;
        if (m_sinceStep < milliseconds(100))
            return;
        m_sinceStep = milliseconds(0);
        step(firmware, "ExposureAuto", [](RegisterMemory &memory, double ratio) {
            return move(memory, "ExposureTime", memory.number("ExposureTime") * ratio,
                        memory.number("AutoExposureTimeLowerLimit"), memory.number("AutoExposureTimeUpperLimit"));
        });
        step(firmware, "GainAuto", [](RegisterMemory &memory, double ratio) {
            return move(memory, "Gain", memory.number("Gain") + 20.0 * std::log10(ratio), 0.0,
                        memory.number("AutoGainUpperLimit"));
        });
    }

private:
    enum Mode { Off, Once, Continuous };
    static constexpr double Speed = 0.3;
    static constexpr double Tolerance = 0.02;

    /// False when the value stays where it is: at a limit.
    static bool move(RegisterMemory &memory, const char *name, double wanted, double low, double high)
    {
        const double before = memory.number(name);
        memory.setNumber(name, std::max(low, std::min(wanted, high)));
        return !qFuzzyCompare(memory.number(name), before);
    }

    template <class Adjust>
    static void step(Firmware &firmware, const char *mode, Adjust adjust)
    {
        RegisterMemory &memory = firmware.memory();
        if (memory.integer(mode) == Off)
            return;
        const double target = memory.number("AutoTargetBrightness") / 100.0;
        const double error = target / std::max(1e-6, ImageModel::brightness(memory, firmware.timestamp()));
        const bool moved = adjust(memory, std::pow(error, Speed));
        const bool reached = !moved || std::abs(error - 1.0) < Tolerance;
        if (memory.integer(mode) == Once && reached)
            memory.setInteger(mode, Off);
    }

    milliseconds m_sinceStep{0};
};

/// White balance: the ratios go to what makes the scene gray.
class WhiteBalance : public Behaviour
{
public:
    void elapsed(Firmware &firmware, milliseconds) override
    {
        RegisterMemory &memory = firmware.memory();
        const qint64 mode = memory.integer("BalanceWhiteAuto");
        if (mode == 0)
            return;
        double distance = 0.0;
        for (int color = 0; color < 3; ++color) {
            const double now = memory.number("BalanceRatio", color);
            memory.setNumber("BalanceRatio", now + 0.2 * (GrayRatios[color] - now), color);
            distance = std::max(distance, std::abs(GrayRatios[color] - now));
        }
        if (mode == 1 && distance < 0.01)
            memory.setInteger("BalanceWhiteAuto", 0);
    }

private:
    static constexpr double GrayRatios[] = {1.4, 1.0, 1.7};
};

} // namespace

void addImageBehaviours(Behaviours &behaviours)
{
    behaviours.push_back(std::make_unique<ImageSize>());
    behaviours.push_back(std::make_unique<PixelDepth>());
    behaviours.push_back(std::make_unique<LinkBandwidth>());
    behaviours.push_back(std::make_unique<AutoBrightness>());
    behaviours.push_back(std::make_unique<WhiteBalance>());
}
