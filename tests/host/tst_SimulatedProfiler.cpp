// SPDX-License-Identifier: MIT
#include <cmath>
#include <functional>
#include <limits>

#include <QSignalSpy>
#include <QtTest>

#include "Host/simulation/Firmware.h"
#include "Host/simulation/ProfilerFilters.h"
#include "Host/simulation/ProfilerScene.h"
#include "Host/simulation/ProfilerSensor.h"
#include "host/OpenDevice.h"

using Heights = std::vector<float>;

namespace {

constexpr auto profiler = "SIM-PROFILER-01";
constexpr float nothing = std::numeric_limits<float>::quiet_NaN();
constexpr double belt = 0.0; ///< a place along Y where there is no part
constexpr double part = 30.0; ///< one where the part has its dark patch

/// Features and texts, applied one after the other.
using Settings = QList<std::pair<const char *, const char *>>;

void setAll(const OpenDevice &device, const Settings &settings)
{
    for (const auto &[name, text] : settings)
        device.set(name, text);
}

ProfilerSettings settingsOf(const OpenDevice &device)
{
    return device->inside().inspect(&ProfilerSettings::fromRegisters);
}

/// What a profile looks like as a whole: points, wrong points near the sensor, and the line through all of them.
struct Shape
{
    explicit Shape(const Heights &heights)
    {
        double sumX = 0, sumXX = 0, sumXZ = 0, sumZ = 0;
        for (size_t i = 0; i < heights.size(); ++i) {
            if (std::isnan(heights[i]))
                continue;
            const double x = ProfilerSettings::firstX + ProfilerSettings::pitchX * double(i);
            ++points;
            stray += heights[i] > 6.0f;
            sumX += x;
            sumXX += x * x;
            sumXZ += x * double(heights[i]);
            sumZ += double(heights[i]);
        }
        mean = sumZ / points;
        slope = (points * sumXZ - sumX * sumZ) / (points * sumXX - sumX * sumX);
    }

    int points = 0;
    int stray = 0;
    double mean = 0.0;
    double slope = 0.0;
};

Shape shapeOf(const OpenDevice &device, double y)
{
    return Shape(ProfilerSensor().profile(settingsOf(device), y).heights);
}

/// Collects the parts of frames.
struct Frames
{
    explicit Frames(const OpenDevice &device)
    {
        QObject::connect(device.operator->(), &Device::heightReady, &context, [this](const HeightFrame &part) {
            lines << part.lines;
            if (part.complete)
                complete.push_back(part);
        });
        QString error;
        if (!device->startAcquisition(&error))
            qFatal("%s", qPrintable(error));
    }

    QObject context;
    QList<int> lines;
    std::vector<HeightFrame> complete;
};

} // namespace

Q_DECLARE_METATYPE(Settings)
Q_DECLARE_METATYPE(Heights)
using Expectation = std::function<bool(const Shape &before, const Shape &after)>;
Q_DECLARE_METATYPE(Expectation)
using Filter = std::function<void(Heights &)>;
Q_DECLARE_METATYPE(Filter)

class tst_SimulatedProfiler : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void takesEveryTextOfThePages_data();
    void takesEveryTextOfThePages();
    void triggersShareModeAndSource();
    void measureRangeStaysOnTheSensor();
    void linesFollowTimeOrEncoder_data();
    void linesFollowTimeOrEncoder();
    void featuresChangeTheProfile_data();
    void featuresChangeTheProfile();
    void correctionsUndoTheMounting();
    void filters_data();
    void filters();
    void framesComeInBatches();
    void framesWaitForTheirTrigger();
    void framesStartWithThePart();
    void sendsBrightnessOrTheSensorImage();
    void locksAndRefuses();
    void laserAdjustsItself();
};

