// SPDX-License-Identifier: MIT
#include "tests/gentl/Pixels.h"

#include <algorithm>
#include <cstring>

namespace TestProducer {

namespace {

/// Writes one row of the picture.
using RowWriter = void (*)(char *to, const QImage &from, int y);

void plainRow(char *to, const QImage &from, int y)
{
    std::memcpy(to, from.constScanLine(y), size_t(from.width()) * size_t(from.depth()) / 8);
}

template <int Bits>
void wideRow(char *to, const QImage &from, int y)
{
    for (int x = 0; x < from.width(); ++x) {
        const auto level = quint16(from.constScanLine(y)[x] << (Bits - 8));
        std::memcpy(to + 2 * x, &level, sizeof level);
    }
}

/// Two levels of 12 bits in three bytes.
void packedRow(char *to, const QImage &from, int y)
{
    const uchar *level = from.constScanLine(y);
    for (int x = 0; x + 1 < from.width(); x += 2) {
        const unsigned both = unsigned(level[x]) << 4 | unsigned(level[x + 1]) << 16;
        std::memcpy(to + x * 3 / 2, &both, 3);
    }
}

uchar bayerLevel(const QImage &from, int x, int y)
{
    return from.constScanLine(y)[3 * x + (x & 1) + (y & 1)]; // RG above GB
}

void bayerRow(char *to, const QImage &from, int y)
{
    for (int x = 0; x < from.width(); ++x)
        to[x] = char(bayerLevel(from, x, y));
}

void wideBayerRow(char *to, const QImage &from, int y)
{
    for (int x = 0; x < from.width(); ++x) {
        const auto level = quint16(bayerLevel(from, x, y) << 4);
        std::memcpy(to + 2 * x, &level, sizeof level);
    }
}

void bgrRow(char *to, const QImage &from, int y)
{
    const uchar *row = from.constScanLine(y);
    for (int x = 0; x < 3 * from.width(); x += 3)
        std::reverse_copy(row + x, row + x + 3, to + x);
}

void yuvRow(char *to, const QImage &from, int y)
{
    const uchar *rgb = from.constScanLine(y);
    for (int x = 0; x < from.width(); ++x, rgb += 3) {
        const double light = 0.299 * rgb[0] + 0.587 * rgb[1] + 0.114 * rgb[2];
        const double colour = x % 2 == 0 ? 0.564 * (rgb[2] - light) : 0.713 * (rgb[0] - light);
        *to++ = char(uchar(light));
        *to++ = char(uchar(std::clamp(colour + 128.0, 0.0, 255.0)));
    }
}

struct Format
{
    std::uint64_t code;
    RowWriter writeRow;
};

constexpr Format Formats[] = {
    {Mono8, plainRow},       {0x01100003, wideRow<10>}, {0x01100005, wideRow<12>},
    {0x010C0047, packedRow}, {0x01080009, bayerRow},    {0x01100011, wideBayerRow},
    {0x02180014, plainRow},  {0x02180015, bgrRow},      {0x02100032, yuvRow},
};

} // namespace

QByteArray pixels(const QImage &picture, std::uint64_t format)
{
    const auto bits = qint64(format >> 16 & 0xFF);
    const qint64 stride = picture.width() * bits / 8;
    QByteArray data(int(stride * picture.height()), '\0');
    const auto known = std::find_if(std::begin(Formats), std::end(Formats),
                                    [format](const Format &entry) { return entry.code == format; });
    for (int y = 0; known != std::end(Formats) && y < picture.height(); ++y)
        known->writeRow(data.data() + y * stride, picture, y);
    return data;
}

} // namespace TestProducer
