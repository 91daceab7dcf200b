// SPDX-License-Identifier: MIT
#include <cmath>
#include <limits>

#include <QtTest>

#include "ParamterWnd/ParamterWnd.h"
#include "Simulation/Firmware.h"
#include "Simulation/StructuredLightFilters.h"
#include "Simulation/StructuredLightSensor.h"
#include "Simulation/StructuredLightSource.h"
#include "Viewer/FrameStatus.h"
#include "Viewer/HeightDisplay.h"
#include "Viewer/ImageView.h"
#include "Viewer/ViewerWindow.h"
#include "host/OpenDevice.h"
#include "host/TestHost.h"

namespace {

constexpr auto Serial = "SIM-SL-01";
const QString Id = QString::fromLatin1(Serial);
constexpr const char *Outputs[] = {"Left2DImage",   "Right2DImage",   "Left2DSrcImage", "Right2DSrcImage",
                                   "Left2.5DFront", "Right2.5DFront", "Left2.5DBack",   "Right2.5DBack"};

constexpr float N = std::numeric_limits<float>::quiet_NaN(); // no data

struct FilterRow
{
    const char *name;
    std::vector<float> heights; ///< three columns
    void (*filter)(HeightFrame &map);
    std::vector<float> filtered;
};

const FilterRow FilterRows[] = {
    {"a spike takes the height around it; a step stays",
     {1, 2, 7, 2, 9, 7, 3, 3, 7},
     [](HeightFrame &map) { StructuredLightFilters::replaceSpikes(map, 5.5f); },
     {1, 2, 7, 2, 3, 7, 3, 3, 7}},
    {"a jump from the mean goes",
     {1, 1, 1, N, 9, 1},
     [](HeightFrame &map) { StructuredLightFilters::removeJumps(map, 4.0f); },
     {1, 1, 1, N, N, 1}},
    {"points with too few neighbours go",
     {1, N, N, 1, 1, N, N, N, 1},
     [](HeightFrame &map) { StructuredLightFilters::removeIsolated(map, 1, 2); },
     {1, N, N, 1, 1, N, N, N, N}},
    {"small holes are filled from their edges",
     {2, N, 4, 2, 3, 4, 5, 5, 5, N, N, 5},
     [](HeightFrame &map) { StructuredLightFilters::fillHoles(map, 1); },
     {2, 3, 4, 2, 3, 4, 5, 5, 5, N, N, 5}},
    {"smoothing keeps edges", {1, 1.2f, 9}, StructuredLightFilters::smooth, {1.1f, 1.1f, 9}},
};

HeightFrame shotOf(const OpenDevice &device, double seconds = 0.0)
{
    return StructuredLightSensor().shot(device->inside().inspect(&StructuredLightSettings::fromRegisters), seconds);
}

double meanLevel(const QImage &image, const QRect &area)
{
    double sum = 0.0;
    for (int y = area.top(); y <= area.bottom(); ++y) {
        for (int x = area.left(); x <= area.right(); ++x)
            sum += image.constScanLine(y)[x];
    }
    return sum / (area.width() * area.height());
}

/// What a shot looks like as a whole. The places are those of the largest binning.
struct Shape
{
    explicit Shape(const HeightFrame &frame)
    {
        for (const float z : frame.heights) {
            if (!std::isnan(z))
                ++points, highest = std::max(highest, z), lowest = std::min(lowest, z);
        }
        for (int y = 2; y < 102; ++y) {
            for (int x = 2; x < 14; ++x) { // only the plate lies there
                const float off = std::abs(frame.profile(y)[x]);
                deviation += std::isnan(off) ? 0.0 : double(off), wrong += off > 3.0f;
            }
        }
        for (int y = 20; y < 40; ++y) { // along the box
            for (int x = 0; x < 3; ++x)
                hiddenLeft += std::isnan(frame.profile(y)[14 + x]), hiddenRight += std::isnan(frame.profile(y)[57 + x]);
        }
        const QImage &plain = frame.outputs[0];
        left = meanLevel(plain, QRect(0, 0, 80, 120)), right = meanLevel(plain, QRect(80, 0, 80, 120));
        back = meanLevel(plain, QRect(0, 0, 160, 60)), front = meanLevel(plain, QRect(0, 60, 160, 60));
    }

    int points = 0;
    int wrong = 0; ///< on the bare plate
    double deviation = 0.0; ///< of the heights there
    float highest = -1000.0f, lowest = 1000.0f;
    double left, right, back, front; ///< brightness of the halves of the left image
    int hiddenLeft = 0, hiddenRight = 0; ///< points without data beside the box
};

/// A camera whose time passes as a test wants.
struct Camera : OpenDevice
{
    struct Source : StructuredLightSource
    {
        using StructuredLightSource::StructuredLightSource;
        using StructuredLightSource::ticked;
    };

