// SPDX-License-Identifier: MIT
#include "Simulation/StructuredLightSensor.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <random>

#include "Simulation/StructuredLightFilters.h"
#include "Simulation/StructuredLightScene.h"

namespace {

using Settings = StructuredLightSettings;
using StructuredLightScene::Surface;

constexpr float Nothing = std::numeric_limits<float>::quiet_NaN();
constexpr double TwoPi = 6.283185307179586;
/// Sideways way of a point in a sensor's image, per height.
constexpr double Parallax = 0.2;
constexpr double StripePeriod = 16.0; // columns
constexpr double Projector = 128.0; // mean level of white paper under the stripes
constexpr double StripeContrast = 0.85;
constexpr double LampLevel = 280.0; // of white paper under a lamp of full power
constexpr double RoomLevel = 6.0;
constexpr double MirrorLevel = 320.0; // of a polished surface that reflects the light into a sensor
constexpr double Brightest = 255.0;

/// Surfaces over the whole plate, which is wider than the view; at the pitch of the sensor.
class Plate
{
public:
    static constexpr int Margin = 40; ///< columns beyond the view, on each side

    static const Plate &instance()
    {
        static const Plate Plate;
        return Plate;
    }
    const Surface &at(int column, int row) const
    {
        const int place = std::clamp(column + Margin, 0, Width - 1);
        return m_surfaces[size_t(row) * Width + size_t(place)];
    }

private:
    static constexpr int Width = Settings::Columns + 2 * Margin;

    Plate() : m_surfaces(size_t(Width) * Settings::Rows)
    {
        auto surface = m_surfaces.begin();
        for (int row = 0; row < Settings::Rows; ++row) {
            for (int column = -Margin; column < Settings::Columns + Margin; ++column)
                *surface++ = StructuredLightScene::at((column + 0.5 - Settings::Columns / 2.0) * Settings::Pitch,
                                                      (row + 0.5 - Settings::Rows / 2.0) * Settings::Pitch);
        }
    }

    std::vector<Surface> m_surfaces;
};

/// 1 where a polished surface of that slope throws light from a direction into the sensors.
double mirror(double slopeX, double slopeY, double x, double y)
{
    constexpr double Sharpness = 40.0;
    const double offX = slopeX + x, offY = slopeY + y;
    return std::exp(-Sharpness * (offX * offX + offY * offY));
}

double steepness(double slopeX, double slopeY)
{
    return std::sqrt(1.0 + slopeX * slopeX + slopeY * slopeY);
}

} // namespace

StructuredLightSensor::StructuredLightSensor() : m_noiseTable(10007)
{
    std::minstd_rand random;
    std::normal_distribution<float> normal;
    std::generate(m_noiseTable.begin(), m_noiseTable.end(), [&] { return normal(random); });
}

HeightFrame StructuredLightSensor::shot(const StructuredLightSettings &wanted, double shift)
{
    m_settings = wanted;
    m_width = Settings::Columns / m_settings.binning;
    m_height = Settings::Rows / m_settings.binning;
    lookAt(shift);
    for (int sensor = 0; sensor < SensorCount; ++sensor)
        look(sensor);
    HeightFrame frame = depthMap();
    applyFilters(frame);
    frame.outputs.resize(Settings::outputCount);
    for (int i = 0; i < Settings::outputCount; ++i) {
        if (m_settings.outputs[size_t(i)])
            frame.outputs[size_t(i)] = output(i, frame);
    }
    return frame;
}

void StructuredLightSensor::lookAt(double shift)
{
    const Plate &plate = Plate::instance();
    const int moved = int(std::lround(shift / Settings::Pitch));
    const auto slope = [](float rise) {
        constexpr float Steepest = 2.5f; // walls are not seen from straight above
        return std::clamp(rise / float(2.0 * Settings::Pitch), -Steepest, Steepest);
    };
    m_scene.resize(size_t(m_width) * size_t(m_height));
    auto point = m_scene.begin();
    for (int y = 0; y < m_height; ++y) {
        const int row = std::clamp(y * m_settings.binning + m_settings.binning / 2, 1, Settings::Rows - 2);
        for (int x = 0; x < m_width; ++x) {
            const int column = x * m_settings.binning + m_settings.binning / 2 - moved;
            const Surface &here = plate.at(column, row);
            const float riseX = plate.at(column + 1, row).height - plate.at(column - 1, row).height;
            const float riseY = plate.at(column, row + 1).height - plate.at(column, row - 1).height;
            *point++ = {here.height, here.reflectance, here.gloss, slope(riseX), slope(riseY)};
        }
    }
}

