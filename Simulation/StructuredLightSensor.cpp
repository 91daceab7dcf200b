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

constexpr float nothing = std::numeric_limits<float>::quiet_NaN();
constexpr double twoPi = 6.283185307179586;
/// Sideways way of a point in a sensor's image, per height.
constexpr double parallax = 0.2;
constexpr double stripePeriod = 16.0; // columns
constexpr double projector = 128.0; // mean level of white paper under the stripes
constexpr double stripeContrast = 0.85;
constexpr double lampLevel = 280.0; // of white paper under a lamp of full power
constexpr double roomLevel = 6.0;
constexpr double mirrorLevel = 320.0; // of a polished surface that reflects the light into a sensor
constexpr double brightest = 255.0;

/// Surfaces over the whole plate, which is wider than the view; at the pitch of the sensor.
class Plate
{
public:
    static constexpr int margin = 40; ///< columns beyond the view, on each side

    static const Plate &instance()
    {
        static const Plate plate;
        return plate;
    }
    const Surface &at(int column, int row) const
    {
        const int place = std::clamp(column + margin, 0, width - 1);
        return surfaces[size_t(row) * width + size_t(place)];
    }

private:
    static constexpr int width = Settings::columns + 2 * margin;

    Plate() : surfaces(size_t(width) * Settings::rows)
    {
        auto surface = surfaces.begin();
        for (int row = 0; row < Settings::rows; ++row) {
            for (int column = -margin; column < Settings::columns + margin; ++column)
                *surface++ = StructuredLightScene::at((column + 0.5 - Settings::columns / 2.0) * Settings::pitch,
                                                      (row + 0.5 - Settings::rows / 2.0) * Settings::pitch);
        }
    }

    std::vector<Surface> surfaces;
};

/// 1 where a polished surface of that slope throws light from a direction into the sensors.
double mirror(double slopeX, double slopeY, double x, double y)
{
    constexpr double sharpness = 40.0;
    const double offX = slopeX + x, offY = slopeY + y;
    return std::exp(-sharpness * (offX * offX + offY * offY));
}

double steepness(double slopeX, double slopeY)
{
    return std::sqrt(1.0 + slopeX * slopeX + slopeY * slopeY);
}

} // namespace

StructuredLightSensor::StructuredLightSensor() : noiseTable(10007)
{
    std::minstd_rand random;
    std::normal_distribution<float> normal;
    std::generate(noiseTable.begin(), noiseTable.end(), [&] { return normal(random); });
}

HeightFrame StructuredLightSensor::shot(const StructuredLightSettings &wanted, double shift)
{
    settings = wanted;
    width = Settings::columns / settings.binning;
    height = Settings::rows / settings.binning;
    lookAt(shift);
    for (int sensor = 0; sensor < sensorCount; ++sensor)
        look(sensor);
    HeightFrame frame = depthMap();
    applyFilters(frame);
    frame.outputs.resize(Settings::outputCount);
    for (int i = 0; i < Settings::outputCount; ++i) {
        if (settings.outputs[size_t(i)])
            frame.outputs[size_t(i)] = output(i, frame);
    }
    return frame;
}

void StructuredLightSensor::lookAt(double shift)
{
    const Plate &plate = Plate::instance();
    const int moved = int(std::lround(shift / Settings::pitch));
    const auto slope = [](float rise) {
        constexpr float steepest = 2.5f; // walls are not seen from straight above
        return std::clamp(rise / float(2.0 * Settings::pitch), -steepest, steepest);
    };
    scene.resize(size_t(width) * size_t(height));
    auto point = scene.begin();
    for (int y = 0; y < height; ++y) {
        const int row = std::clamp(y * settings.binning + settings.binning / 2, 1, Settings::rows - 2);
        for (int x = 0; x < width; ++x) {
            const int column = x * settings.binning + settings.binning / 2 - moved;
            const Surface &here = plate.at(column, row);
            const float riseX = plate.at(column + 1, row).height - plate.at(column - 1, row).height;
            const float riseY = plate.at(column, row + 1).height - plate.at(column, row - 1).height;
            *point++ = {here.height, here.reflectance, here.gloss, slope(riseX), slope(riseY)};
        }
    }
}