    explicit Camera(const QByteArray &settings) : OpenDevice(Serial), source((*this)->inside())
    {
        setAll("Bining=Binning4 " + settings);
        (*this)->close(); // or it would take shots by itself
    }
    int count(const char *name) const
    {
        return (*this)->inside().inspect([=](const RegisterMemory &memory) { return int(memory.number(name)); });
    }
    void acquire()
    {
        (*this)->inside().setAcquiring(true);
        source.setAcquiring(true);
    }
    void pass(int milliseconds)
    {
        for (; milliseconds > 0; milliseconds -= 20)
            source.ticked(std::chrono::milliseconds(20));
    }

    Source source;
};

} // namespace

class tst_SimulatedStructuredLight : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void featuresChangeTheShot()
    {
        using S = const Shape &;
        const auto fewer = [](S before, S after) { return after.points < before.points - 100; };
        const auto calmer = [](S before, S after) { return before.wrong > 4 && after.wrong < before.wrong / 2; };
        const auto brighter = [](S before, S after) { return after.left > 1.3 * before.left; };
        const auto leftOnly = [](S before, S after) {
            return after.left - before.left > 1.5 * (after.right - before.right) && after.left > before.left + 5;
        };
        const QByteArray usual = "Radius=2", open = "FillThreshold=0";
        const QByteArray unfiltered = open
            + " FilterThreshold=0 HighFilteringThreshold=0 LowBrightness=0 Modulation=0 "
              "SensorExposure=300.0 SensorMethod=Left";
        const std::tuple<QByteArray, bool (*)(S before, S after), QByteArray> rows[] = {
            {"Light1Value=90", brighter, usual},
            {"Light1Mode=Off", [](S before, S after) { return after.left < 0.1 * before.left; }, usual},
            {"Light2Mode=Strobe", leftOnly, usual},
            {"Light3Selector=Left Light3Mode=Strobe", leftOnly, usual},
            {"Light1Selector=Front", [](S, S after) { return after.front > 1.5 * after.back; }, usual},
            {"Light2Value=100", brighter, "Light1Mode=Off Light2Mode=Strobe"},
            {"Light3Value=100", brighter, "Light1Mode=Off Light3Selector=Left Light3Mode=Strobe"},
            {"Light3Mode=Continuous Light3Value=100", fewer, "Contrast=50"},
            {"SensorGain=6.0", brighter, usual},
            {"SensorExposure=3000.0", [](S before, S after) { return after.left < 0.4 * before.left; }, usual},
            {"SensorMethod=Left", [](S, S after) { return after.hiddenRight > after.hiddenLeft + 30; }, usual},
            {"SensorMethod=Right", [](S, S after) { return after.hiddenLeft > after.hiddenRight + 30; }, usual},
            {"Contrast=90", [](S, S after) { return after.points == 0; }, usual},
            {"Modulation=60", fewer, usual},
            {"LowBrightness=30", fewer, usual},
            {"HighBrightness=100", fewer, usual},
            {"FilterThreshold=2", calmer, unfiltered},
            {"HighFilteringThreshold=6", calmer, unfiltered},
            {"Radius=2", fewer, open + " Neighborhoods=23 Radius=5"},
            {"Neighborhoods=24", fewer, open + " Radius=2"},
            {"FillThreshold=2000", [](S before, S after) { return after.points > before.points + 100; }, open},
            {"Denoising=1", [](S before, S after) { return after.deviation < 0.6 * before.deviation; }, usual},
            {"HighTruncation=10.0", [](S, S after) { return after.highest <= 10.0f; }, usual},
            {"LowTruncation=-5.0", [](S, S after) { return after.lowest >= -5.0f; }, usual},
        };
        for (const auto &[settings, holds, start] : rows) {
            const OpenDevice device(Serial);
            device.setAll("Bining=Binning4 " + start);
            const Shape before(shotOf(device));
            device.setAll(settings);
            QVERIFY2(holds(before, Shape(shotOf(device))), settings.constData());
        }
    }

    void sendsTheWantedImages()
    {
        const OpenDevice device(Serial);
        device.setAll("Bining=Binning2 Left2DImage=0");
        for (int wanted = 0; wanted < StructuredLightSettings::outputCount; ++wanted) {
            device.boolean(Outputs[wanted])->SetValue(true);
            const HeightFrame frame = shotOf(device);
            QCOMPARE(QSize(frame.width, frame.height), QSize(320, 240));
            QCOMPARE(device.failureOf("Width==320"), QByteArray());
            for (int i = 0; i < StructuredLightSettings::outputCount; ++i)
                QCOMPARE(frame.outputs[size_t(i)].size(), i == wanted ? QSize(320, 240) : QSize(0, 0));
            device.boolean(Outputs[wanted])->SetValue(false);
        }
    }

    void imagesShowWhatTheyShould()
    {
        using Settings = StructuredLightSettings;
        const OpenDevice device(Serial);
        for (const char *output : Outputs)
            device.boolean(output)->SetValue(true);
        const std::vector<QImage> images = shotOf(device).outputs;
        const QRect domeBack(130, 255, 20, 20), domeFront(130, 365, 20, 20);
        const QRect darkPlain(300, 200, 4, 30), lightPlain(308, 200, 4, 30); // half a period of the stripes further
        const QRect boxLeft(72, 80, 6, 60), boxRight(232, 80, 6, 60); // where the box appears moved to
        for (int sensor : {0, 1}) {
            const auto gain = [&](int output, const QRect &from, const QRect &to) {
                const QImage &image = images[size_t(output) + size_t(sensor)];
                return meanLevel(image, to) - meanLevel(image, from);
            };
            QVERIFY(std::abs(gain(Settings::Stripes, darkPlain, lightPlain)) > 30.0);
            QVERIFY(std::abs(gain(Settings::Plain, darkPlain, lightPlain)) < 10.0);
            QVERIFY(gain(Settings::ReliefFront, domeBack, domeFront) > 50.0);
            QVERIFY(gain(Settings::ReliefBack, domeFront, domeBack) > 50.0);
            for (const int output : {Settings::Plain, Settings::Stripes, Settings::ReliefFront, Settings::ReliefBack})
                QCOMPARE(gain(output, boxLeft, boxRight) > 20.0, sensor == 0);
        }
    }

    void filters()
    {
        for (const FilterRow &row : FilterRows) {
            HeightFrame map;
            map.width = 3;
            map.height = int(row.heights.size()) / 3;
            map.heights = row.heights;
            row.filter(map);
            for (size_t i = 0; i < row.filtered.size(); ++i) {
                const float is = map.heights[i], should = row.filtered[i];
                QVERIFY2(std::isnan(should) ? std::isnan(is) : std::abs(is - should) < 1e-4f, row.name);
            }
        }
    }

    void thePlateMoves()
    {
        const OpenDevice device(Serial);
        device.set("Bining", "Binning4");
        const auto edge = [&device](double seconds) { // the left one of the box
            const HeightFrame frame = shotOf(device, seconds);
            int column = 0;
            while (column < frame.width && !(frame.profile(27)[column] > 6.0f))
                ++column;
            return column;
        };
        QCOMPARE(edge(4.0), edge(0.0) + 5);
    }

    void shotsComeInTime()
    {
        for (const auto &[settings, shots] : {std::pair{"AcquisitionFrameRate=7 SensorExposure=1000", 28},
                                              {"AcquisitionFrameRate=10 SensorExposure=50000", 7}}) { // as possible
            Camera camera(QByteArray("AcquisitionMode=Continuous ") + settings);
            camera.acquire();
            camera.pass(4000);
            const int taken = camera.count("AcquiredFrameCount");
            QVERIFY2(std::abs(taken - shots) <= 1, qPrintable(QString::number(taken)));
        }
    }

    void softwareTriggersTakeShots()
    {
        Camera camera("AcquisitionMode=SoftwareTrigger AcquisitionFrameRate=0.5"); // which does not limit triggers
        camera.source.trigger(0); // too early
        camera.acquire();
        camera.pass(1000);
        QCOMPARE(camera.count("AcquiredFrameCount"), 0);
        for (int i = 0; i < 5; ++i)
            camera.source.trigger(0);
        QCOMPARE(camera.count("MissedTriggerCount"), 3);
        camera.pass(1000);
        QCOMPARE(camera.count("AcquiredFrameCount"), 2);
        camera.source.trigger(0);
        camera.source.setAcquiring(true); // an acquisition begins without triggers
        camera.pass(1000);
        QCOMPARE(camera.count("AcquiredFrameCount"), 2);
    }

    void acquisitionsEndAndLock()
    {
        const OpenDevice device(Serial);
        device.setAll("Bining=Binning4 AcquisitionMode=SingleFrame SensorExposure=40000.0");
        const double rate = device->inside().inspect(&StructuredLightSettings::rate);
        QCOMPARE(rate, 1e6 / 480e3);
        QCOMPARE(device.number("ResultingFrameRate")->GetValue(), rate);
        QSignalSpy shots(device.operator->(), &Device::heightReady);
        device.start();
        QTRY_VERIFY(!device->isAcquiring());
        QTRY_COMPARE(shots.count(), 1);
        QTRY_COMPARE(device.access("AcquisitionMode"), GenApi::RW); // the host has heard of the end
        device.setAll("AcquisitionMode=Continuous SensorExposure=1000.0");
        device.start();
        QTRY_VERIFY(shots.count() >= 4);
        QCOMPARE(device.failureOf("AcquisitionMode:RO Bining:RO UserSetLoad:NA"), QByteArray());
        device.boolean("Left2DImage")->SetValue(false); // outputs may change while images come
        QTRY_VERIFY(shots.last().first().value<HeightFrame>().outputs[0].isNull());
        QCOMPARE(device.failureOf("LowBrightness!=251 LowTruncation!=61"), QByteArray()); // above the highest
    }

    void userSetsKeepEverything()
    {
        const QByteArray changed =
            "Bining=Binning2 SensorMethod=Right AcquisitionMode=SingleFrame Left2DImage=0 "
            "Right2.5DBack=1 Light2Selector=Front Light2Mode=Strobe Light2Value=33 SensorGain=3.0 "
            "Contrast=12 Modulation=9 LowBrightness=6 HighBrightness=240 FilterThreshold=4.00 "
            "HighFilteringThreshold=5.00 Radius=1 Neighborhoods=3 FillThreshold=7 Denoising=1 "
            "HighTruncation=50.00 LowTruncation=-2.00";
        const OpenDevice device(Serial);
        device.setAll(changed + " UserSetSelector=UserSet2 UserSetSave= UserSetSelector=Default UserSetLoad=");
        for (const QByteArray &word : changed.split(' '))
            QVERIFY2(!device.failureOf(QByteArray(word).replace("=", "==")).isEmpty(), word);
        device.setAll("UserSetSelector=UserSet2 UserSetLoad=");
        QCOMPARE(device.failureOf(QByteArray(changed).replace("=", "==")), QByteArray());
    }

    void showModeChoosesThePicture()
    {
        TestHost testHost;
        testHost.renewSimulated();
        HostContext &host = *testHost;
        ViewerWindow window(host);
        window.openWhenKnown(Id);
        QTRY_VERIFY(testHost.isReady(Serial));
        HeightDisplay display(host);
        const ImageView &view = window.image();
        for (const char *output : Outputs)
            testHost.set(Serial, output + QByteArray("=1"));
        testHost.set(Serial, "Right2DImage=0 AcquisitionMode=SingleFrame");
        const QSignalSpy shots(&host.devices(), &KnownDevices::heightReady);
        QVERIFY(host.sessions().startAcquisition(Id));
        QTRY_COMPARE(view.frame().format(), QImage::Format_RGB32);
        QTRY_VERIFY(!host.devices().device(Id)->isAcquiring());
        const QImage depth = view.frame();
        QVERIFY2(depth.pixel(150, 100) != depth.pixel(150, 20), "box and plate have the same colour");
        QVERIFY2(depth.pixel(150, 100) != depth.pixel(320, 350), "box and disc have the same colour");
        QVERIFY(display.textAt(Id, {150, 100}).contains(QLatin1String(" mm: 1")));
        const std::vector<QImage> images = shots.last().at(1).value<HeightFrame>().outputs;
        for (const int mode : {1, 3, 4, 5, 6, 7, 8}) { // with the last shot
            HostCore::SetSLImageShowMode(Serial, mode);
            QCOMPARE(view.frame(), images[size_t(mode - 1)]);
            QVERIFY(display.textAt(Id, {150, 100}).isEmpty());
        }
        const QImage &stripes = images[3];
        testHost.log.clear();
        for (const int mode : {2, 0, 9, -1}) { // not sent, none, unknown
            HostCore::SetSLImageShowMode(Serial, 4);
            QCOMPARE(view.frame(), stripes);
            HostCore::SetSLImageShowMode(Serial, mode);
            QCOMPARE(view.frame(), depth);
            QCOMPARE(host.showModes().of(Id), mode == 2 ? 2 : 0);
        }
        QCOMPARE(testHost.log.size(), 2);
        HostCore::SetSLImageShowMode("nobody", 1);
        QCOMPARE(testHost.log.size(), 3);
        testHost.set(Serial, "AcquisitionMode=Continuous");
        QVERIFY(host.sessions().startAcquisition(Id));
        QTRY_VERIFY(window.frameStatus().text().contains(QLatin1String("Coord3D_C32f")));
        HostCore::SetSLImageShowMode(Serial, 1);
        QVERIFY(window.frameStatus().text().contains(QLatin1String("Mono8")));
        host.sessions().close(Id);
        QTRY_VERIFY(!host.devices().device(Id)->isOpen());
        QVERIFY(host.sessions().open(Id));
        QCOMPARE(host.showModes().of(Id), 0);
        QVERIFY(view.frame().isNull() && !display.shows(Id));
    }
};

QTEST_MAIN(tst_SimulatedStructuredLight)
#include "tst_SimulatedStructuredLight.moc"