void StructuredLightSensor::look(int sensor)
{
    View &view = m_views[sensor];
    view.sees.assign(m_scene.size(), 0);
    view.source.resize(m_scene.size());
    for (int y = 0; y < m_height; ++y)
        lookAlongRow(sensor, y);
}

/// Goes away from the sensor. What appears before the furthest place so far is hidden; between that and a point that
/// appears further, the sensor sees the wall below the point.
void StructuredLightSensor::lookAlongRow(int sensor, int y)
{
    const auto along = [=](int i) { return sensor == 0 ? i : m_width - 1 - i; };
    const double pixelsPerMm = Parallax / (Settings::Pitch * m_settings.binning);
    int filled = 0; // pixels
    double furthest = -1.0;
    for (int i = 0; i < m_width; ++i) {
        const double place = i + m_scene[pixel(along(i), y)].height * pixelsPerMm;
        if (place < furthest)
            continue;
        furthest = place;
        m_views[sensor].sees[pixel(along(i), y)] = 1;
        for (; filled < m_width && filled <= place; ++filled)
            m_views[sensor].source[pixel(along(filled), y)] = along(i);
    }
    for (; filled < m_width; ++filled)
        m_views[sensor].source[pixel(along(filled), y)] = along(m_width - 1);
}

double StructuredLightSensor::light(const std::vector<Settings::Lamp> &lamps, const Point &point, int x, int y) const
{
    constexpr double Aside = 0.6, Above = 0.8, Falloff = 0.6;
    const double acrossX = 2.0 * x / m_width - 1.0, acrossY = 2.0 * y / m_height - 1.0;
    double sum = 0.0;
    for (const Settings::Lamp &lamp : lamps) {
        const double slope = lamp.x * double(point.slopeX) + lamp.y * double(point.slopeY);
        const double near = 1.0 + Falloff * (lamp.x * acrossX + lamp.y * acrossY);
        const double facing = std::max(0.0, Above - Aside * slope) / steepness(point.slopeX, point.slopeY);
        sum += lamp.power * near * double(point.reflectance) * facing * LampLevel;
        if (point.gloss > 0.2f)
            sum += lamp.power * double(point.gloss) * MirrorLevel
                * mirror(point.slopeX, point.slopeY, lamp.x * 0.3, lamp.y * 0.3);
    }
    return sum;
}

StructuredLightSensor::Stripes StructuredLightSensor::stripes(const Point &point, int sensor, int x, int y) const
{
    const double towards = sensor == 0 ? -Parallax / 2 : Parallax / 2;
    double projected = double(point.reflectance) * Projector / steepness(point.slopeX, point.slopeY);
    if (point.gloss > 0.2f)
        projected += double(point.gloss) * MirrorLevel * mirror(point.slopeX, point.slopeY, towards, 0.0);
    const double room = double(point.reflectance) * RoomLevel + light(m_settings.steadyLamps, point, x, y);
    const double brightness = std::min(Brightest, m_settings.sensitivity * (projected + room));
    const double strength = m_settings.sensitivity * projected * StripeContrast;
    return {brightness, std::min(strength, Brightest - brightness)};
}

float StructuredLightSensor::measured(const Point &point, int sensor, int x, int y)
{
    constexpr double MmPerShare = 0.7;
    constexpr double WrongShare = 0.35;
    constexpr float Rare = 3.2f; // deviations
    constexpr double WrongPeriod = 9.0; // mm
    const Stripes seen = stripes(point, sensor, x, y);
    const double deviation = m_settings.noise(seen.brightness);
    const double strength = seen.strength + deviation * double(noise());
    if (strength <= 0.0 || strength < m_settings.modulation || strength < m_settings.contrast * seen.brightness
        || seen.brightness < m_settings.lowBrightness || seen.brightness > m_settings.highBrightness)
        return Nothing;
    const double error = deviation / strength * double(noise());
    const float chance = noise();
    const bool wrong = std::abs(error) > WrongShare || std::abs(chance) > Rare;
    return point.height + float(MmPerShare * error + (wrong ? std::copysign(WrongPeriod, double(chance)) : 0.0));
}

