// SPDX-License-Identifier: MIT
#include <cmath>
#include <limits>

#include <QtTest>

#include "Simulation/Firmware.h"
#include "Simulation/ProfilerFilters.h"
#include "Simulation/ProfilerScene.h"
#include "Simulation/ProfilerSensor.h"
#include "host/OpenDevice.h"

using Heights = std::vector<float>;

namespace {

constexpr auto Profiler = "SIM-PROFILER-01";
constexpr float Nothing = std::numeric_limits<float>::quiet_NaN();
constexpr double Belt = 0.0, Part = 30.0; ///< places along Y: without a part, and at its dark patch

ProfilerSettings settingsOf(const OpenDevice &device)
{
    return device->inside().inspect(&ProfilerSettings::fromRegisters);
}

/// What a profile looks like as a whole: points, wrong points near the sensor, mean height and slope.
struct Shape
{
    explicit Shape(const Heights &heights)
    {
        double moment = 0.0, square = 0.0; // of a profile whose points lie evenly on both sides of the middle
        double x = ProfilerSettings::FirstX;
        for (const float z : heights) {
            if (!std::isnan(z))
                ++points, stray += z > 6.0f, mean += double(z), moment += x * double(z), square += x * x;
            x += ProfilerSettings::PitchX;
        }
        mean /= points, slope = moment / square;
    }
    int points = 0, stray = 0;
    double mean = 0.0, slope = 0.0;
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
        device.start();
    }

    QObject context;
    QList<int> lines;
    std::vector<HeightFrame> complete;
};

} // namespace

