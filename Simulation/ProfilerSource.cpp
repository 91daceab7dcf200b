// SPDX-License-Identifier: MIT
#include "Simulation/ProfilerSource.h"

#include <algorithm>
#include <cmath>
#include <limits>

#include "Simulation/Firmware.h"
#include "Simulation/ProfilerScene.h"

namespace {

constexpr int mostLinesPerTick = 400; // a busy machine is late sometimes
constexpr std::chrono::milliseconds imageInterval{100};
constexpr qint64 sensorImage = 1; // of ImageOutputMode
constexpr qint64 shortFrame = 1; // of ContinuousMode
constexpr qint64 nextTrigger = 1; // of EndFrameMode

QImage blackImage(int lines)
{
    QImage image(ProfilerSettings::columns, lines, QImage::Format_Grayscale8);
    image.fill(0);
    return image;
}

/// From nearly black, at the lower end of the heights, to white; black where there is no data.
uchar grayLevel(float height)
{
    constexpr float darkest = 16.0f;
    constexpr auto lowest = float(ProfilerSettings::lowestZ);
    constexpr float scale = (255.0f - darkest) / (float(ProfilerSettings::highestZ) - lowest);
    return std::isnan(height) ? uchar(0) : uchar(std::clamp(darkest + (height - lowest) * scale, darkest, 255.0f));
}

HeightFrame emptyFrame(int lines, bool intensity)
{
    HeightFrame frame;
    frame.width = ProfilerSettings::columns;
    frame.height = lines;
    frame.firstX = ProfilerSettings::firstX;
    frame.pitchX = ProfilerSettings::pitchX;
    frame.heights.assign(size_t(frame.width) * size_t(lines), std::numeric_limits<float>::quiet_NaN());
    if (intensity)
        frame.intensity = blackImage(lines);
    return frame;
}

} // namespace

ProfilerSource::ProfilerSource(Firmware &device) : FrameSource(device) { }

qint64 ProfilerSource::setting(const char *name, int position) const
{
    return firmware.inspect([=](const RegisterMemory &memory) { return memory.integer(name, position); });
}

double ProfilerSource::number(const char *name) const
{
    return firmware.inspect([=](const RegisterMemory &memory) { return memory.number(name); });
}

void ProfilerSource::setAcquiring(bool on)
{
    acquiring = on;
    inFrame = false;
    due = 0.0;
    sinceImage = imageInterval;
}

void ProfilerSource::trigger(int kind)
{
    if (!acquiring || setting("ImageOutputMode") == sensorImage)
        return;
    if (kind == ProfilerRates::LineStart) {
        due += inFrame ? 1.0 : 0.0;
        return;
    }
    if (inFrame && setting("EndFrameMode") != nextTrigger) {
        countUp("MissedTriggerCount");
        return;
    }
    if (inFrame)
        endFrame();
    if (acquiring)
        startFrame(linesSinceSignal());
}

/// The lines that were due since a part passed a light barrier: signals are heard of a little late.
double ProfilerSource::linesSinceSignal() const
{
    return firmware.inspect([](const RegisterMemory &memory) {
        const double position = memory.number("TestPartPosition");
        const double speed = memory.number("TestPartSpeed");
        const bool second = ProfilerRates::listens(memory, ProfilerRates::FrameStart, ProfilerRates::Line2);
        if (speed <= 0.0
            || (!second && !ProfilerRates::listens(memory, ProfilerRates::FrameStart, ProfilerRates::Line1)))
            return 0.0;
        const double way = position - (second ? ProfilerScene::partSpacing / 2 : 0.0);
        const double passed = way - std::floor(way / ProfilerScene::partSpacing) * ProfilerScene::partSpacing;
        return passed / speed * ProfilerRates::lineRate(memory);
    });
}

void ProfilerSource::startFrame(double linesDue)
{
    const bool intensity = setting("DepthDataType") == 1;
    frame = emptyFrame(int(std::max<qint64>(1, setting("AcquisitionLineCount"))), intensity);
    gray = blackImage(frame.height);
    due = linesDue;
    inFrame = true;
    medianOverTime.clear();
    averageOverTime.clear();
}

