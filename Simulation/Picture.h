// SPDX-License-Identifier: MIT
#pragma once

#include <array>
#include <vector>

#include <QImage>
#include <QRect>
#include <QSize>

#include "Simulation/RegisterMemory.h"

/// Everything that decides what one image of a simulated camera looks like.
struct PictureSettings
{
    /// As in the feature TestPattern.
    enum Pattern {
        Scene,
        Black,
        White,
        HorizontalRamp,
        VerticalRamp,
        HorizontalRampMoving,
        DiagonalRampMoving,
        Checkerboard,
        ColorBar
    };

    QSize sensor; ///< sensor pixels
    QSize reduction{1, 1}; ///< sensor pixels per image pixel
    QSize reducedSensor; ///< largest image
    QRect region; ///< the image on the reduced sensor, after the flips
    bool reverseX = false;
    bool reverseY = false;
    bool color = false;
    int pattern = Scene;
    double brightness = 0.5; ///< mean of the scene; 1 is white
    double contrast = 1.0;
    double offset = 0.0; ///< added at the end, in gray levels of 256
    double gamma = 1.0;
    std::array<double, 3> balance{1.0, 1.0, 1.0}; ///< red, green, blue
    int phase = 0; ///< the picture moves with it; 256 steps make a round

    /// What the registers ask for. `timestamp` in nanoseconds makes the light swing.
    static PictureSettings fromRegisters(const RegisterMemory &memory, qint64 timestamp);
};

/// Draws the images of a simulated camera: what the sensor sees is an index per pixel, kept until the pattern changes;
/// an image is that, cut and looked up in a table of tones. Use one on one thread.
class Picture
{
public:
    /// Grayscale8, or RGB888 with `settings.color`.
    QImage draw(const PictureSettings &settings);
    /// Does in advance what costs the first image of a pattern much time.
    void prepare(const PictureSettings &settings);

private:
    QSize m_size;
    int m_pattern = -1;
    std::vector<uchar> m_indices; ///< one per sensor pixel, row by row
};