void tst_SimulatedProfiler::takesEveryTextOfThePages_data()
{
    QTest::addColumn<QByteArrayList>("texts");
    const std::pair<const char *, QByteArrayList> rows[] = {
        {"EncoderOutputMode", {"PositionUp", "PositionDown", "DirectionUp", "DirectionDown", "Motion"}},
        {"EncoderMode", {"OneCycleOnePulse", "OneCycleTwoPulse", "OneCycleFourPulse"}},
        {"AcquisitionLineRateEnable", {"Off", "On"}},
        {"BatchNumber", {"100", "400", "800", "1"}},
        {"DepthDataType", {"Uint32_t", "Uint16_t"}},
        {"CenterImageY", {"On", "Off"}},
        {"ImageMask", {"1", "0"}},
        {"SensingMode", {"LinearSensing", "HDRLevel1", "HDRLevel2", "HDRLevel3"}},
        {"LaserAdjustMode", {"Auto", "Manual"}},
        {"ExtractionMode", {"Near", "Far", "Maximum"}},
        {"ContinuousMode", {"ShortFrame", "LongFrame"}},
        {"MidFilterWinLen", {"Window3", "Window9", "Off"}},
        {"UserSetDefault", {"Default"}},
        {"UserSetSelector", {"UserSet1", "UserSet4"}},
        {"LaserSwitch", {"0", "1"}},
        {"LaserControlMode", {"AcqTrigger", "AlwaysOn"}},
        {"SinData", {"-1.000000", "0.500000"}},
        {"CosData", {"0.866025"}},
    };
    for (const auto &[name, texts] : rows)
        QTest::newRow(name) << texts;
}

void tst_SimulatedProfiler::takesEveryTextOfThePages()
{
    QFETCH(QByteArrayList, texts);
    const OpenDevice device(profiler);
    for (const QByteArray &text : texts)
        QCOMPARE(device.refusal(QTest::currentDataTag(), text.constData()), QString());
}

void tst_SimulatedProfiler::triggersShareModeAndSource()
{
    const OpenDevice device(profiler);
    const GenApi::CEnumerationPtr selector = device.enumeration("TriggerSelector");
    selector->SetIntValue(1);
    setAll(device, {{"TriggerMode", "On"}, {"TriggerSource", "Software"}});
    selector->SetIntValue(2);
    QCOMPARE(device.text("TriggerMode"), QStringLiteral("Off"));
    device.enumeration("TriggerSource")->SetIntValue(4);
    QCOMPARE(device.text("TriggerSource"), QStringLiteral("ShaftEncoderModuleOut"));
    QVERIFY(!device.refusal("TriggerSource", "Timer").isEmpty()); // for frames only
    selector->SetIntValue(1);
    QCOMPARE(device.text("TriggerMode"), QStringLiteral("On"));
    QCOMPARE(device.text("TriggerSource"), QStringLiteral("Software"));
    QVERIFY(!device.refusal("TriggerSource", "ShaftEncoderModuleOut").isEmpty());
}

void tst_SimulatedProfiler::measureRangeStaysOnTheSensor()
{
    const OpenDevice device(profiler);
    setAll(device, {{"Height", "300"}, {"OffsetY", "700"}});
    QVERIFY(!device.refusal("OffsetY", "725").isEmpty());
    device.set("Height", "424");
    QCOMPARE(device.integer("OffsetY")->GetValue(), int64_t(600));
    device.set("CenterImageY", "On");
    QCOMPARE(device.integer("OffsetY")->GetValue(), int64_t(300));
    QCOMPARE(device.access("OffsetY"), GenApi::RO);
    device.set("CenterImageY", "Off");
    const int64_t largest = device.integer("Height")->GetMax(); // whoever restores the full height asks before
    setAll(device, {{"OffsetY", "0"}, {"Height", QByteArray::number(qint64(largest)).constData()}});
    QCOMPARE(device.integer("Height")->GetValue(), device.integer("HeightMax")->GetValue());
}

void tst_SimulatedProfiler::linesFollowTimeOrEncoder_data()
{
    QTest::addColumn<Settings>("settings");
    QTest::addColumn<double>("rate");
    const Settings encoder{{"TriggerSelector", "LineStart"}, {"TriggerMode", "On"}}; // 4000 cycles a second
    QTest::newRow("time") << Settings{{"AcquisitionLineRate", "250"}} << 250.0;
    QTest::newRow("exposure limits time") << Settings{{"ExposureTime", "1816.4"}} << 500.0;
    QTest::newRow("as fast as possible") << Settings{{"AcquisitionLineRateEnable", "Off"}, {"Height", "800"}} << 4000.0;
    QTest::newRow("encoder") << encoder << 1000.0;
    QTest::newRow("divider") << encoder + Settings{{"EncoderDivider", "10"}} << 400.0;
    QTest::newRow("four pulses") << encoder + Settings{{"EncoderMode", "OneCycleFourPulse"}, {"EncoderDivider", "16"}}
                                 << 1000.0;
    QTest::newRow("wrong direction") << encoder + Settings{{"EncoderOutputMode", "DirectionDown"}} << 0.0;
    QTest::newRow("back") << encoder + Settings{{"EncoderOutputMode", "PositionDown"}, {"TestPartSpeed", "-20"}}
                          << 500.0;
    QTest::newRow("any direction") << encoder + Settings{{"EncoderOutputMode", "Motion"}} << 1000.0;
    QTest::newRow("light barrier") << encoder + Settings{{"TriggerSource", "Line1"}} << 0.0;
}

