// SPDX-License-Identifier: MIT
#pragma once

#include <array>
#include <vector>

#include "Simulation/RegisterMemory.h"

/// Everything that decides what a shot of a simulated structured-light camera looks like.
struct StructuredLightSettings
{
    /// As in the feature SensorMethod.
    enum Method { BothSensors, LeftSensor, RightSensor };
    /// As in the feature AcquisitionMode.
    enum Acquisition { SingleFrame = 0, Continuous = 2, SoftwareTrigger = 3 };
    /// What is sent beside the depth map, by show mode minus 1: each for the left and the right sensor.
    enum Output { Plain = 0, Stripes = 2, ReliefFront = 4, ReliefBack = 6, outputCount = 8 };

    /// Lamps of one side; `x` and `y` point to that side.
    struct Lamp
    {
        double x;
        double y;
        double power;
    };

    static constexpr int Columns = 640;
    static constexpr int Rows = 480;
    static constexpr double Pitch = 0.2; ///< mm from column to column and from row to row

    int binning = 1; ///< pixels that are one, in each direction
    int method = BothSensors;
    std::array<bool, outputCount> outputs{};

    double sensitivity = 1.0; ///< of exposure time and gain; 1 is usual
    double gain = 1.0;
    std::vector<Lamp> lamps; ///< that light the plain images
    std::vector<Lamp> steadyLamps; ///< that shine on the stripes, too

    double contrast = 0.0; ///< least share of the brightness
    double modulation = 0.0; ///< levels
    double lowBrightness = 0.0;
    double highBrightness = 255.0;
    double spikeThreshold = 0.0; ///< mm; 0 is off, as in all of the following
    double heightThreshold = 0.0;
    int radius = 0; ///< pixels
    int neighbours = 0;
    int largestHole = 0; ///< points
    bool denoising = false;
    double highest = 1e6; ///< mm
    double lowest = -1e6;

    static StructuredLightSettings fromRegisters(const RegisterMemory &memory);
    bool measures(int sensor) const { return method == BothSensors || method == LeftSensor + sensor; }
    /// Deviation of a pixel's brightness, in levels.
    double noise(double brightness) const;
    /// Shots per second.
    static double rate(const RegisterMemory &memory);
};