void ProfilerSource::ticked(std::chrono::milliseconds time)
{
    if (!acquiring)
        return;
    settings = firmware.inspect([](const RegisterMemory &memory) { return ProfilerSettings::fromRegisters(memory); });
    sinceImage += time;
    if (setting("ImageOutputMode") == sensorImage) {
        takeSensorImage();
        return;
    }
    if (!inFrame && setting("TriggerMode", ProfilerRates::FrameStart) == 0)
        startFrame(0.0);
    if (!inFrame)
        return;
    const double rate = firmware.inspect([](const RegisterMemory &memory) { return ProfilerRates::lineRate(memory); });
    due += rate * std::chrono::duration<double>(time).count();
    takeLines(rate);
}

void ProfilerSource::takeLines(double linesPerSecond)
{
    const double lost = std::floor(due) - mostLinesPerTick;
    if (lost > 0) {
        countUp("DroppedLineCount", qint64(lost));
        due -= lost;
    }
    const double position = number("TestPartPosition");
    const double pitchY = linesPerSecond > 0.0 ? number("TestPartSpeed") / linesPerSecond : 0.0;
    while (due >= 1.0) {
        due -= 1.0;
        if (takeLine(position - pitchY * due)) {
            if (batchIsFull() && due < double(setting("BatchNumber"))) // else the next one is ready at once
                sendBatch(false);
            continue;
        }
        endFrame();
        const bool next = acquiring && setting("TriggerMode", ProfilerRates::FrameStart) == 0;
        if (!next)
            return;
        startFrame(due);
    }
}

bool ProfilerSource::takeLine(double y)
{
    ProfilerSensor::Profile profile = sensor.profile(settings, y);
    ProfilerFilters::fillGaps(profile.heights, settings.longestGap);
    ProfilerFilters::median(profile.heights, settings.medianX);
    ProfilerFilters::average(profile.heights, settings.averageX);
    medianOverTime.apply(profile.heights, settings.medianY);
    averageOverTime.apply(profile.heights, settings.averageY);
    const int line = frame.lines++;
    frame.applied = {settings.sine, settings.cosine, settings.scaleZ, settings.offsetZ, settings.reverseX};
    std::copy(profile.heights.begin(), profile.heights.end(),
              frame.heights.begin() + std::ptrdiff_t(line) * frame.width);
    if (!frame.intensity.isNull())
        std::copy(profile.brightness.begin(), profile.brightness.end(), frame.intensity.scanLine(line));
    std::transform(profile.heights.begin(), profile.heights.end(), gray.scanLine(line), grayLevel);
    const bool ends = batchIsFull() && setting("ContinuousMode") == shortFrame;
    return frame.lines < frame.height && !ends;
}

void ProfilerSource::endFrame()
{
    inFrame = false;
    if (frame.lines == 0)
        return;
    if (frame.lines < frame.height)
        cutFrame();
    sendBatch(true);
    firmware.frameTaken();
    acquiring = setting("Acquiring") == 1;
}

void ProfilerSource::cutFrame()
{
    frame.height = frame.lines;
    frame.heights.resize(size_t(frame.width) * size_t(frame.lines));
    frame.intensity = frame.intensity.copy(0, 0, frame.width, frame.lines);
    gray = gray.copy(0, 0, frame.width, frame.lines);
}

void ProfilerSource::sendBatch(bool last)
{
    frame.complete = last;
    deliver({gray, std::make_shared<const HeightFrame>(frame)});
}

void ProfilerSource::takeSensorImage()
{
    if (sinceImage < imageInterval)
        return;
    sinceImage = std::chrono::milliseconds(0);
    deliver({sensor.image(settings, number("TestPartPosition")), nullptr});
    firmware.frameTaken();
    acquiring = setting("Acquiring") == 1;
}