void tst_SimulatedProfiler::linesFollowTimeOrEncoder()
{
    QFETCH(Settings, settings);
    QFETCH(double, rate);
    const OpenDevice device(profiler);
    setAll(device, settings);
    QVERIFY(std::abs(device->inside().inspect(&ProfilerRates::lineRate) - rate) < rate * 0.001 + 1e-9);
}

void tst_SimulatedProfiler::featuresChangeTheProfile_data()
{
    QTest::addColumn<double>("y");
    QTest::addColumn<Settings>("settings");
    QTest::addColumn<Expectation>("expected");
    const auto row = [](const char *name, double y, const Settings &settings, const Expectation &expected) {
        QTest::newRow(name) << y << settings << expected;
    };
    const auto onlyLine = [](const Shape &before, const Shape &after) {
        return before.stray > 200 && after.stray == 0 && after.points == ProfilerSettings::columns;
    };
    const auto fewer = [](const Shape &before, const Shape &after) { return after.points < before.points - 50; };
    const auto more = [](const Shape &before, const Shape &after) { return after.points > before.points + 15; };
    const auto moreStray = [](const Shape &before, const Shape &after) { return after.stray > before.stray + 20; };
    const Settings mask{{"ImageMaskerSelector", "ImageMasker2"},
                        {"ImageMaskOffsetX", "1370"},
                        {"ImageMaskOffsetY", "50"},
                        {"ImageMaskWidth", "260"},
                        {"ImageMaskHeight", "70"},
                        {"ImageMask", "1"}};
    row("mask", belt, mask, onlyLine);
    row("far", belt, {{"ExtractionMode", "Far"}}, onlyLine);
    row("near", part, {{"ExtractionMode", "Near"}}, moreStray);
    row("lamp off", belt, {{"TestStrayLight", "0"}}, onlyLine);
    row("short exposure", belt, {{"ExposureTime", "45"}}, fewer);
    row("sensitive", part, {{"TestStrayLight", "0"}, {"Threshold", "20"}}, more);
    row("high dynamics", part, {{"SensingMode", "HDRLevel3"}, {"ExtractionMode", "Far"}}, more);
    row("dim laser", belt, {{"Lasersetting", "25"}}, fewer);
    row("narrow peaks only", part, {{"LaserWidthUpper", "8"}}, fewer);
    row("wide peaks only", belt, {{"LaserWidthLower", "6"}}, fewer);
    row("upper rows", belt, {{"Height", "400"}},
        [](const Shape &, const Shape &after) { return after.stray == after.points && after.points > 200; });
    row("laser off", belt, {{"LaserSwitch", "0"}},
        [](const Shape &, const Shape &after) { return after.stray == after.points && after.points > 200; });
    row("offset", belt, {{"ZCoorOffset", "1.5"}},
        [](const Shape &before, const Shape &after) { return std::abs(after.mean - before.mean - 1.5) < 0.05; });
    row("mirror", belt, {{"ReverseX", "1"}, {"TestStrayLight", "0"}},
        [](const Shape &, const Shape &after) { return std::abs(after.slope + std::tan(1.2 * M_PI / 180.0)) < 2e-4; });
    row("shift", belt, {{"XCoorOffset", "-4"}, {"TestStrayLight", "0"}},
        [](const Shape &, const Shape &after) { return after.points == ProfilerSettings::columns - 200; });
}

void tst_SimulatedProfiler::featuresChangeTheProfile()
{
    QFETCH(double, y);
    QFETCH(Settings, settings);
    QFETCH(Expectation, expected);
    const OpenDevice device(profiler);
    const Shape before = shapeOf(device, y);
    setAll(device, settings);
    QVERIFY(expected(before, shapeOf(device, y)));
}

