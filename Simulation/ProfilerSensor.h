// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <vector>

#include <QImage>

#include "Simulation/ProfilerSettings.h"

/// The sensor of a simulated laser profiler: sees the laser line on the scene, and stray light, and makes profiles of
/// what it sees. Use one on one thread.
class ProfilerSensor
{
public:
    struct Profile
    {
        std::vector<float> heights; ///< mm; NaN where nothing is found
        std::vector<uchar> brightness;
    };

    ProfilerSensor();

    /// The profile at `y` mm along the belt, corrected, but not yet filtered.
    Profile profile(const ProfilerSettings &settings, double y);
    /// What the sensor sees there, Grayscale8. Masks are gray; what lies outside of the measure range is black.
    QImage image(const ProfilerSettings &settings, double y);

private:
    struct Peak
    {
        double row = 0.0;
        double brightness = 0.0; ///< at most 255
        double width = 0.0; ///< rows
    };
    struct Peaks
    {
        Peak peak[2];
        int count = 0;
    };

    Peaks peaks(const ProfilerSettings &settings, int column, double y);
    void addPeak(Peaks &found, double row, double light);
    /// The best peak that the settings let pass, or null.
    static const Peak *chosen(const ProfilerSettings &settings, int column, const Peaks &found);
    double noise() { return m_noiseTable[++m_nextNoise % m_noiseTable.size()]; }

    std::vector<float> m_noiseTable; ///< normal distribution with deviation 1
    size_t m_nextNoise = 0;
};
