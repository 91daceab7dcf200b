// SPDX-License-Identifier: MIT
#include "Devices/FrameImage.h"

#include <algorithm>
#include <cstring>
#include <iterator>

#include <QtEndian>

namespace {

enum class Layout { Gray8, Gray16, Rgb8, Bgr8 };

/// One row stands for the codes `first` to `last`.
struct PixelFormat
{
    uint32_t first;
    uint32_t last;
    Layout layout;
    int bits; ///< significant bits of a sample
    bool isBayer; ///< the codes stand for the colour orders GR, RG, GB, BG
};

constexpr PixelFormat Formats[] = {
    {0x01080001, 0x01080001, Layout::Gray8, 8, false}, // Mono8
    {0x01080008, 0x0108000B, Layout::Gray8, 8, true}, // BayerGR8, RG8, GB8, BG8
    {0x01100003, 0x01100003, Layout::Gray16, 10, false}, // Mono10
    {0x01100005, 0x01100005, Layout::Gray16, 12, false}, // Mono12
    {0x01100007, 0x01100007, Layout::Gray16, 16, false}, // Mono16
    {0x01100025, 0x01100025, Layout::Gray16, 14, false}, // Mono14
    {0x0110000C, 0x0110000F, Layout::Gray16, 10, true}, // BayerGR10, RG10, GB10, BG10
    {0x01100010, 0x01100013, Layout::Gray16, 12, true}, // BayerGR12, RG12, GB12, BG12
    {0x0110002E, 0x01100031, Layout::Gray16, 16, true}, // BayerGR16, RG16, GB16, BG16
    {0x02180014, 0x02180014, Layout::Rgb8, 8, false}, // RGB8
    {0x02180015, 0x02180015, Layout::Bgr8, 8, false}, // BGR8
};

const PixelFormat *findFormat(uint32_t code)
{
    const auto covers = [code](const PixelFormat &row) { return row.first <= code && code <= row.last; };
    const auto row = std::find_if(std::begin(Formats), std::end(Formats), covers);
    return row == std::end(Formats) ? nullptr : row;
}

std::size_t bytesPerPixel(Layout layout)
{
    switch (layout) {
    case Layout::Gray8:
        return 1;
    case Layout::Gray16:
        return 2;
    case Layout::Rgb8:
    case Layout::Bgr8:
        return 3;
    }
    return 0;
}

QImage::Format imageFormat(Layout layout)
{
    return layout == Layout::Gray8 || layout == Layout::Gray16 ? QImage::Format_Grayscale8 : QImage::Format_RGB888;
}

/// The most significant 8 of `bits` bits, for little-endian samples.
void reduceLine(const uchar *samples, uchar *pixels, int count, int bits)
{
    for (int x = 0; x < count; ++x) {
        const int reduced = qFromLittleEndian<quint16>(samples + 2 * x) >> (bits - 8);
        pixels[x] = static_cast<uchar>(std::min(reduced, 255));
    }
}

/// One line of a Bayer frame: green, and red or blue in turn.
struct BayerLine
{
    int color; ///< the channel of the line besides green: 0 red, 2 blue
    int first; ///< column of the first pixel of that colour: 0 or 1
};

/// `phase`: the place in the colour orders GR, RG, GB, BG.
BayerLine bayerLine(uint32_t phase, int y)
{
    const int firstRedLine = phase >= 2 ? 1 : 0;
    const int firstRedColumn = phase == 0 || phase == 3 ? 1 : 0;
    const bool isRed = (y & 1) == firstRedLine;
    return isRed ? BayerLine{0, firstRedColumn} : BayerLine{2, 1 - firstRedColumn};
}

/// What a pixel does not measure is the mean of its neighbours that do.
void interpolateLine(const BayerLine &layout, const uchar *above, const uchar *line, const uchar *below, int width,
                     uchar *rgb)
{
    const auto mean4 = [](int a, int b, int c, int d) { return static_cast<uchar>((a + b + c + d + 2) / 4); };
    const auto mean2 = [](int a, int b) { return static_cast<uchar>((a + b + 1) / 2); };
    const int other = 2 - layout.color;
    for (int x = 0; x < width; ++x, rgb += 3) {
        const int left = x > 0 ? x - 1 : 1; // mirrored at the edges, which keeps the colour
        const int right = x < width - 1 ? x + 1 : width - 2;
        if ((x & 1) == layout.first) {
            rgb[layout.color] = line[x];
            rgb[1] = mean4(line[left], line[right], above[x], below[x]);
            rgb[other] = mean4(above[left], above[right], below[left], below[right]);
        } else {
            rgb[layout.color] = mean2(line[left], line[right]);
            rgb[1] = line[x];
            rgb[other] = mean2(above[x], below[x]);
        }
    }
}

/// The colours of a Bayer frame; one that is too small to have all colours stays gray.
QImage interpolated(const QImage &samples, uint32_t phase)
{
    const int last = samples.height() - 1;
    QImage image(samples.size(), QImage::Format_RGB888);
    if (samples.width() < 2 || last < 1 || image.isNull())
        return samples;
    for (int y = 0; y <= last; ++y) {
        const uchar *above = samples.constScanLine(y > 0 ? y - 1 : 1);
        const uchar *below = samples.constScanLine(y < last ? y + 1 : last - 1);
        interpolateLine(bayerLine(phase, y), above, samples.constScanLine(y), below, samples.width(),
                        image.scanLine(y));
    }
    return image;
}

} // namespace

QImage frameImage(uint32_t pixelFormat, int width, int height, const void *data, std::size_t size, std::size_t padding)
{
    const PixelFormat *format = findFormat(pixelFormat);
    if (!format || !data || width <= 0 || height <= 0)
        return {};
    const std::size_t lineBytes = static_cast<std::size_t>(width) * bytesPerPixel(format->layout);
    if (padding > size || (size + padding) / (lineBytes + padding) < static_cast<std::size_t>(height))
        return {};
    QImage image(width, height, imageFormat(format->layout));
    if (image.isNull())
        return {};
    for (int y = 0; y < height; ++y) {
        const uchar *line = static_cast<const uchar *>(data) + static_cast<std::size_t>(y) * (lineBytes + padding);
        if (format->layout == Layout::Gray16)
            reduceLine(line, image.scanLine(y), width, format->bits);
        else
            std::memcpy(image.scanLine(y), line, lineBytes);
    }
    if (format->isBayer)
        return interpolated(image, pixelFormat - format->first);
    return format->layout == Layout::Bgr8 ? image.rgbSwapped() : image;
}