void tst_SimulatedProfiler::correctionsUndoTheMounting()
{
    const OpenDevice device(profiler);
    setAll(device, {{"TestStrayLight", "0"}, {"TestMountingTilt", "-2.5"}, {"TestMountingScale", "0.9"}});
    const Shape raw = shapeOf(device, belt);
    const double tilt = std::atan(raw.slope);
    QVERIFY(std::abs(tilt * 180.0 / M_PI + 2.5) < 0.02);
    device.number("SinData")->SetValue(std::sin(tilt));
    device.number("CosData")->SetValue(std::cos(tilt));
    device.number("ZCoorScale")->SetValue(device.number("ZReferenceHeight")->GetValue() / shapeOf(device, belt).mean);
    const Shape levelled = shapeOf(device, belt);
    QVERIFY(std::abs(levelled.slope) < 3e-4);
    QVERIFY(std::abs(levelled.mean - ProfilerScene::beltHeight) < 0.005);
}

void tst_SimulatedProfiler::filters_data()
{
    using namespace ProfilerFilters;
    QTest::addColumn<Heights>("before");
    QTest::addColumn<Filter>("filter");
    QTest::addColumn<Heights>("after");
    const auto over = [](OverTime::Kind kind, int window) {
        return [=](Heights &heights) {
            OverTime filter(kind);
            for (float earlier : {90.0f, 1.0f, 2.0f})
                filter.apply(*std::make_unique<Heights>(heights.size(), earlier), window);
            filter.apply(heights, window);
        };
    };
    QTest::newRow("short gap") << Heights{nothing, 1, nothing, nothing, 4, nothing}
                               << Filter([](Heights &heights) { fillGaps(heights, 2); })
                               << Heights{nothing, 1, 2, 3, 4, nothing};
    QTest::newRow("long gap") << Heights{1, nothing, nothing, 4}
                              << Filter([](Heights &heights) { fillGaps(heights, 1); })
                              << Heights{1, nothing, nothing, 4};
    QTest::newRow("median") << Heights{1, 1, 9, 1, nothing, 3, 3}
                            << Filter([](Heights &heights) { median(heights, 3); })
                            << Heights{1, 1, 1, 9, nothing, 3, 3};
    QTest::newRow("average") << Heights{0, 3, 6, nothing, 5} << Filter([](Heights &heights) { average(heights, 3); })
                             << Heights{1.5, 3, 4.5, nothing, 5};
    QTest::newRow("median over time") << Heights{50, nothing} << Filter(over(OverTime::Kind::Median, 3))
                                      << Heights{2, nothing};
    QTest::newRow("average over time") << Heights{6, nothing} << Filter(over(OverTime::Kind::Average, 3))
                                       << Heights{3, nothing};
}

void tst_SimulatedProfiler::filters()
{
    QFETCH(Heights, before);
    QFETCH(Filter, filter);
    QFETCH(Heights, after);
    filter(before);
    QCOMPARE(before.size(), after.size());
    for (size_t i = 0; i < after.size(); ++i)
        QVERIFY2(before[i] == after[i] || (std::isnan(before[i]) && std::isnan(after[i])),
                 qPrintable(QString::number(i)));
}

void tst_SimulatedProfiler::framesComeInBatches()
{
    const OpenDevice device(profiler);
    setAll(device,
          {{"AcquisitionLineCount", "100"},
           {"BatchNumber", "40"},
           {"AcquisitionLineRate", "400"},
           {"AcquisitionMode", "SingleFrame"}});
    const Frames frames(device);
    QTRY_VERIFY(!frames.complete.empty());
    QCOMPARE(frames.lines, (QList<int>{40, 80, 100}));
    const HeightFrame &frame = frames.complete.front();
    QCOMPARE(frame.heights.size(), size_t(2048 * 100));
    QVERIFY(frame.intensity.isNull());
    QVERIFY(Shape(frame.lastProfile()).points > 1000);
    QTRY_VERIFY(!device->isAcquiring());
    setAll(device, {{"ContinuousMode", "ShortFrame"}, {"AcquisitionMode", "Continuous"}});
    const Frames cut(device);
    QTRY_VERIFY(cut.complete.size() >= 2);
    QCOMPARE(cut.complete[1].height, 40);
    QCOMPARE(cut.complete[1].heights.size(), size_t(2048 * 40));
}

