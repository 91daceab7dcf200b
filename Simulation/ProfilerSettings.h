// SPDX-License-Identifier: MIT
#pragma once

#include <array>

#include <QRect>

#include "Simulation/RegisterMemory.h"

/// Everything that decides what one profile of a simulated laser profiler looks like.
struct ProfilerSettings
{
    /// As in the feature ExtractionMode.
    enum Extraction { Maximum, Near, Far };

    static constexpr int Columns = 2048; ///< of the sensor: points of a profile
    static constexpr int SensorRows = 1024;
    static constexpr double PitchX = 0.02; ///< mm from column to column
    static constexpr double FirstX = -PitchX * (Columns - 1) / 2;
    static constexpr double HighestZ = 9.0; ///< mm, in the top row of the sensor
    static constexpr double LowestZ = -9.0;

    int firstRow = 0; ///< of the measure range
    int rows = SensorRows;
    std::array<QRect, 3> masks; ///< in sensor pixels; null when off

    double exposure = 100.0; ///< microseconds
    double laser = 0.6; ///< share of its power; 0 when it is dark
    int dynamicRange = 0; ///< levels of compression
    int threshold = 40;
    int narrowest = 2; ///< peak widths in rows
    int widest = 40;
    int extraction = Maximum;
    bool intensity = false; ///< the frames hold the brightness too

    int longestGap = 0; ///< points that are filled
    int medianX = 0; ///< windows of the filters; 0 is off
    int averageX = 0;
    int medianY = 0;
    int averageY = 0;

    bool reverseX = false;
    double offsetX = 0.0; ///< mm
    double offsetZ = 0.0;
    double scaleZ = 1.0;
    double sine = 0.0; ///< of the tilt that is corrected
    double cosine = 1.0;

    double mountingSlope = 0.0; ///< rise along X that the tilted mounting makes
    double mountingScale = 1.0; ///< factor that it makes of heights
    bool strayLight = true;

    static ProfilerSettings fromRegisters(const RegisterMemory &memory);
    /// Brightness of the laser line on a surface that reflects that much (1: a usual one); 255 is the end of the scale,
    /// brighter lines get wider.
    double lineBrightness(double reflectance) const;
};

/// What triggers and rates in the registers mean.
namespace ProfilerRates {

enum TriggerKind { FrameStart = 1, LineStart = 2 }; ///< places in TriggerSelector
enum TriggerSource { Software, Line1, Line2, Timer, Encoder };

/// Lines per second that exposure and measure range allow.
double highestLineRate(const RegisterMemory &memory);
/// Lines per second that are taken by time or by the encoder; 0 when nothing of the two takes lines.
double lineRate(const RegisterMemory &memory);
/// The trigger of that kind is on and listens to that source.
bool listens(const RegisterMemory &memory, TriggerKind kind, TriggerSource source);

} // namespace ProfilerRates
