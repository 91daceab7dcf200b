// SPDX-License-Identifier: MIT
#include "Simulation/StructuredLightSource.h"

#include <algorithm>
#include <cmath>

#include "Simulation/Firmware.h"

namespace {

constexpr int MostPending = 2; // triggers that are kept while a shot is taken

/// Where the plate is, in mm.
double platePosition(const RegisterMemory &memory, qint64 nanoseconds)
{
    constexpr double Amplitude = 6.0; // mm
    constexpr double Turn = 4.0; // seconds for one radian
    return memory.integer("TestPlateMotion") == 1 ? Amplitude * std::sin(double(nanoseconds) / 1e9 / Turn) : 0.0;
}

QImage grayPicture(const HeightFrame &frame)
{
    constexpr float Darkest = 16.0f, Lowest = -20.0f, LevelsPerMm = 4.0f;
    const auto level = [=](float height) {
        const float bright = std::clamp(Darkest + (height - Lowest) * LevelsPerMm, Darkest, 255.0f);
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
    m_acquiring = on;
    m_due = 1.0;
    m_pending = 0;
}

void StructuredLightSource::trigger(int)
{
    if (!m_acquiring)
        return;
    if (m_pending < MostPending)
        ++m_pending;
    else
        countUp("MissedTriggerCount");
}

void StructuredLightSource::ticked(std::chrono::milliseconds time)
{
    if (!m_acquiring)
        return;
    const double rate = m_firmware.inspect(&StructuredLightSettings::rate);
    const bool triggered = m_firmware.inspect([](const RegisterMemory &memory) {
        return memory.integer("AcquisitionMode") == StructuredLightSettings::SoftwareTrigger;
    });
    const bool waiting = triggered && m_pending == 0;
    m_due += rate * std::chrono::duration<double>(time).count();
    if (waiting)
        m_due = std::min(1.0, m_due);
    if (waiting || m_due < 1.0)
        return;
    m_due = std::min(1.0, m_due - 1.0); // a busy machine is late sometimes
    m_pending -= triggered ? 1 : 0;
    takeShot();
}

void StructuredLightSource::takeShot()
{
    double position = 0.0;
    const auto settings = m_firmware.inspect([&](const RegisterMemory &memory) {
        position = platePosition(memory, m_firmware.timestamp());
        return StructuredLightSettings::fromRegisters(memory);
    });
    auto frame = std::make_shared<const HeightFrame>(m_sensor.shot(settings, position));
    const QImage gray = grayPicture(*frame);
    deliver({gray, std::move(frame)});
    m_firmware.frameTaken();
    m_acquiring = m_firmware.inspect([](const RegisterMemory &memory) { return memory.integer("Acquiring") == 1; });
}