void tst_SimulatedProfiler::framesWaitForTheirTrigger()
{
    const OpenDevice device(profiler);
    setAll(device, {{"TriggerMode", "On"}, {"TriggerSource", "Software"}, {"AcquisitionLineCount", "20"}});
    const Frames frames(device);
    QTest::qWait(100);
    QVERIFY(frames.lines.isEmpty());
    device.command("TriggerSoftware")->Execute();
    QTRY_COMPARE(frames.complete.size(), size_t(1));
    QTest::qWait(100);
    QCOMPARE(frames.complete.size(), size_t(1));
    device->stopAcquisition();
    setAll(device, {{"AcquisitionLineCount", "4000"}, {"EndFrameMode", "NextTrigger"}, {"TestPartSpeed", "10"}});
    const Frames cut(device);
    device.command("TriggerSoftware")->Execute();
    QTRY_VERIFY(!cut.lines.isEmpty());
    device.command("TriggerSoftware")->Execute();
    QTRY_COMPARE(cut.complete.size(), size_t(1));
    QVERIFY(cut.complete.front().height < 4000);
}

void tst_SimulatedProfiler::framesStartWithThePart()
{
    const OpenDevice device(profiler);
    setAll(device,
          {{"TestStrayLight", "0"},
           {"TestPartSpeed", "100"},
           {"AcquisitionLineCount", "200"},
           {"TriggerMode", "On"},
           {"TriggerSource", "Line1"}}); // 0.1 mm from line to line
    const Frames frames(device);
    QTRY_VERIFY(frames.complete.size() >= 2);
    for (const HeightFrame &frame : frames.complete) {
        int line = 0;
        while (line < frame.height && !(frame.profile(line)[1024] > -2.0f))
            ++line;
        QVERIFY2(std::abs(line - 30) <= 1, qPrintable(QString::number(line)));
    }
}

void tst_SimulatedProfiler::sendsBrightnessOrTheSensorImage()
{
    const OpenDevice device(profiler);
    setAll(device, {{"DepthDataType", "Uint32_t"}, {"AcquisitionLineCount", "30"}});
    const Frames frames(device);
    QTRY_VERIFY(!frames.complete.empty());
    QCOMPARE(frames.complete.front().intensity.size(), QSize(2048, 30));
    QVERIFY(frames.complete.front().intensity.constScanLine(29)[1024] > 30);
    const OpenDevice other(profiler);
    other.set("ImageOutputMode", "SensorImage");
    QSignalSpy images(other.operator->(), &Device::frameReady);
    const Frames none(other);
    QTRY_VERIFY(images.count() >= 2);
    QVERIFY(none.lines.isEmpty());
    const QImage image = images.last().first().value<QImage>();
    QCOMPARE(image.size(), QSize(2048, 1024));
    QVERIFY(image.copy(ProfilerScene::strayLight) != image.copy(ProfilerScene::strayLight.translated(-300, 0)));
}

void tst_SimulatedProfiler::locksAndRefuses()
{
    const OpenDevice device(profiler);
    QVERIFY(device.refusal("AcquisitionLineRate", "9000").contains(QLatin1String("are too many")));
    device.set("UserSetSelector", "UserSet4");
    setAll(device, {{"ExposureTime", "77.0"}, {"ImageMaskerSelector", "ImageMasker1"}, {"ImageMask", "1"}});
    device.command("UserSetSave")->Execute();
    setAll(device, {{"ExposureTime", "88.0"}, {"ImageMask", "0"}});
    const Frames running(device);
    for (const char *name : {"Height", "OffsetY", "DepthDataType", "AcquisitionLineCount"})
        QCOMPARE(device.access(name), GenApi::RO);
    QCOMPARE(device.access("UserSetLoad"), GenApi::NA);
    QCOMPARE(device.access("ImageMask"), GenApi::RW);
    device->stopAcquisition();
    device.command("UserSetLoad")->Execute();
    QCOMPARE(device.number("ExposureTime")->GetValue(), 77.0);
    QVERIFY(device.boolean("ImageMask")->GetValue());
}

void tst_SimulatedProfiler::laserAdjustsItself()
{
    const OpenDevice device(profiler);
    setAll(device, {{"ExposureTime", "50.0"}, {"LaserAdjustMode", "Auto"}});
    QCOMPARE(device.access("Lasersetting"), GenApi::RO);
    const auto brightness = [&device] { return settingsOf(device).lineBrightness(1.0); };
    QVERIFY(brightness() < 100.0);
    QTRY_VERIFY(brightness() >= 120.0);
    device.set("LaserControlMode", "AcqTrigger");
    QVERIFY(!device.boolean("LaserActive")->GetValue());
    QCOMPARE(settingsOf(device).laser, 0.0);
    const Frames running(device);
    QVERIFY(device.boolean("LaserActive")->GetValue());
}

QTEST_GUILESS_MAIN(tst_SimulatedProfiler)
#include "tst_SimulatedProfiler.moc"
