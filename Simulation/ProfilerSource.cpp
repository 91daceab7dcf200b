// SPDX-License-Identifier: MIT
#include "Simulation/ProfilerSource.h"

#include <algorithm>
#include <cmath>
#include <limits>

#include "Simulation/Firmware.h"
#include "Simulation/ProfilerScene.h"

namespace {

constexpr int MostLinesPerTick = 400; // a busy machine is late sometimes
constexpr std::chrono::milliseconds ImageInterval{100};
constexpr qint64 SensorImage = 1; // of ImageOutputMode
constexpr qint64 ShortFrame = 1; // of ContinuousMode
constexpr qint64 NextTrigger = 1; // of EndFrameMode

QImage blackImage(int lines)
{
    QImage image(ProfilerSettings::Columns, lines, QImage::Format_Grayscale8);
    image.fill(0);
    return image;
}

/// From nearly black, at the lower end of the heights, to white; black where there is no data.
uchar grayLevel(float height)
{
    constexpr float Darkest = 16.0f;
    constexpr auto Lowest = float(ProfilerSettings::LowestZ);
    constexpr float Scale = (255.0f - Darkest) / (float(ProfilerSettings::HighestZ) - Lowest);
    return std::isnan(height) ? uchar(0) : uchar(std::clamp(Darkest + (height - Lowest) * Scale, Darkest, 255.0f));
}

HeightFrame emptyFrame(int lines, bool intensity)
{
    HeightFrame frame;
    frame.width = ProfilerSettings::Columns;
    frame.height = lines;
    frame.firstX = ProfilerSettings::FirstX;
    frame.pitchX = ProfilerSettings::PitchX;
    frame.heights.assign(size_t(frame.width) * size_t(lines), std::numeric_limits<float>::quiet_NaN());
    if (intensity)
        frame.intensity = blackImage(lines);
    return frame;
}

} // namespace

ProfilerSource::ProfilerSource(Firmware &device) : FrameSource(device) { }

qint64 ProfilerSource::setting(const char *name, int position) const
{
    return m_firmware.inspect([=](const RegisterMemory &memory) { return memory.integer(name, position); });
}

double ProfilerSource::number(const char *name) const
{
    return m_firmware.inspect([=](const RegisterMemory &memory) { return memory.number(name); });
}

void ProfilerSource::setAcquiring(bool on)
{
    m_acquiring = on;
    m_inFrame = false;
    m_due = 0.0;
    m_sinceImage = ImageInterval;
}

void ProfilerSource::trigger(int kind)
{
    if (!m_acquiring || setting("ImageOutputMode") == SensorImage)
        return;
    if (kind == ProfilerRates::LineStart) {
        m_due += m_inFrame ? 1.0 : 0.0;
        return;
    }
    if (m_inFrame && setting("EndFrameMode") != NextTrigger) {
        countUp("MissedTriggerCount");
        return;
    }
    if (m_inFrame)
        endFrame();
    if (m_acquiring)
        startFrame(linesSinceSignal());
}

/// The lines that were due since a part passed a light barrier: signals are heard of a little late.
double ProfilerSource::linesSinceSignal() const
{
    return m_firmware.inspect([](const RegisterMemory &memory) {
        const double position = memory.number("TestPartPosition");
        const double speed = memory.number("TestPartSpeed");
        const bool second = ProfilerRates::listens(memory, ProfilerRates::FrameStart, ProfilerRates::Line2);
        if (speed <= 0.0
            || (!second && !ProfilerRates::listens(memory, ProfilerRates::FrameStart, ProfilerRates::Line1)))
            return 0.0;
        const double way = position - (second ? ProfilerScene::PartSpacing / 2 : 0.0);
        const double passed = way - std::floor(way / ProfilerScene::PartSpacing) * ProfilerScene::PartSpacing;
        return passed / speed * ProfilerRates::lineRate(memory);
    });
}

void ProfilerSource::startFrame(double linesDue)
{
    const bool intensity = setting("DepthDataType") == 1;
    m_frame = emptyFrame(int(std::max<qint64>(1, setting("AcquisitionLineCount"))), intensity);
    m_gray = blackImage(m_frame.height);
    m_due = linesDue;
    m_inFrame = true;
    m_medianOverTime.clear();
    m_averageOverTime.clear();
}