HeightFrame StructuredLightSensor::depthMap()
{
    HeightFrame frame;
    frame.width = m_width;
    frame.height = frame.lines = m_height;
    frame.complete = true;
    frame.pitchX = Settings::Pitch * m_settings.binning;
    frame.firstX = -frame.pitchX * (m_width - 1) / 2;
    frame.heights.assign(m_scene.size(), Nothing);
    for (size_t i = 0; i < m_scene.size(); ++i) {
        float sum = 0.0f;
        int count = 0;
        for (int sensor = 0; sensor < SensorCount; ++sensor) {
            if (!m_settings.measures(sensor) || !m_views[sensor].sees[i])
                continue;
            const float z = measured(m_scene[i], sensor, int(i) % m_width, int(i) / m_width);
            if (!std::isnan(z))
                sum += z, ++count;
        }
        if (count > 0)
            frame.heights[i] = sum / float(count);
    }
    return frame;
}

void StructuredLightSensor::applyFilters(HeightFrame &map) const
{
    namespace Filters = StructuredLightFilters;
    Filters::replaceSpikes(map, float(m_settings.spikeThreshold));
    Filters::removeJumps(map, float(m_settings.heightThreshold));
    Filters::removeIsolated(map, m_settings.radius, m_settings.neighbours);
    Filters::fillHoles(map, m_settings.largestHole);
    if (m_settings.denoising)
        Filters::smooth(map);
    Filters::truncate(map, float(m_settings.lowest), float(m_settings.highest));
}

double StructuredLightSensor::plainLevel(const Point &point, int x, int y) const
{
    return m_settings.sensitivity * (double(point.reflectance) * RoomLevel + light(m_settings.lamps, point, x, y));
}

/// The picture of a sensor, where `brightness(x, y)` is that of the place on the plate which a pixel sees.
template <class Brightness>
QImage StructuredLightSensor::picture(int sensor, Brightness brightness) const
{
    QImage result(m_width, m_height, QImage::Format_Grayscale8);
    const int *source = m_views[sensor].source.data();
    for (int y = 0; y < m_height; ++y) {
        uchar *const pixels = result.scanLine(y);
        for (int column = 0; column < m_width; ++column)
            pixels[column] = uchar(std::clamp(brightness(*source++, y), 0.0, Brightest));
    }
    return result;
}

/// The image of a sensor, where `level(point, x, y)` is the brightness of a point before noise.
template <class Level>
QImage StructuredLightSensor::image(int sensor, Level level)
{
    return picture(sensor, [this, level](int x, int y) {
        const double bright = std::min(Brightest, level(m_scene[pixel(x, y)], x, y));
        return bright + m_settings.noise(bright) * double(noise());
    });
}

QImage StructuredLightSensor::output(int index, const HeightFrame &map)
{
    const int sensor = index % SensorCount;
    switch (index - sensor) {
    case Settings::Plain:
        return image(sensor, [this](const Point &point, int x, int y) { return plainLevel(point, x, y); });
    case Settings::Stripes:
        return image(sensor, [this, sensor](const Point &point, int x, int y) {
            const Stripes seen = stripes(point, sensor, x, y);
            return seen.brightness + seen.strength * std::cos(TwoPi * x * m_settings.binning / StripePeriod);
        });
    case Settings::ReliefFront:
        return relief(sensor, map, 1.0);
    default:
        return relief(sensor, map, -1.0);
    }
}

/// The measured surface, lit from the front (1) or from the back (-1); black where there is no data.
QImage StructuredLightSensor::relief(int sensor, const HeightFrame &map, double direction) const
{
    constexpr double Aside = 0.82, Above = 0.57;
    const auto slope = [&map](int x, int y, int dx, int dy) {
        const int right = std::min(map.width - 1, x + dx), front = std::min(map.height - 1, y + dy);
        const int left = std::max(0, x - dx), back = std::max(0, y - dy);
        const double rise = double(map.profile(front)[right]) - double(map.profile(back)[left]);
        return std::isnan(rise) ? 0.0 : rise / (map.pitchX * std::max(1, right - left + front - back));
    };
    return picture(sensor, [&](int x, int y) {
        const double slopeX = slope(x, y, 2, 0), slopeY = slope(x, y, 0, 2);
        const double facing = (Above - direction * Aside * slopeY) / steepness(slopeX, slopeY);
        return std::isnan(map.profile(y)[x]) ? 0.0 : Brightest * facing;
    });
}
