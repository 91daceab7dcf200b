// SPDX-License-Identifier: MIT
#include <QtTest>

#include <cmath>
#include <limits>
#include <random>

#include "Host/HeightAnalysis.h"
#include "Viewer/HeightColours.h"

namespace {

constexpr float Nothing = std::numeric_limits<float>::quiet_NaN();

HeightFrame frameOf(int width, std::vector<float> heights)
{
    HeightFrame frame;
    frame.width = width;
    frame.height = frame.lines = int(heights.size()) / width;
    frame.heights = std::move(heights);
    return frame;
}

} // namespace

class tst_HeightAnalysis : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void lineIsFoundAmongOutliers()
    {
        struct Row
        {
            const char *name;
            double slope;
            int strays, step, gaps; ///< points at 7 mm, on a stair that is 2 mm higher, without data
            bool found;
        };
        const Row rows[] = {
            {"tilted", 0.02, 0, 0, 0, true},
            {"stray light", -0.02, 300, 0, 0, true},
            {"a part, stray light and gaps", -0.1, 200, 300, 200, true},
            {"ten points left", 0.0, 0, 0, 990, false},
            {"nothing left", 0.0, 0, 0, 1000, false},
        };
        constexpr double First = -20.0, Pitch = 0.04, Level = -5.0;
        for (const auto &row : rows) {
            std::minstd_rand random;
            std::normal_distribution<double> noise(0.0, 0.005);
            std::vector<float> profile;
            for (int i = 0; i < 1000; ++i) {
                const double surface = i >= 600 && i < 600 + row.step ? Level + 2.0 : Level;
                const double z = i < row.strays ? 7.0 : surface + row.slope * (First + Pitch * i);
                profile.push_back(i >= 1000 - row.gaps ? Nothing : float(z + noise(random)));
            }
            const auto line = HeightAnalysis::mainLine(profile, First, Pitch);
            QVERIFY2(line.has_value() == row.found, row.name);
            if (!line)
                continue;
            QVERIFY2(std::abs(line->slope - row.slope) < 2e-4, row.name);
            QVERIFY2(std::abs(line->meanHeight - Level) < std::abs(row.slope) * 20.0 + 0.02, row.name);
        }
    }

    void rangeLeavesOutTheExtremes()
    {
        std::vector<float> heights;
        for (int i = 0; i <= 1000; ++i)
            heights.push_back(float(i) / 100.0f);
        heights[0] = -100.0f, heights[1000] = 100.0f, heights[500] = Nothing;
        HeightFrame frame = frameOf(1, heights);
        const auto range = HeightAnalysis::usualRange(frame);
        QVERIFY(range);
        QVERIFY2(std::abs(range->lowest - 0.1) < 0.02, qPrintable(QString::number(range->lowest)));
        QVERIFY2(std::abs(range->highest - 9.9) < 0.02, qPrintable(QString::number(range->highest)));
        frame.lines = 101; // the others have not come yet
        QVERIFY(HeightAnalysis::usualRange(frame)->highest < 1.01);
        frame.lines = 0;
        QVERIFY(!HeightAnalysis::usualRange(frame));
    }

    void coloursAreOrdered()
    {
        const HeightFrame frame = frameOf(8, {-30, -2, -1, 0, 1, 2, 30, Nothing});
        const QImage picture = heightColours(frame, -2, 2);
        const auto lightness = [&](int x) { return QColor(picture.pixel(x, 0)).toHsl().lightnessF(); };
        const auto luminance = [&](int x) { return qGray(picture.pixel(x, 0)); };
        QCOMPARE(picture.pixel(0, 0), picture.pixel(1, 0));
        QCOMPARE(picture.pixel(5, 0), picture.pixel(6, 0));
        for (int x = 2; x <= 5; ++x)
            QVERIFY2(luminance(x) > luminance(x - 1) + 10, qPrintable(QString::number(x)));
        QVERIFY(QColor(picture.pixel(7, 0)).hslSaturation() < 20); // dark gray
        QVERIFY(lightness(7) < 0.3);
        QCOMPARE(heightColours(frame, 2, 2).size(), picture.size()); // no range at all
    }

    void pictureFollowsTheSampling()
    {
        // last: the point of the frame in the bottom right pixel
        const std::tuple<const char *, HeightSampling, QSize, QPoint> rows[] = {
            {"each point", {1, 1.0}, {10, 6}, {9, 5}},          {"every fourth", {4, 1.0}, {3, 2}, {8, 0}},
            {"wide rows", {1, 2.5}, {10, 15}, {9, 5}},          {"narrow rows", {1, 0.5}, {10, 3}, {9, 4}},
            {"flatter than a row", {128, 0.0}, {1, 1}, {0, 0}},
        };
        for (const auto &[name, sampling, size, last] : rows) {
            HeightFrame frame = frameOf(10, std::vector<float>(60, 0.0f));
            frame.heights[size_t(last.y()) * 10 + size_t(last.x())] = 9.0f;
            frame.intensity = QImage(10, 6, QImage::Format_Grayscale8);
            frame.intensity.fill(0);
            frame.intensity.scanLine(last.y())[last.x()] = 255;
            const QImage colours = heightColours(frame, -9, 9, sampling);
            const QImage gray = intensityPicture(frame, sampling);
            QVERIFY2(colours.size() == size && gray.size() == size, name);
            const QPoint corner = gray.rect().bottomRight();
            QVERIFY2(qGray(gray.pixel(corner)) == 255, name);
            QVERIFY2(colours.pixel(corner) == heightColours(frameOf(1, {9.0f}), -9, 9).pixel(0, 0), name);
        }
        QVERIFY(intensityPicture(frameOf(1, {9.0f})).isNull());
    }
};

QTEST_GUILESS_MAIN(tst_HeightAnalysis)
#include "tst_HeightAnalysis.moc"