void ProfilerSource::ticked(std::chrono::milliseconds time)
{
    if (!m_acquiring)
        return;
    m_settings =
        m_firmware.inspect([](const RegisterMemory &memory) { return ProfilerSettings::fromRegisters(memory); });
    m_sinceImage += time;
    if (setting("ImageOutputMode") == SensorImage) {
        takeSensorImage();
        return;
    }
    if (!m_inFrame && setting("TriggerMode", ProfilerRates::FrameStart) == 0)
        startFrame(0.0);
    if (!m_inFrame)
        return;
    const double rate =
        m_firmware.inspect([](const RegisterMemory &memory) { return ProfilerRates::lineRate(memory); });
    m_due += rate * std::chrono::duration<double>(time).count();
    takeLines(rate);
}

void ProfilerSource::takeLines(double linesPerSecond)
{
    const double lost = std::floor(m_due) - MostLinesPerTick;
    if (lost > 0) {
        countUp("DroppedLineCount", qint64(lost));
        m_due -= lost;
    }
    const double position = number("TestPartPosition");
    const double pitchY = linesPerSecond > 0.0 ? number("TestPartSpeed") / linesPerSecond : 0.0;
    while (m_due >= 1.0) {
        m_due -= 1.0;
        if (takeLine(position - pitchY * m_due)) {
            if (batchIsFull() && m_due < double(setting("BatchNumber"))) // else the next one is ready at once
                sendBatch(false);
            continue;
        }
        endFrame();
        const bool next = m_acquiring && setting("TriggerMode", ProfilerRates::FrameStart) == 0;
        if (!next)
            return;
        startFrame(m_due);
    }
}

bool ProfilerSource::takeLine(double y)
{
    ProfilerSensor::Profile profile = m_sensor.profile(m_settings, y);
    ProfilerFilters::fillGaps(profile.heights, m_settings.longestGap);
    ProfilerFilters::median(profile.heights, m_settings.medianX);
    ProfilerFilters::average(profile.heights, m_settings.averageX);
    m_medianOverTime.apply(profile.heights, m_settings.medianY);
    m_averageOverTime.apply(profile.heights, m_settings.averageY);
    const int line = m_frame.lines++;
    m_frame.applied = {m_settings.sine, m_settings.cosine, m_settings.scaleZ, m_settings.offsetZ, m_settings.reverseX};
    std::copy(profile.heights.begin(), profile.heights.end(),
              m_frame.heights.begin() + std::ptrdiff_t(line) * m_frame.width);
    if (!m_frame.intensity.isNull())
        std::copy(profile.brightness.begin(), profile.brightness.end(), m_frame.intensity.scanLine(line));
    std::transform(profile.heights.begin(), profile.heights.end(), m_gray.scanLine(line), grayLevel);
    const bool ends = batchIsFull() && setting("ContinuousMode") == ShortFrame;
    return m_frame.lines < m_frame.height && !ends;
}

void ProfilerSource::endFrame()
{
    m_inFrame = false;
    if (m_frame.lines == 0)
        return;
    if (m_frame.lines < m_frame.height)
        cutFrame();
    sendBatch(true);
    m_firmware.frameTaken();
    m_acquiring = setting("Acquiring") == 1;
}

void ProfilerSource::cutFrame()
{
    m_frame.height = m_frame.lines;
    m_frame.heights.resize(size_t(m_frame.width) * size_t(m_frame.lines));
    m_frame.intensity = m_frame.intensity.copy(0, 0, m_frame.width, m_frame.lines);
    m_gray = m_gray.copy(0, 0, m_frame.width, m_frame.lines);
}

void ProfilerSource::sendBatch(bool last)
{
    m_frame.complete = last;
    deliver({m_gray, std::make_shared<const HeightFrame>(m_frame)});
}

void ProfilerSource::takeSensorImage()
{
    if (m_sinceImage < ImageInterval)
        return;
    m_sinceImage = std::chrono::milliseconds(0);
    deliver({m_sensor.image(m_settings, number("TestPartPosition")), nullptr});
    m_firmware.frameTaken();
    m_acquiring = setting("Acquiring") == 1;
}
