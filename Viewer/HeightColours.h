// SPDX-License-Identifier: MIT
#pragma once

#include <QImage>
#include <QPoint>
#include <QSize>

#include "Devices/HeightFrame.h"

// Height maps as pictures. Pure functions, any thread.

/// How the points of a frame become pixels.
struct HeightSampling
{
    static constexpr double HighestRow = 32.0; ///< what is beyond is limited

    int step = 1; ///< every so many rows and columns are shown
    double rowHeight = 1.0; ///< distance of the rows over that of the columns

    QSize pictureSize(const HeightFrame &frame) const;
    /// The row of the frame that a row of the picture shows.
    int frameRow(const HeightFrame &frame, int pictureRow) const;
    int frameColumn(int pictureColumn) const { return pictureColumn * step; }
};

/// From dark blue at `zMin` mm and below, over green, to bright yellow at `zMax` and above; dark gray without data.
QImage heightColours(const HeightFrame &frame, double zMin, double zMax, const HeightSampling &sampling = {});
/// Null for a frame without intensity.
QImage intensityPicture(const HeightFrame &frame, const HeightSampling &sampling = {});
