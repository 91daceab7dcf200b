// SPDX-License-Identifier: MIT
#pragma once

#include <vector>

#include <QImage>
#include <QMetaType>

/// What a device makes of a height z that it measured at x: (z cosine - x sine) scale + offset; mirrored, what lies at
/// x comes at -x.
struct HeightCorrection
{
    double sine = 0.0; ///< of the tilt that is corrected
    double cosine = 1.0;
    double scale = 1.0;
    double offset = 0.0; ///< mm
    bool mirrored = false;
};

/// Height profiles of a laser profiler, one below the other, or the depth map of a structured-light camera: a map of
/// heights over X (along a profile) and Y (one row for each profile). A frame may come in parts: it has its full size
/// from the beginning, `lines` tells how much of it has come, and `complete` is set in the last part.
struct HeightFrame
{
    int width = 0; ///< points of a profile
    int height = 0; ///< profiles of the frame
    int lines = 0; ///< profiles that have come
    bool complete = false;
    double firstX = 0.0; ///< mm, of the first point of each profile
    double pitchX = 1.0; ///< mm from one point to the next
    HeightCorrection applied; ///< to the newest profile
    std::vector<float> heights; ///< mm, row by row; NaN where there is no data
    QImage intensity; ///< brightness of the laser line, Grayscale8 of the frame's size; null without such data
    /// 2D images of a structured-light camera, Grayscale8, by show mode minus 1; null ones were not sent. Empty for
    /// other devices.
    std::vector<QImage> outputs;

    const float *profile(int line) const { return heights.data() + std::ptrdiff_t(line) * width; }
    /// The newest profile, as one height for each point; empty while none has come.
    std::vector<float> lastProfile() const
    {
        if (lines <= 0)
            return {};
        return std::vector<float>(profile(lines - 1), profile(lines - 1) + width);
    }
};

Q_DECLARE_METATYPE(HeightFrame)
