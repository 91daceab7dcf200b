// SPDX-License-Identifier: MIT
#include "Simulation/StructuredLightSettings.h"

#include <algorithm>
#include <cmath>

namespace {

using Settings = StructuredLightSettings;

constexpr double UsualExposure = 10000.0; // microseconds
constexpr int ExposuresOfShot = 12;
enum LightMode { Off, Steady, Strobe };
constexpr double StrobeFactor = 1.5;

/// Features that tell whether an image is sent, as in Settings::Output.
constexpr const char *OutputNames[Settings::outputCount] = {"Left2DImage",     "Right2DImage",  "Left2DSrcImage",
                                                            "Right2DSrcImage", "Left2.5DFront", "Right2.5DFront",
                                                            "Left2.5DBack",    "Right2.5DBack"};

struct LightNames
{
    const char *selector;
    const char *mode;
    const char *value;
};
constexpr LightNames Lights[] = {{"Light1Selector", "Light1Mode", "Light1Value"},
                                 {"Light2Selector", "Light2Mode", "Light2Value"},
                                 {"Light3Selector", "Light3Mode", "Light3Value"}};

/// The sides of the selectors, behind the entry for all of them.
constexpr Settings::Lamp Sides[] = {{-1, 0, 1}, {1, 0, 1}, {0, 1, 1}, {0, -1, 1}};
constexpr int SideCount = 4;

void addLamps(std::vector<Settings::Lamp> &lamps, qint64 selected, double power)
{
    for (int side = 0; side < SideCount; ++side) {
        if (selected == 0)
            lamps.push_back({Sides[side].x, Sides[side].y, power / SideCount});
        else if (selected == side + 1)
            lamps.push_back({Sides[side].x, Sides[side].y, power});
    }
}

void addLight(Settings &settings, const RegisterMemory &memory, const LightNames &light)
{
    const qint64 mode = memory.integer(light.mode);
    const qint64 selected = memory.integer(light.selector);
    const double power = memory.number(light.value) / 100.0;
    if (mode == Off)
        return;
    addLamps(settings.lamps, selected, mode == Strobe ? power * StrobeFactor : power);
    if (mode == Steady)
        addLamps(settings.steadyLamps, selected, power);
}

void readDepth(Settings &settings, const RegisterMemory &memory)
{
    settings.contrast = memory.number("Contrast") / 100.0;
    settings.modulation = memory.number("Modulation");
    settings.lowBrightness = memory.number("LowBrightness");
    settings.highBrightness = memory.number("HighBrightness");
    settings.spikeThreshold = memory.number("FilterThreshold");
    settings.heightThreshold = memory.number("HighFilteringThreshold");
    settings.radius = int(memory.integer("Radius"));
    settings.neighbours = int(memory.integer("Neighborhoods"));
    settings.largestHole = int(memory.integer("FillThreshold"));
    settings.denoising = memory.integer("Denoising") == 1;
    settings.highest = memory.number("HighTruncation");
    settings.lowest = memory.number("LowTruncation");
}

} // namespace

StructuredLightSettings StructuredLightSettings::fromRegisters(const RegisterMemory &memory)
{
    StructuredLightSettings settings;
    settings.binning = 1 << memory.integer("Bining");
    settings.method = int(memory.integer("SensorMethod"));
    for (size_t i = 0; i < settings.outputs.size(); ++i)
        settings.outputs[i] = memory.integer(OutputNames[i]) == 1;
    settings.gain = std::pow(10.0, memory.number("SensorGain") / 20.0);
    settings.sensitivity = settings.gain * memory.number("SensorExposure") / UsualExposure;
    for (const LightNames &light : Lights)
        addLight(settings, memory, light);
    readDepth(settings, memory);
    return settings;
}

double StructuredLightSettings::noise(double brightness) const
{
    return (0.8 * gain + 0.12 * std::sqrt(brightness * gain)) / binning;
}

double StructuredLightSettings::rate(const RegisterMemory &memory)
{
    const double fastest = 1e6 / (ExposuresOfShot * memory.number("SensorExposure"));
    const bool triggered = memory.integer("AcquisitionMode") == SoftwareTrigger;
    return triggered ? fastest : std::min(memory.number("AcquisitionFrameRate"), fastest);
}
