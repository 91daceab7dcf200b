// SPDX-License-Identifier: MIT
#include "Simulation/ProfilerSettings.h"

#include <algorithm>
#include <cmath>

namespace {

constexpr double RadiansPerDegree = 0.017453292519943295;
/// Brightness of a usual surface with the exposure and laser power that a new device has.
constexpr double UsualBrightness = 160.0;
constexpr double UsualExposure = 100.0;
constexpr double UsualLaser = 0.6;

QRect mask(const RegisterMemory &memory, int index)
{
    if (memory.integer("ImageMask", index) == 0)
        return {};
    return QRect(int(memory.integer("ImageMaskOffsetX", index)), int(memory.integer("ImageMaskOffsetY", index)),
                 int(memory.integer("ImageMaskWidth", index)), int(memory.integer("ImageMaskHeight", index)));
}

double laserPower(const RegisterMemory &memory)
{
    const bool always = memory.integer("LaserControlMode") == 0;
    const bool shines = memory.integer("LaserSwitch") == 1 && (always || memory.integer("Acquiring") == 1);
    return shines ? memory.number("Lasersetting") / 100.0 : 0.0;
}

/// Share of the belt's movement that makes encoder pulses: all of it or nothing.
bool countsDirection(qint64 outputMode, bool forward)
{
    enum Mode { PositionUp, PositionDown, DirectionUp, DirectionDown, Motion };
    const bool up = outputMode == PositionUp || outputMode == DirectionUp;
    return outputMode == Motion || up == forward;
}

double encoderRate(const RegisterMemory &memory)
{
    const double speed = memory.number("TestPartSpeed");
    if (!countsDirection(memory.integer("EncoderOutputMode"), speed > 0.0))
        return 0.0;
    const double cycles = std::abs(speed) / memory.number("EncoderResolution");
    return cycles * memory.number("EncoderMode") / memory.number("EncoderDivider");
}

} // namespace

ProfilerSettings ProfilerSettings::fromRegisters(const RegisterMemory &memory)
{
    const auto integer = [&memory](const char *name) { return int(memory.integer(name)); };
    ProfilerSettings settings;
    settings.firstRow = integer("OffsetY");
    settings.rows = integer("Height");
    for (int i = 0; i < int(settings.masks.size()); ++i)
        settings.masks[size_t(i)] = mask(memory, i);
    settings.exposure = memory.number("ExposureTime");
    settings.laser = laserPower(memory);
    settings.dynamicRange = integer("SensingMode");
    settings.threshold = integer("Threshold");
    settings.narrowest = integer("LaserWidthLower");
    settings.widest = integer("LaserWidthUpper");
    settings.extraction = integer("ExtractionMode");
    settings.intensity = integer("DepthDataType") == 1;
    settings.longestGap = integer("InvalidPointNum");
    settings.medianX = integer("MidFilterWinLen");
    settings.averageX = integer("AvgFilterWinLen");
    settings.medianY = integer("TimeAxisMedFltWinLen");
    settings.averageY = integer("TimeAxisAvgFltWinLen");
    settings.reverseX = integer("ReverseX") == 1;
    settings.offsetX = memory.number("XCoorOffset");
    settings.offsetZ = memory.number("ZCoorOffset");
    settings.scaleZ = memory.number("ZCoorScale");
    settings.sine = memory.number("SinData");
    settings.cosine = memory.number("CosData");
    const double tilt = memory.number("TestMountingTilt") * RadiansPerDegree;
    settings.mountingSlope = std::tan(tilt);
    settings.mountingScale = memory.number("TestMountingScale") / std::cos(tilt);
    settings.strayLight = integer("TestStrayLight") == 1;
    return settings;
}

double ProfilerSettings::lineBrightness(double reflectance) const
{
    const double light = reflectance * exposure / UsualExposure * laser / UsualLaser;
    return UsualBrightness * (dynamicRange == 0 ? light : std::pow(light, 1.0 / (1.0 + 0.6 * dynamicRange)));
}

namespace ProfilerRates {

double highestLineRate(const RegisterMemory &memory)
{
    constexpr double MicrosecondsPerRow = 0.15;
    constexpr double Overhead = 30.0;
    return 1e6 / (memory.number("ExposureTime") + MicrosecondsPerRow * memory.number("Height") + Overhead);
}

double lineRate(const RegisterMemory &memory)
{
    const double highest = highestLineRate(memory);
    if (memory.integer("TriggerMode", LineStart) == 0) {
        const bool limited = memory.integer("AcquisitionLineRateEnable") == 1;
        return limited ? std::min(highest, memory.number("AcquisitionLineRate")) : highest;
    }
    return listens(memory, LineStart, Encoder) ? std::min(highest, encoderRate(memory)) : 0.0;
}

bool listens(const RegisterMemory &memory, TriggerKind kind, TriggerSource source)
{
    return memory.integer("TriggerMode", kind) == 1 && memory.integer("TriggerSource", kind) == source;
}

} // namespace ProfilerRates
