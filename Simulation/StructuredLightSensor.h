// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <vector>

#include "Devices/HeightFrame.h"
#include "Simulation/StructuredLightSettings.h"

/// The projector and the two sensors of a simulated structured-light camera. The projector shines straight down, the
/// sensors look from the left and from the right: tall points appear moved to the other side, and hide what lies
/// behind them. Use one on one thread.
class StructuredLightSensor
{
public:
    StructuredLightSensor();

    /// The filtered depth map, with the images that are wanted, of the plate moved by `shift` mm along X.
    HeightFrame shot(const StructuredLightSettings &settings, double shift);

private:
    static constexpr int SensorCount = 2;

    struct Point
    {
        float height, reflectance, gloss;
        float slopeX, slopeY;
    };
    /// What a sensor sees, in points of the scene.
    struct View
    {
        std::vector<char> sees; ///< by point
        std::vector<int> source; ///< the column of the scene by pixel; in the same row
    };
    /// The projected stripes on a point.
    struct Stripes
    {
        double brightness; ///< mean, in levels
        double strength; ///< amplitude
    };

    void lookAt(double shift);
    void look(int sensor);
    void lookAlongRow(int sensor, int y);
    Stripes stripes(const Point &point, int sensor, int x, int y) const;
    /// NaN when the sensor measures nothing there.
    float measured(const Point &point, int sensor, int x, int y);
    HeightFrame depthMap();
    void applyFilters(HeightFrame &map) const;
    size_t pixel(int x, int y) const { return size_t(y) * size_t(m_width) + size_t(x); }
    double plainLevel(const Point &point, int x, int y) const;
    template <class Level>
    QImage image(int sensor, Level level);
    template <class Brightness>
    QImage picture(int sensor, Brightness brightness) const;
    QImage output(int index, const HeightFrame &map);
    QImage relief(int sensor, const HeightFrame &map, double direction) const;
    double light(const std::vector<StructuredLightSettings::Lamp> &lamps, const Point &point, int x, int y) const;
    float noise() { return m_noiseTable[m_nextNoise = m_nextNoise + 1 < m_noiseTable.size() ? m_nextNoise + 1 : 0]; }

    StructuredLightSettings m_settings; ///< of the running shot
    int m_width = 0;
    int m_height = 0;
    std::vector<Point> m_scene;
    View m_views[SensorCount];
    std::vector<float> m_noiseTable; ///< normal distribution with deviation 1
    size_t m_nextNoise = 0;
};
