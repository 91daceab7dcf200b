// SPDX-License-Identifier: MIT
#include "Viewer/HeightColours.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace {

constexpr int Levels = 256;
constexpr int Tallest = 8192; ///< rows of a picture
constexpr QRgb NoData = qRgb(46, 47, 49);

/// Evenly spaced colours; lightness grows evenly, too.
constexpr QRgb Stops[] = {
    qRgb(68, 1, 84),    qRgb(72, 40, 120),  qRgb(62, 74, 137),  qRgb(49, 104, 142), qRgb(38, 130, 142),
    qRgb(31, 158, 137), qRgb(53, 183, 121), qRgb(109, 205, 89), qRgb(180, 222, 44), qRgb(253, 231, 37),
};
constexpr int Spans = int(std::size(Stops)) - 1;

QRgb colourAt(double share)
{
    const int span = std::min(Spans - 1, int(share * Spans));
    const double part = share * Spans - span;
    const QRgb from = Stops[span], to = Stops[span + 1];
    const auto mix = [part](int one, int other) { return int(std::lround(one + (other - one) * part)); };
    return qRgb(mix(qRed(from), qRed(to)), mix(qGreen(from), qGreen(to)), mix(qBlue(from), qBlue(to)));
}

std::array<QRgb, Levels> makeTable()
{
    std::array<QRgb, Levels> table{};
    for (int level = 0; level < Levels; ++level)
        table[size_t(level)] = colourAt(double(level) / (Levels - 1));
    return table;
}

} // namespace

QSize HeightSampling::pictureSize(const HeightFrame &frame) const
{
    const double rows = frame.height * std::clamp(rowHeight, 0.0, HighestRow) / step;
    const int height = frame.height > 0 ? std::clamp(int(std::lround(rows)), 1, Tallest) : 0;
    return {(frame.width + step - 1) / step, height};
}

int HeightSampling::frameRow(const HeightFrame &frame, int pictureRow) const
{
    const int row = int(qint64(pictureRow) * frame.height / pictureSize(frame).height());
    return row / step * step;
}

QImage heightColours(const HeightFrame &frame, double zMin, double zMax, const HeightSampling &sampling)
{
    static const std::array<QRgb, Levels> Table = makeTable();
    constexpr float Top = Levels - 1;
    const auto lowest = float(zMin);
    const float scale = Top / std::max(1e-6f, float(zMax - zMin));
    QImage picture(sampling.pictureSize(frame), QImage::Format_RGB32);
    for (int y = 0; y < picture.height(); ++y) {
        const float *const heights = frame.profile(sampling.frameRow(frame, y));
        auto *const pixels = reinterpret_cast<QRgb *>(picture.scanLine(y));
        for (int x = 0; x < picture.width(); ++x) {
            const float z = heights[sampling.frameColumn(x)];
            pixels[x] = std::isnan(z) ? NoData : Table[size_t(std::clamp((z - lowest) * scale, 0.0f, Top))];
        }
    }
    return picture;
}

QImage intensityPicture(const HeightFrame &frame, const HeightSampling &sampling)
{
    if (frame.intensity.isNull())
        return {};
    QImage picture(sampling.pictureSize(frame), QImage::Format_Grayscale8);
    for (int y = 0; y < picture.height(); ++y) {
        const uchar *const levelsOfRow = frame.intensity.constScanLine(sampling.frameRow(frame, y));
        uchar *const pixels = picture.scanLine(y);
        for (int x = 0; x < picture.width(); ++x)
            pixels[x] = levelsOfRow[sampling.frameColumn(x)];
    }
    return picture;
}