void StructuredLightSensor::look(int sensor)
{
    View &view = views[sensor];
    view.sees.assign(scene.size(), 0);
    view.source.resize(scene.size());
    for (int y = 0; y < height; ++y)
        lookAlongRow(sensor, y);
}

/// Goes away from the sensor. What appears before the furthest place so far is hidden; between that and a point that
/// appears further, the sensor sees the wall below the point.
void StructuredLightSensor::lookAlongRow(int sensor, int y)
{
    const auto along = [=](int i) { return sensor == 0 ? i : width - 1 - i; };
    const double pixelsPerMm = parallax / (Settings::pitch * settings.binning);
    const int row = y * width;
    int filled = 0; // pixels
    double furthest = -1.0;
    for (int i = 0; i < width; ++i) {
        const double place = i + scene[size_t(row + along(i))].height * pixelsPerMm;
        if (place < furthest)
            continue;
        furthest = place;
        views[sensor].sees[size_t(row + along(i))] = 1;
        for (; filled < width && filled <= place; ++filled)
            views[sensor].source[size_t(row + along(filled))] = along(i);
    }
    for (; filled < width; ++filled)
        views[sensor].source[size_t(row + along(filled))] = along(width - 1);
}

double StructuredLightSensor::light(const std::vector<Settings::Lamp> &lamps, const Point &point, int x, int y) const
{
    constexpr double aside = 0.6, above = 0.8, falloff = 0.6;
    const double acrossX = 2.0 * x / width - 1.0, acrossY = 2.0 * y / height - 1.0;
    double sum = 0.0;
    for (const Settings::Lamp &lamp : lamps) {
        const double slope = lamp.x * double(point.slopeX) + lamp.y * double(point.slopeY);
        const double near = 1.0 + falloff * (lamp.x * acrossX + lamp.y * acrossY);
        const double facing = std::max(0.0, above - aside * slope) / steepness(point.slopeX, point.slopeY);
        sum += lamp.power * near * double(point.reflectance) * facing * lampLevel;
        if (point.gloss > 0.2f)
            sum += lamp.power * double(point.gloss) * mirrorLevel
                * mirror(point.slopeX, point.slopeY, lamp.x * 0.3, lamp.y * 0.3);
    }
    return sum;
}

StructuredLightSensor::Stripes StructuredLightSensor::stripes(const Point &point, int sensor, int x, int y) const
{
    const double towards = sensor == 0 ? -parallax / 2 : parallax / 2;
    double projected = double(point.reflectance) * projector / steepness(point.slopeX, point.slopeY);
    if (point.gloss > 0.2f)
        projected += double(point.gloss) * mirrorLevel * mirror(point.slopeX, point.slopeY, towards, 0.0);
    const double room = double(point.reflectance) * roomLevel + light(settings.steadyLamps, point, x, y);
    const double brightness = std::min(brightest, settings.sensitivity * (projected + room));
    const double strength = settings.sensitivity * projected * stripeContrast;
    return {brightness, std::min(strength, brightest - brightness)};
}

float StructuredLightSensor::measured(const Point &point, int sensor, int x, int y)
{
    constexpr double mmPerShare = 0.7;
    constexpr double wrongShare = 0.35;
    constexpr float rare = 3.2f; // deviations
    constexpr double wrongPeriod = 9.0; // mm
    const Stripes seen = stripes(point, sensor, x, y);
    const double deviation = settings.noise(seen.brightness);
    const double strength = seen.strength + deviation * double(noise());
    if (strength <= 0.0 || strength < settings.modulation || strength < settings.contrast * seen.brightness
        || seen.brightness < settings.lowBrightness || seen.brightness > settings.highBrightness)
        return nothing;
    const double error = deviation / strength * double(noise());
    const float chance = noise();
    const bool wrong = std::abs(error) > wrongShare || std::abs(chance) > rare;
    return point.height + float(mmPerShare * error + (wrong ? std::copysign(wrongPeriod, double(chance)) : 0.0));
}

