// SPDX-License-Identifier: MIT
#include "Simulation/ProfilerSensor.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <random>

#include "Simulation/ProfilerScene.h"

namespace {

using Settings = ProfilerSettings;

constexpr float Nothing = std::numeric_limits<float>::quiet_NaN();
constexpr double MmPerRow = (Settings::HighestZ - Settings::LowestZ) / Settings::SensorRows;
constexpr double Brightest = 255.0;
/// The camera looks aslant along Y: it does not see what lies so close before a wall that is so much higher.
constexpr double ShadowLength = 0.4; // mm
constexpr double ShadowWall = 2.5; // mm

double columnX(int column)
{
    return Settings::FirstX + Settings::PitchX * column;
}

double rowOf(double z)
{
    return (Settings::HighestZ - z) / MmPerRow;
}

bool isHidden(double x, double y, double height)
{
    return ProfilerScene::at(x, y + ShadowLength).height - height > ShadowWall;
}

/// The height that a device with this mounting measures without any correction.
double measured(const Settings &settings, double x, double height)
{
    return height * settings.mountingScale + x * settings.mountingSlope;
}

double corrected(const Settings &settings, double x, double z)
{
    return (z * settings.cosine - x * settings.sine) * settings.scaleZ + settings.offsetZ;
}

bool isMasked(const Settings &settings, int column, double row)
{
    return std::any_of(settings.masks.begin(), settings.masks.end(),
                       [=](const QRect &mask) { return mask.contains(column, int(row)); });
}

bool inRange(const Settings &settings, double row)
{
    return row >= settings.firstRow && row < settings.firstRow + settings.rows;
}

/// Where a point of the sensor goes in the profile.
int placeOf(const Settings &settings, int column)
{
    const int place = settings.reverseX ? Settings::Columns - 1 - column : column;
    return place + int(std::lround(settings.offsetX / Settings::PitchX));
}

} // namespace

ProfilerSensor::ProfilerSensor() : m_noiseTable(10007)
{
    std::minstd_rand random;
    std::normal_distribution<float> normal;
    std::generate(m_noiseTable.begin(), m_noiseTable.end(), [&] { return normal(random); });
}

void ProfilerSensor::addPeak(Peaks &found, double row, double light)
{
    const double seen = light * (1.0 + 0.12 * noise());
    const double blur = 0.2 + 20.0 / std::max(1.0, light); // rows
    found.peak[found.count++] = {row + blur * noise(), std::min(Brightest, seen), 3.0 + seen / 40.0};
}

ProfilerSensor::Peaks ProfilerSensor::peaks(const Settings &settings, int column, double y)
{
    Peaks found;
    const double x = columnX(column);
    const ProfilerScene::Surface surface = ProfilerScene::at(x, y);
    const double row = rowOf(measured(settings, x, surface.height));
    const double light = settings.lineBrightness(surface.reflectance);
    if (light > 1.0 && !isHidden(x, y, surface.height))
        addPeak(found, row, light);
    const QRect &lamp = ProfilerScene::StrayLight;
    if (settings.strayLight && column >= lamp.left() && column <= lamp.right()) {
        const double place = double(column - lamp.left()) / lamp.width();
        addPeak(found, lamp.top() + 4 + (lamp.height() - 8) * place,
                ProfilerScene::StrayBrightness * settings.exposure / 100.0);
    }
    return found;
}

const ProfilerSensor::Peak *ProfilerSensor::chosen(const Settings &settings, int column, const Peaks &found)
{
    const auto better = [&settings](const Peak &one, const Peak &other) {
        if (settings.extraction == Settings::Maximum)
            return one.brightness > other.brightness;
        return (settings.extraction == Settings::Near) == (one.row < other.row);
    };
    const Peak *best = nullptr;
    for (int i = 0; i < found.count; ++i) {
        const Peak &peak = found.peak[i];
        const bool passes = peak.brightness >= settings.threshold && peak.width >= settings.narrowest
            && peak.width <= settings.widest && inRange(settings, peak.row) && !isMasked(settings, column, peak.row);
        if (passes && (!best || better(peak, *best)))
            best = &peak;
    }
    return best;
}

ProfilerSensor::Profile ProfilerSensor::profile(const Settings &settings, double y)
{
    Profile result{std::vector<float>(Settings::Columns, Nothing), std::vector<uchar>(Settings::Columns, uchar(0))};
    for (int column = 0; column < Settings::Columns; ++column) {
        const Peaks found = peaks(settings, column, y);
        const Peak *peak = chosen(settings, column, found);
        const int place = placeOf(settings, column);
        if (!peak || place < 0 || place >= Settings::Columns)
            continue;
        const double z = Settings::HighestZ - peak->row * MmPerRow;
        result.heights[size_t(place)] = float(corrected(settings, columnX(column), z));
        result.brightness[size_t(place)] = uchar(peak->brightness);
    }
    return result;
}

QImage ProfilerSensor::image(const Settings &settings, double y)
{
    QImage image(Settings::Columns, Settings::SensorRows, QImage::Format_Grayscale8);
    image.fill(0);
    const auto draw = [&](int column, const Peak &peak) {
        const int reach = int(peak.width);
        for (int row = int(peak.row) - reach; row <= int(peak.row) + reach; ++row) {
            const double distance = (row - peak.row) * 2.0 / peak.width;
            const int level = int(peak.brightness * std::exp(-distance * distance));
            if (row >= 0 && row < Settings::SensorRows && inRange(settings, row) && !isMasked(settings, column, row))
                image.scanLine(row)[column] = uchar(std::max<int>(level, image.constScanLine(row)[column]));
        }
    };
    for (const QRect &mask : settings.masks) {
        const QRect visible = mask & image.rect();
        for (int row = visible.top(); row <= visible.bottom(); ++row)
            std::fill_n(image.scanLine(row) + visible.left(), visible.width(), uchar(60));
    }
    for (int column = 0; column < Settings::Columns; ++column) {
        const Peaks found = peaks(settings, column, y);
        for (int i = 0; i < found.count; ++i)
            draw(column, found.peak[i]);
    }
    return image;
}
