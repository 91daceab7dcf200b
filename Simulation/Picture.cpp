// SPDX-License-Identifier: MIT
#include "Simulation/Picture.h"

#include <algorithm>
#include <cmath>

#include "Simulation/ImageModel.h"

namespace {

using Tones = std::array<uchar, 256>;

uchar indexOf(int pattern, int x, int y, QSize sensor)
{
    switch (pattern) {
    case PictureSettings::Black:
        return 0;
    case PictureSettings::White:
        return 255;
    case PictureSettings::HorizontalRamp:
    case PictureSettings::HorizontalRampMoving:
        return uchar(x);
    case PictureSettings::VerticalRamp:
        return uchar(y);
    case PictureSettings::DiagonalRampMoving:
        return uchar(x + y);
    case PictureSettings::Checkerboard:
        return (x / 64 + y / 64) % 2 ? 255 : 0;
    case PictureSettings::ColorBar:
        return uchar(x * 8 / sensor.width());
    default: { // rings off the middle and a grid show flips and where the region lies
        const qint64 dx = x - sensor.width() * 2 / 5;
        const qint64 dy = y - sensor.height() * 2 / 5;
        const bool grid = x % 256 < 3 || y % 256 < 3;
        return grid ? 0 : uchar((dx * dx + dy * dy) * 1024 / (qint64(sensor.width()) * sensor.width()) & 0xFF);
    }
    }
}

bool moves(int pattern)
{
    return pattern == PictureSettings::Scene || pattern == PictureSettings::HorizontalRampMoving
        || pattern == PictureSettings::DiagonalRampMoving;
}

/// Light of the scene at an index: up and down once a round, without a jump. 0 to 2, mean 1.
double sceneLight(int index)
{
    return (index < 128 ? index : 255 - index) / 63.75;
}

uchar developed(const PictureSettings &settings, double light, double balance)
{
    const double linear = std::min(1.0, light * settings.brightness * balance);
    const double toned = (std::pow(linear, settings.gamma) - 0.5) * settings.contrast + 0.5;
    return uchar(std::max(0.0, std::min(255.0, toned * 255.0 + settings.offset)));
}

/// The tone of every index in one color channel (0 red, 1 green, 2 blue).
Tones tones(const PictureSettings &settings, int channel)
{
    Tones table;
    const int phase = moves(settings.pattern) ? settings.phase : 0;
    for (int index = 0; index < 256; ++index) {
        const int moved = (index + phase) & 0xFF;
        if (settings.pattern == PictureSettings::Scene)
            table[size_t(index)] = developed(settings, sceneLight(moved), settings.balance[size_t(channel)]);
        else if (settings.pattern == PictureSettings::ColorBar)
            table[size_t(index)] = index >> channel & 1 ? 0 : 255;
        else
            table[size_t(index)] = uchar(moved);
    }
    return table;
}

/// Sensor positions along one axis of the image.
std::vector<int> positions(int offset, int count, int reduction, int largest, bool reversed, int limit)
{
    std::vector<int> result;
    result.reserve(size_t(count));
    for (int i = 0; i < count; ++i) {
        const int place = reversed ? largest - 1 - offset - i : offset + i;
        result.push_back(std::max(0, std::min(limit - 1, place * reduction)));
    }
    return result;
}

void drawGrayRow(uchar *out, const uchar *row, const std::vector<int> &columns, const Tones &tones)
{
    const uchar *tone = tones.data();
    const int *end = columns.data() + columns.size();
    for (const int *column = columns.data(); column != end; ++column)
        *out++ = tone[row[*column]];
}

void drawColorRow(uchar *out, const uchar *row, const std::vector<int> &columns, const std::array<Tones, 3> &tones)
{
    const uchar *red = tones[0].data();
    const uchar *green = tones[1].data();
    const uchar *blue = tones[2].data();
    const int *end = columns.data() + columns.size();
    for (const int *column = columns.data(); column != end; ++column) {
        const uchar index = row[*column];
        *out++ = red[index];
        *out++ = green[index];
        *out++ = blue[index];
    }
}

} // namespace

PictureSettings PictureSettings::fromRegisters(const RegisterMemory &memory, qint64 timestamp)
{
    constexpr qint64 FirstColorFormat = 0x02000000;
    const qint64 format = memory.integer("PixelFormat");
    PictureSettings settings;
    settings.sensor = QSize(int(memory.integer("SensorWidth")), int(memory.integer("SensorHeight")));
    settings.reduction = ImageModel::reduction(memory);
    settings.reducedSensor = ImageModel::reducedSensor(memory);
    settings.region = ImageModel::region(memory);
    settings.reverseX = memory.integer("ReverseX") == 1;
    settings.reverseY = memory.integer("ReverseY") == 1;
    settings.color = format >= FirstColorFormat || format == 0x01080009 || format == 0x01100011;
    settings.pattern = int(memory.integer("TestPattern", int(memory.integer("TestPatternGeneratorSelector"))));
    settings.brightness = ImageModel::brightness(memory, timestamp) * double(1 << memory.integer("DigitalShift"));
    settings.contrast = memory.number("Contrast") / 100.0;
    settings.offset = memory.number("Brightness") + memory.number("BlackLevel");
    settings.gamma = memory.integer("GammaEnable") == 1 ? memory.number("Gamma") : 1.0;
    constexpr std::array<double, 3> Scene{1.4, 1.0, 1.7}; // ratios that make the scene gray
    for (int channel = 0; settings.color && channel < 3; ++channel)
        settings.balance[size_t(channel)] = memory.number("BalanceRatio", channel) / Scene[size_t(channel)];
    settings.phase = int(timestamp / 20000000 & 0xFF);
    return settings;
}

void Picture::prepare(const PictureSettings &settings)
{
    if (settings.sensor == m_size && settings.pattern == m_pattern)
        return;
    m_size = settings.sensor;
    m_pattern = settings.pattern;
    m_indices.resize(size_t(m_size.width()) * size_t(m_size.height()));
    auto index = m_indices.begin();
    for (int y = 0; y < m_size.height(); ++y) {
        for (int x = 0; x < m_size.width(); ++x)
            *index++ = indexOf(m_pattern, x, y, m_size);
    }
}

QImage Picture::draw(const PictureSettings &settings)
{
    prepare(settings);
    const QRect &region = settings.region;
    const std::vector<int> columns = positions(region.x(), region.width(), settings.reduction.width(),
                                               settings.reducedSensor.width(), settings.reverseX, m_size.width());
    const std::vector<int> rows = positions(region.y(), region.height(), settings.reduction.height(),
                                            settings.reducedSensor.height(), settings.reverseY, m_size.height());
    const std::array<Tones, 3> table{tones(settings, 0), tones(settings, 1), tones(settings, 2)};
    QImage image(region.size(), settings.color ? QImage::Format_RGB888 : QImage::Format_Grayscale8);
    for (int y = 0; y < image.height(); ++y) {
        const uchar *row = m_indices.data() + size_t(rows[size_t(y)]) * size_t(m_size.width());
        if (settings.color)
            drawColorRow(image.scanLine(y), row, columns, table);
        else
            drawGrayRow(image.scanLine(y), row, columns, table[1]);
    }
    return image;
}