HeightFrame StructuredLightSensor::depthMap()
{
    HeightFrame frame;
    frame.width = width;
    frame.height = frame.lines = height;
    frame.complete = true;
    frame.pitchX = Settings::pitch * settings.binning;
    frame.firstX = -frame.pitchX * (width - 1) / 2;
    frame.heights.assign(scene.size(), nothing);
    for (size_t i = 0; i < scene.size(); ++i) {
        float sum = 0.0f;
        int count = 0;
        for (int sensor = 0; sensor < sensorCount; ++sensor) {
            if (!settings.measures(sensor) || !views[sensor].sees[i])
                continue;
            const float z = measured(scene[i], sensor, int(i) % width, int(i) / width);
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
    Filters::replaceSpikes(map, float(settings.spikeThreshold));
    Filters::removeJumps(map, float(settings.heightThreshold));
    Filters::removeIsolated(map, settings.radius, settings.neighbours);
    Filters::fillHoles(map, settings.largestHole);
    if (settings.denoising)
        Filters::smooth(map);
    Filters::truncate(map, float(settings.lowest), float(settings.highest));
}

double StructuredLightSensor::plainLevel(const Point &point, int x, int y) const
{
    return settings.sensitivity * (double(point.reflectance) * roomLevel + light(settings.lamps, point, x, y));
}

/// The image of a sensor, where `level(point, x, y)` is the brightness of a point before noise.
template <class Level>
QImage StructuredLightSensor::image(int sensor, Level level)
{
    QImage result(width, height, QImage::Format_Grayscale8);
    const int *source = views[sensor].source.data();
    for (int y = 0; y < height; ++y) {
        uchar *const pixels = result.scanLine(y);
        for (int column = 0; column < width; ++column) {
            const int x = *source++;
            const double bright = std::min(brightest, level(scene[size_t(y * width + x)], x, y));
            const double noisy = bright + settings.noise(bright) * double(noise());
            pixels[column] = uchar(std::clamp(noisy, 0.0, brightest));
        }
    }
    return result;
}

QImage StructuredLightSensor::output(int index, const HeightFrame &map)
{
    const int sensor = index % sensorCount;
    switch (index - sensor) {
    case Settings::Plain:
        return image(sensor, [this](const Point &point, int x, int y) { return plainLevel(point, x, y); });
    case Settings::Stripes:
        return image(sensor, [this, sensor](const Point &point, int x, int y) {
            const Stripes seen = stripes(point, sensor, x, y);
            return seen.brightness + seen.strength * std::cos(twoPi * x * settings.binning / stripePeriod);
        });
    case Settings::ReliefFront:
        return relief(sensor, map, 1.0);
    default:
        return relief(sensor, map, -1.0);
    }
}

/// The measured surface, lit from the front (1) or from the back (-1); black where there is no data.
QImage StructuredLightSensor::relief(int sensor, const HeightFrame &map, double direction)
{
    constexpr double aside = 0.82, above = 0.57;
    const auto slope = [&map](int x, int y, int dx, int dy) {
        const int right = std::min(map.width - 1, x + dx), front = std::min(map.height - 1, y + dy);
        const int left = std::max(0, x - dx), back = std::max(0, y - dy);
        const double rise = double(map.profile(front)[right]) - double(map.profile(back)[left]);
        return std::isnan(rise) ? 0.0 : rise / (map.pitchX * std::max(1, right - left + front - back));
    };
    QImage result(width, height, QImage::Format_Grayscale8);
    const int *source = views[sensor].source.data();
    for (int y = 0; y < height; ++y) {
        uchar *const pixels = result.scanLine(y);
        for (int column = 0; column < width; ++column) {
            const int x = *source++;
            const double slopeX = slope(x, y, 2, 0), slopeY = slope(x, y, 0, 2);
            const double facing = (above - direction * aside * slopeY) / steepness(slopeX, slopeY);
            const bool known = !std::isnan(map.profile(y)[x]);
            pixels[column] = known ? uchar(brightest * std::max(0.0, facing)) : uchar(0);
        }
    }
    return result;
}
