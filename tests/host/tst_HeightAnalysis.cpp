// SPDX-License-Identifier: MIT
#include <QElapsedTimer>
#include <QTest>

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
    void lineIsFoundAmongOutliers_data();
    void lineIsFoundAmongOutliers();
    void rangeLeavesOutTheExtremes();
    void coloursAreOrdered();
    void pictureFollowsTheSampling_data();
    void pictureFollowsTheSampling();
    void largeFramesAreQuick();
};

void tst_HeightAnalysis::lineIsFoundAmongOutliers_data()
{
    QTest::addColumn<double>("slope");
    QTest::addColumn<int>("strays"); // points at 7 mm
    QTest::addColumn<int>("step"); // points on a stair that is 2 mm higher
    QTest::addColumn<int>("gaps"); // points without data
    QTest::addColumn<bool>("found");
    QTest::newRow("flat") << 0.0 << 0 << 0 << 0 << true;
    QTest::newRow("tilted") << 0.02 << 0 << 0 << 0 << true;
    QTest::newRow("stray light") << -0.02 << 300 << 0 << 0 << true;
    QTest::newRow("a part, stray light and gaps") << 0.1 << 200 << 300 << 200 << true;
    QTest::newRow("ten points left") << 0.0 << 0 << 0 << 990 << false;
    QTest::newRow("nothing left") << 0.0 << 0 << 0 << 1000 << false;
}

void tst_HeightAnalysis::lineIsFoundAmongOutliers()
{
    QFETCH(double, slope);
    QFETCH(int, strays);
    QFETCH(int, step);
    QFETCH(int, gaps);
    constexpr double First = -20.0, Pitch = 0.04, Level = -5.0;
    std::minstd_rand random;
    std::normal_distribution<double> noise(0.0, 0.005);
    std::vector<float> profile;
    for (int i = 0; i < 1000; ++i) {
        const double surface = i >= 600 && i < 600 + step ? Level + 2.0 : Level;
        const double z = i < strays ? 7.0 : surface + slope * (First + Pitch * i);
        profile.push_back(i >= 1000 - gaps ? Nothing : float(z + noise(random)));
    }
    const auto line = HeightAnalysis::mainLine(profile, First, Pitch);
    QTEST(line.has_value(), "found");
    if (!line)
        return;
    QVERIFY2(std::abs(line->slope - slope) < 2e-4, qPrintable(QString::number(line->slope)));
    const double lowest = Level - std::abs(slope) * 20.0 - 0.02, highest = Level + std::abs(slope) * 20.0 + 0.02;
    QVERIFY2(line->meanHeight > lowest && line->meanHeight < highest, qPrintable(QString::number(line->meanHeight)));
}

void tst_HeightAnalysis::rangeLeavesOutTheExtremes()
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

void tst_HeightAnalysis::coloursAreOrdered()
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

void tst_HeightAnalysis::pictureFollowsTheSampling_data()
{
    QTest::addColumn<int>("step");
    QTest::addColumn<double>("rowHeight");
    QTest::addColumn<QSize>("size");
    QTest::addColumn<QPoint>("last"); // the point of the frame in the bottom right pixel
    QTest::newRow("each point") << 1 << 1.0 << QSize(10, 6) << QPoint(9, 5);
    QTest::newRow("every fourth") << 4 << 1.0 << QSize(3, 2) << QPoint(8, 0);
    QTest::newRow("wide rows") << 1 << 2.5 << QSize(10, 15) << QPoint(9, 5);
    QTest::newRow("narrow rows") << 1 << 0.5 << QSize(10, 3) << QPoint(9, 4);
    QTest::newRow("both") << 2 << 2.0 << QSize(5, 6) << QPoint(8, 4);
    QTest::newRow("flatter than a row") << 128 << 0.0 << QSize(1, 1) << QPoint(0, 0);
}

void tst_HeightAnalysis::pictureFollowsTheSampling()
{
    QFETCH(int, step);
    QFETCH(double, rowHeight);
    QFETCH(QPoint, last);
    HeightFrame frame = frameOf(10, std::vector<float>(60, 0.0f));
    frame.heights[size_t(last.y() * 10 + last.x())] = 9.0f;
    frame.intensity = QImage(10, 6, QImage::Format_Grayscale8);
    frame.intensity.fill(0);
    frame.intensity.scanLine(last.y())[last.x()] = 255;
    const HeightSampling sampling{step, rowHeight};
    const QImage colours = heightColours(frame, -9, 9, sampling), gray = intensityPicture(frame, sampling);
    QTEST(colours.size(), "size");
    QTEST(gray.size(), "size");
    const QPoint corner = gray.rect().bottomRight();
    QCOMPARE(qGray(gray.pixel(corner)), 255);
    QCOMPARE(colours.pixel(corner), heightColours(frameOf(1, {9.0f}), -9, 9).pixel(0, 0));
    QVERIFY(intensityPicture(frameOf(1, {9.0f})).isNull());
}

void tst_HeightAnalysis::largeFramesAreQuick()
{
    std::vector<float> heights(2048 * 1000);
    for (size_t i = 0; i < heights.size(); ++i)
        heights[i] = i % 50 == 0 ? Nothing : float(i % 1800) / 100.0f - 9.0f;
    const HeightFrame frame = frameOf(2048, std::move(heights));
    qint64 best = std::numeric_limits<qint64>::max();
    for (int i = 0; i < 5; ++i) {
        QElapsedTimer timer;
        timer.start();
        QCOMPARE(heightColours(frame, -9, 9).width(), 2048);
        best = std::min(best, timer.nsecsElapsed() / 1000);
    }
    qInfo("2048 x 1000 points: %lld us", best);
#ifdef NDEBUG
    QVERIFY(best < 20000);
#endif
}

QTEST_GUILESS_MAIN(tst_HeightAnalysis)
#include "tst_HeightAnalysis.moc"