class tst_SimulatedProfiler : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void settingsDependOnEachOther()
    {
        const QByteArray rows[] = {
            // triggers share mode and source
            "TriggerSelector=1 TriggerMode=On TriggerSource=Software TriggerSelector=2 TriggerMode==Off "
            "TriggerSource=4 TriggerSource==ShaftEncoderModuleOut "
            "TriggerSource!=Timer " // for frames only
            "TriggerSelector=1 TriggerMode==On TriggerSource==Software",
            // the measure range stays on the sensor
            "Height=300 OffsetY=600 OffsetY!=725 Height!=425 Height=424 OffsetY==600 CenterImageY=On OffsetY==300 "
            "OffsetY:RO Height=1024 Height=524 OffsetY==250 CenterImageY=Off OffsetY=0 Height=1024",
        };
        for (const QByteArray &row : rows)
            QCOMPARE(OpenDevice(Profiler).failureOf(row), QByteArray());
    }

    void linesFollowTimeOrEncoder()
    {
        const QByteArray encoder = "TriggerSelector=LineStart TriggerMode=On "; // 4000 cycles a second
        const std::pair<QByteArray, double> rows[] = {
            {"AcquisitionLineRate=250", 250.0},
            {"ExposureTime=1816.4", 500.0}, // as high as possible
            {"AcquisitionLineRateEnable=Off Height=800", 4000.0},
            {encoder + "EncoderMode=OneCycleFourPulse EncoderDivider=16", 1000.0},
            {encoder + "EncoderOutputMode=DirectionDown", 0.0},
            {encoder + "EncoderOutputMode=PositionDown TestPartSpeed=-20", 500.0},
            {encoder + "TriggerSource=Line1", 0.0},
            {encoder + "EncoderOutputMode=Motion TestPartSpeed=-20", 500.0}};
        for (const auto &[settings, rate] : rows) {
            const OpenDevice device(Profiler);
            device.setAll(settings);
            const double found = device->inside().inspect(&ProfilerRates::lineRate);
            QVERIFY2(std::abs(found - rate) < 0.5, (settings + " makes " + QByteArray::number(found)).constData());
        }
    }

    void featuresChangeTheProfile()
    {
        using S = const Shape &;
        const auto clean = [](S before, S after) { return before.stray > 200 && !after.stray && after.points == 2048; };
        const auto onlyStray = [](S, S after) { return after.stray == after.points && after.points > 200; };
        const auto fewer = [](S before, S after) { return after.points < before.points - 50; };
        const auto more = [](S before, S after) { return after.points > before.points + 15; };
        const std::tuple<double, const char *, bool (*)(S before, S after)> rows[] = {
            {Belt,
             "ImageMaskerSelector=ImageMasker2 ImageMask=1 ImageMaskOffsetX=1370 ImageMaskWidth=260 "
             "ImageMaskHeight=120",
             clean},
            {Belt, "ExtractionMode=Far", clean},
            {Part, "ExtractionMode=Near", [](S before, S after) { return after.stray > before.stray + 20; }},
            {Part, "ExtractionMode=Far Threshold=20", more},
            {Part, "ExtractionMode=Far SensingMode=HDRLevel3", more},
            {Belt, "ExposureTime=45", fewer},
            {Part, "LaserWidthUpper=8", fewer},
            {Belt, "LaserWidthLower=6", fewer},
            {Belt, "Height=400", onlyStray},
            {Belt, "LaserSwitch=0", onlyStray},
            {Belt, "ZCoorOffset=1.5",
             [](S before, S after) { return std::abs(after.mean - before.mean - 1.5) < 0.05; }},
            {Belt, "ExtractionMode=Far ReverseX=1", [](S, S after) { return std::abs(after.slope + 0.02095) < 2e-4; }},
            {Belt, "ExtractionMode=Far XCoorOffset=-4", [](S, S after) { return after.points == 2048 - 200; }},
        };
        for (const auto &[y, settings, holds] : rows) {
            const OpenDevice device(Profiler);
            const Shape before = shapeOf(device, y);
            device.setAll(settings);
            QVERIFY2(holds(before, shapeOf(device, y)), settings);
        }
    }

    void filters()
    {
        Heights gaps{Nothing, 1, Nothing, Nothing, 4, Nothing, 9};
        ProfilerFilters::fillGaps(gaps, 1);
        QVERIFY(std::isnan(gaps[0]) && std::isnan(gaps[2]) && gaps[5] == 6.5f);
        Heights steps{1, 1, 9, 1, 3, Nothing, 3};
        ProfilerFilters::median(steps, 3);
        QVERIFY(steps[2] == 1.0f && steps[3] == 3.0f && std::isnan(steps[5]));
        ProfilerFilters::average(steps, 3);
        QVERIFY(steps[2] == float(5.0 / 3.0) && steps[6] == 3.0f);
        ProfilerFilters::OverTime middle(ProfilerFilters::OverTime::Kind::Median);
        for (const auto &[now, filtered] : {std::pair{7.0f, 7.0f}, {1.0f, 7.0f}, {2.0f, 2.0f}, {50.0f, 2.0f}}) {
            Heights line{now};
            middle.apply(line, 3);
            QCOMPARE(line[0], filtered);
        }
    }

    void framesComeInBatches()
    {
        const OpenDevice device(Profiler);
        device.setAll("AcquisitionLineCount=50 BatchNumber=20 AcquisitionLineRate=100 AcquisitionMode=SingleFrame");
        const Frames frames(device);
        QTRY_VERIFY(!frames.complete.empty());
        QCOMPARE(frames.lines, (QList<int>{20, 40, 50}));
        QCOMPARE(frames.complete[0].heights.size(), size_t(2048 * 50));
        QVERIFY(frames.complete[0].intensity.isNull());
        QVERIFY(Shape(frames.complete[0].lastProfile()).points > 1000);
        QTRY_VERIFY(!device->isAcquiring());
        device.setAll("ContinuousMode=ShortFrame DepthDataType=Uint32_t");
        const Frames shortFrames(device);
        QTRY_VERIFY(!shortFrames.complete.empty());
        QCOMPARE(shortFrames.complete[0].heights.size(), size_t(2048 * 20));
        QCOMPARE(shortFrames.complete[0].intensity.size(), QSize(2048, 20));
        QVERIFY(shortFrames.complete[0].intensity.constScanLine(19)[1024] > 30);
    }

    void framesWaitForTheirTrigger()
    {
        const OpenDevice device(Profiler);
        device.setAll("TriggerMode=On TriggerSource=Software AcquisitionLineCount=4000 EndFrameMode=NextTrigger");
        const Frames frames(device);
        QTest::qWait(300);
        QVERIFY(frames.lines.isEmpty());
        device.command("TriggerSoftware")->Execute();
        QTRY_VERIFY(!frames.lines.isEmpty());
        device.command("TriggerSoftware")->Execute();
        QTRY_COMPARE(frames.complete.size(), size_t(1));
        QVERIFY(frames.complete[0].height < 4000);
    }

    void framesStartWithThePart()
    {
        const OpenDevice device(Profiler); // 0.09 mm from line to line, 3 mm from the light barrier to the part
        device.setAll("TestStrayLight=0 TestPartSpeed=90 AcquisitionLineCount=200 TriggerMode=On TriggerSource=Line1");
        const Frames frames(device);
        QTRY_VERIFY(frames.complete.size() >= 2);
        for (const HeightFrame &frame : frames.complete) {
            int line = 0;
            while (line < frame.height && !(frame.profile(line)[1024] > -2.0f))
                ++line;
            QVERIFY2(std::abs(line * 0.09 - 3.0) < 0.15, qPrintable(QString::number(line)));
        }
    }

    void sendsTheSensorImage()
    {
        const OpenDevice device(Profiler);
        device.set("ImageOutputMode", "SensorImage");
        QSignalSpy images(device.operator->(), &Device::frameReady);
        const Frames frames(device);
        QTRY_VERIFY(!images.isEmpty());
        QVERIFY(frames.lines.isEmpty());
        const QImage image = images.last().first().value<QImage>();
        QCOMPARE(image.size(), QSize(2048, 1024));
        QVERIFY(image.copy(ProfilerScene::StrayLight) != image.copy(ProfilerScene::StrayLight.translated(-300, 0)));
    }

    void locksAndRefuses()
    {
        const OpenDevice device(Profiler);
        QVERIFY(device.refusal("AcquisitionLineRate", "4000").contains(QLatin1String("are too many")));
        device.setAll(
            "UserSetSelector=UserSet4 ExposureTime=77.0 ImageMaskerSelector=ImageMasker1 ImageMask=1 "
            "AvgFilterWinLen=Window33 TimeAxisAvgFltWinLen=Window3 TimeAxisMedFltWinLen=Window9 CosData=0.866025 "
            "UserSetSave= ExposureTime=88.0 ImageMask=0 TimeAxisMedFltWinLen=Off");
        const Frames running(device);
        QCOMPARE(device.failureOf("Height:RO OffsetY:RO DepthDataType:RO AcquisitionLineCount:RO UserSetLoad:NA"),
                 QByteArray());
        device->stopAcquisition();
        QCOMPARE(device.failureOf("UserSetLoad= ExposureTime==77.0 ImageMask==1 TimeAxisMedFltWinLen==Window9"),
                 QByteArray());
    }

    void laserAdjustsItself()
    {
        const OpenDevice device(Profiler);
        device.setAll("ExposureTime=50.0 LaserAdjustMode=Auto");
        QCOMPARE(device.access("Lasersetting"), GenApi::RO);
        QVERIFY(settingsOf(device).lineBrightness(1.0) < 100.0);
        QTRY_VERIFY(settingsOf(device).lineBrightness(1.0) >= 120.0);
        device.set("LaserControlMode", "AcqTrigger");
        QCOMPARE(settingsOf(device).laser, 0.0);
    }
};

QTEST_GUILESS_MAIN(tst_SimulatedProfiler)
#include "tst_SimulatedProfiler.moc"
