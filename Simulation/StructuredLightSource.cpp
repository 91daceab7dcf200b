// SPDX-License-Identifier: MIT
#include "Simulation/StructuredLightSource.h"

#include <algorithm>
#include <cmath>

#include "Simulation/Firmware.h"

namespace {

constexpr int mostPending = 2; // triggers that are kept while a shot is taken

/// Where the plate is, in mm.
double platePosition(const RegisterMemory &memory, qint64 nanoseconds)
{
    constexpr double amplitude = 6.0; // mm
    constexpr double turn = 4.0; // seconds for one radian
    return memory.integer("TestPlateMotion") == 1 ? amplitude * std::sin(double(nanoseconds) / 1e9 / turn) : 0.0;
}

QImage grayPicture(const HeightFrame &frame)
{
    constexpr float darkest = 16.0f, lowest = -20.0f, levelsPerMm = 4.0f;
    const auto level = [=](float height) {
        const float bright = std::clamp(darkest + (height - lowest) * levelsPerMm, darkest, 255.0f);
        return std::isnan(height) ? uchar(0) : uchar(bright);
    };
    QImage picture(frame.width, frame.height, QImage::Format_Grayscale8);
    for (int y = 0; y < frame.height; ++y)
        std::transform(frame.profile(y), frame.profile(y) + frame.width, picture.scanLine(y), level);
    return picture;
}

} // namespace

StructuredLightSource::StructuredLightSource(Firmware &device) : FrameSource(device) { }

void StructuredLightSource::setAcquiring(bool on)
{
    acquiring = on;
    due = 1.0;
    pending = 0;
}

void StructuredLightSource::trigger(int)
{
    if (!acquiring)
        return;
    if (pending < mostPending)
        ++pending;
    else
        countUp("MissedTriggerCount");
}

void StructuredLightSource::ticked(std::chrono::milliseconds time)
{
    if (!acquiring)
        return;
    const double rate = firmware.inspect(&StructuredLightSettings::rate);
    const bool triggered = firmware.inspect([](const RegisterMemory &memory) {
        return memory.integer("AcquisitionMode") == StructuredLightSettings::SoftwareTrigger;
    });
    const bool waiting = triggered && pending == 0;
    due += rate * std::chrono::duration<double>(time).count();
    if (waiting)
        due = std::min(1.0, due);
    if (waiting || due < 1.0)
        return;
    due = std::min(1.0, due - 1.0); // a busy machine is late sometimes
    pending -= triggered ? 1 : 0;
    takeShot();
}

void StructuredLightSource::takeShot()
{
    double position = 0.0;
    const auto settings = firmware.inspect([&](const RegisterMemory &memory) {
        position = platePosition(memory, firmware.timestamp());
        return StructuredLightSettings::fromRegisters(memory);
    });
    auto frame = std::make_shared<const HeightFrame>(sensor.shot(settings, position));
    const QImage gray = grayPicture(*frame);
    deliver({gray, std::move(frame)});
    firmware.frameTaken();
    acquiring = firmware.inspect([](const RegisterMemory &memory) { return memory.integer("Acquiring") == 1; });
}
