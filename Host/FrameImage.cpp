// SPDX-License-Identifier: MIT
#include "Host/FrameImage.h"

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
};

constexpr PixelFormat formats[] = {
    {0x01080001, 0x01080001, Layout::Gray8, 8}, // Mono8
    {0x01080008, 0x0108000B, Layout::Gray8, 8}, // BayerGR8, RG8, GB8, BG8
    {0x01100003, 0x01100003, Layout::Gray16, 10}, // Mono10
    {0x01100005, 0x01100005, Layout::Gray16, 12}, // Mono12
    {0x01100007, 0x01100007, Layout::Gray16, 16}, // Mono16
    {0x01100025, 0x01100025, Layout::Gray16, 14}, // Mono14
    {0x0110000C, 0x0110000F, Layout::Gray16, 10}, // BayerGR10, RG10, GB10, BG10
    {0x01100010, 0x01100013, Layout::Gray16, 12}, // BayerGR12, RG12, GB12, BG12
    {0x0110002E, 0x01100031, Layout::Gray16, 16}, // BayerGR16, RG16, GB16, BG16
    {0x02180014, 0x02180014, Layout::Rgb8, 8}, // RGB8
    {0x02180015, 0x02180015, Layout::Bgr8, 8}, // BGR8
};

const PixelFormat *findFormat(uint32_t code)
{
    const auto covers = [code](const PixelFormat &row) { return row.first <= code && code <= row.last; };
    const auto row = std::find_if(std::begin(formats), std::end(formats), covers);
    return row == std::end(formats) ? nullptr : row;
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

} // namespace

QImage frameImage(uint32_t pixelFormat, int width, int height, const void *data, std::size_t size)
{
    const PixelFormat *format = findFormat(pixelFormat);
    if (!format || !data || width <= 0 || height <= 0)
        return {};
    const std::size_t lineBytes = static_cast<std::size_t>(width) * bytesPerPixel(format->layout);
    if (size / lineBytes < static_cast<std::size_t>(height))
        return {};
    QImage image(width, height, imageFormat(format->layout));
    if (image.isNull())
        return {};
    for (int y = 0; y < height; ++y) {
        const uchar *line = static_cast<const uchar *>(data) + static_cast<std::size_t>(y) * lineBytes;
        if (format->layout == Layout::Gray16)
            reduceLine(line, image.scanLine(y), width, format->bits);
        else
            std::memcpy(image.scanLine(y), line, lineBytes);
    }
    return format->layout == Layout::Bgr8 ? image.rgbSwapped() : image;
}
