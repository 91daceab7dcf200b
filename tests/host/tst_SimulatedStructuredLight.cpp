// SPDX-License-Identifier: MIT
#include <cmath>
#include <limits>

#include <QSignalSpy>
#include <QTemporaryDir>
#include <QtTest>

#include "Host/HostContext.h"
#include "Host/Viewer/HeightDisplay.h"
#include "Host/Viewer/ImageView.h"
#include "Host/Viewer/ViewerWindow.h"
#include "Host/simulation/Firmware.h"
#include "Host/simulation/StructuredLightFilters.h"
#include "Host/simulation/StructuredLightSensor.h"
#include "ParamterWnd/HostCore.h"
#include "host/OpenDevice.h"

namespace {

constexpr auto camera = "SIM-SL-01";
const QString id = QString::fromLatin1(camera);
constexpr float nothing = std::numeric_limits<float>::quiet_NaN();
constexpr const char *outputs[] = {"Left2DImage",   "Right2DImage",   "Left2DSrcImage", "Right2DSrcImage",
                                   "Left2.5DFront", "Right2.5DFront", "Left2.5DBack",   "Right2.5DBack"};

/// Sets features from words "name=text", one after the other.
void setAll(const OpenDevice &device, const QByteArray &words)
{
    for (const QByteArray &word : words.split(' ')) {
        const int split = int(word.indexOf('='));
        device.set(word.left(split).constData(), word.mid(split + 1).constData());
    }
}

HeightFrame shotOf(const OpenDevice &device)
{
    return StructuredLightSensor().shot(device->inside().inspect(&StructuredLightSettings::fromRegisters), 0.0);
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
    explicit Shape(const HeightFrame &frame) : width(frame.width)
    {
        for (const float z : frame.heights) {
            if (std::isnan(z))
                continue;
            ++points;
            highest = std::max(highest, z);
            lowest = std::min(lowest, z);
        }
        const QRect bare(2, 2, 12, 100); // only the plate lies there
        for (int y = bare.top(); y <= bare.bottom(); ++y) {
            for (int x = bare.left(); x <= bare.right(); ++x) {
                const float off = std::abs(frame.profile(y)[x]);
                deviation += std::isnan(off) ? 0.0 : double(off), wrong += off > 3.0f;
            }
        }
        const QImage &plain = frame.outputs[0];
        left = meanLevel(plain, QRect(0, 0, 80, 120));
        right = meanLevel(plain, QRect(80, 0, 80, 120));
        for (int y = 3; y < 13; ++y) { // one tone of the plate
            for (int x = 3; x < 9; ++x)
                grain += std::abs(plain.constScanLine(y)[x] - plain.constScanLine(y)[x + 1]);
        }
    }

    int width;
    int points = 0;
    int wrong = 0; ///< on the bare plate
    double deviation = 0.0; ///< of the heights there
    float highest = -1000.0f, lowest = 1000.0f;
    double left = 0.0, right = 0.0; ///< brightness of the halves of the left image
    int grain = 0; ///< its noise
};

HeightFrame mapOf(int width, const std::vector<float> &heights)
{
    HeightFrame map;
    map.width = width;
    map.height = int(heights.size()) / width;
    map.heights = heights;
    return map;
}

/// Collects the shots of an acquisition.
struct Shots
{
    explicit Shots(const OpenDevice &device) : heights(device.operator->(), &Device::heightReady)
    {
        QString error;
        if (!device->startAcquisition(&error))
            qFatal("%s", qPrintable(error));
    }
    int count() const { return int(heights.size()); }

    QSignalSpy heights;
};

} // namespace

using S = const Shape &;
using Expectation = bool (*)(S before, S after);
Q_DECLARE_METATYPE(Expectation)
using Filter = void (*)(HeightFrame &map);
Q_DECLARE_METATYPE(Filter)
Q_DECLARE_METATYPE(std::vector<float>)

class tst_SimulatedStructuredLight : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void featuresChangeTheShot_data();
    void featuresChangeTheShot();
    void filters_data();
    void filters();
    void sendsTheWantedImages();
    void imagesShowWhatTheyShould();
    void softwareTriggersTakeShots();
    void acquisitionsEndAndLock();
    void userSetsKeepEverything();
    void showModeChoosesThePicture();
};

void tst_SimulatedStructuredLight::featuresChangeTheShot_data()
{
    QTest::addColumn<QByteArray>("before");
    QTest::addColumn<Expectation>("expected");
    const auto row = [](const char *settings, Expectation check, const char *before = "Radius=2") {
        QTest::newRow(settings) << QByteArray(before) << check;
    };
    const auto fewer = [](S before, S after) { return after.points < before.points - 100; };
    const auto more = [](S before, S after) { return after.points > before.points + 100; };
    const auto leftOnly = [](S before, S after) {
        return after.left - before.left > 1.5 * (after.right - before.right) && after.left > before.left + 5;
    };
    row("Light1Value=90", [](S before, S after) { return after.left > 1.3 * before.left; });
    row("Light1Mode=Off", [](S before, S after) { return after.left < 0.1 * before.left; });
    row("Light1Mode=Continuous", [](S before, S after) { return after.left < 0.8 * before.left; });
    row("Light2Mode=Strobe", leftOnly);
    row("Light3Selector=Left Light3Mode=Strobe", leftOnly);
    row("Light3Mode=Continuous Light3Value=100", fewer, "Contrast=50");
    row("SensorGain=6.0",
        [](S before, S after) { return after.left > 1.8 * before.left && after.grain > 1.4 * before.grain; });
    row("SensorExposure=3000.0",
        [](S before, S after) { return after.left < 0.4 * before.left && after.deviation > 1.5 * before.deviation; });
    for (const char *method : {"SensorMethod=Left", "SensorMethod=Right"}) // what it does not see, not what is too dark
        row(method, fewer, "Modulation=0 LowBrightness=0");
    row("Contrast=90", [](S, S after) { return after.points == 0; });
    row("Modulation=60", fewer);
    row("LowBrightness=30", fewer);
    row("HighBrightness=100", fewer);
    const char *unfiltered = "FilterThreshold=0 HighFilteringThreshold=0 FillThreshold=0 LowBrightness=0 Modulation=0 "
                             "SensorExposure=300.0 SensorMethod=Left";
    const auto calmer = [](S before, S after) { return before.wrong > 4 && after.wrong < before.wrong / 2; };
    row("FilterThreshold=2", calmer, unfiltered);
    row("HighFilteringThreshold=6", calmer, unfiltered);
    row("Radius=3 Neighborhoods=40", fewer, "FillThreshold=0 Radius=0");
    row("FillThreshold=2000", more, "FillThreshold=0");
    row("Denoising=1", [](S before, S after) { return after.deviation < 0.6 * before.deviation; });
    row("HighTruncation=10.0", [](S before, S after) { return before.highest > 20.0f && after.highest <= 10.0f; });
    row("LowTruncation=-5.0", [](S before, S after) { return before.lowest < -9.0f && after.lowest >= -5.0f; });
}

void tst_SimulatedStructuredLight::featuresChangeTheShot()
{
    QFETCH(QByteArray, before);
    QFETCH(Expectation, expected);
    const OpenDevice device(camera);
    setAll(device, "Bining=Binning4 " + before);
    const Shape first(shotOf(device));
    setAll(device, QTest::currentDataTag());
    const Shape second(shotOf(device));
    const auto text = [](S shape) {
        return QStringLiteral("%1 points, %2 wrong, deviation %3, heights %4 to %5, levels %6 and %7, grain %8\n")
            .arg(shape.points)
            .arg(shape.wrong)
            .arg(shape.deviation)
            .arg(double(shape.lowest))
            .arg(double(shape.highest))
            .arg(shape.left)
            .arg(shape.right)
            .arg(shape.grain);
    };
    QVERIFY2(expected(first, second), qPrintable(text(first) + text(second)));
}

void tst_SimulatedStructuredLight::filters_data()
{
    QTest::addColumn<std::vector<float>>("heights"); // three columns
    QTest::addColumn<Filter>("filter");
    QTest::addColumn<std::vector<float>>("filtered");
    using namespace StructuredLightFilters;
    const float N = nothing;
    QTest::newRow("a spike takes the height around it; a step stays")
        << std::vector<float>{1, 2, 7, 2, 9, 7, 3, 3, 7} << Filter([](HeightFrame &map) { replaceSpikes(map, 5.5f); })
        << std::vector<float>{1, 2, 7, 2, 3, 7, 3, 3, 7};
    QTest::newRow("a jump from the mean goes")
        << std::vector<float>{1, 1, 1, N, 9, 1} << Filter([](HeightFrame &map) { removeJumps(map, 4.0f); })
        << std::vector<float>{1, 1, 1, N, N, 1};
    QTest::newRow("points with too few neighbours go")
        << std::vector<float>{1, N, N, 1, 1, N, N, N, 1} << Filter([](HeightFrame &map) { removeIsolated(map, 1, 2); })
        << std::vector<float>{1, N, N, 1, 1, N, N, N, N};
    QTest::newRow("more neighbours than possible count as all")
        << std::vector<float>(9, 1.0f) << Filter([](HeightFrame &map) { removeIsolated(map, 1, 99); })
        << std::vector<float>{N, N, N, N, 1, N, N, N, N};
    QTest::newRow("small holes are filled from their edges")
        << std::vector<float>{2, N, 4, 2, 3, 4, 5, 5, 5, N, N, 5} << Filter([](HeightFrame &map) { fillHoles(map, 1); })
        << std::vector<float>{2, 3, 4, 2, 3, 4, 5, 5, 5, N, N, 5};
    QTest::newRow("smoothing keeps edges")
        << std::vector<float>{1, 1.2f, 9} << Filter(smooth) << std::vector<float>{1.1f, 1.1f, 9};
    QTest::newRow("heights are cut off") << std::vector<float>{1, 2, 3}
                                         << Filter([](HeightFrame &map) { truncate(map, 1.5f, 2.5f); })
                                         << std::vector<float>{N, 2, N};
}

void tst_SimulatedStructuredLight::filters()
{
    QFETCH(std::vector<float>, heights);
    QFETCH(Filter, filter);
    QFETCH(std::vector<float>, filtered);
    HeightFrame map = mapOf(3, heights);
    filter(map);
    for (size_t i = 0; i < filtered.size(); ++i) {
        const bool same =
            std::isnan(filtered[i]) ? std::isnan(map.heights[i]) : std::abs(map.heights[i] - filtered[i]) < 1e-4f;
        QVERIFY2(same, qPrintable(QStringLiteral("point %1 is %2").arg(i).arg(double(map.heights[i]))));
    }
}

void tst_SimulatedStructuredLight::sendsTheWantedImages()
{
    const OpenDevice device(camera);
    setAll(device, "Bining=Binning2 Left2DImage=0");
    for (int wanted = 0; wanted < StructuredLightSettings::outputCount; ++wanted) {
        device.boolean(outputs[wanted])->SetValue(true);
        const HeightFrame frame = shotOf(device);
        QCOMPARE(QSize(frame.width, frame.height), QSize(320, 240));
        QCOMPARE(int64_t(frame.width), device.integer("Width")->GetValue());
        for (int i = 0; i < StructuredLightSettings::outputCount; ++i)
            QCOMPARE(frame.outputs[size_t(i)].size(), i == wanted ? QSize(320, 240) : QSize(0, 0));
        device.boolean(outputs[wanted])->SetValue(false);
    }
}

void tst_SimulatedStructuredLight::imagesShowWhatTheyShould()
{
    const OpenDevice device(camera);
    for (const char *output : outputs)
        device.boolean(output)->SetValue(true);
    const std::vector<QImage> images = shotOf(device).outputs;
    const QRect domeBack(130, 255, 20, 20), domeFront(130, 365, 20, 20);
    const QRect darkPlain(300, 200, 4, 30), lightPlain(308, 200, 4, 30); // half a period of the stripes further
    const QRect boxLeft(72, 80, 6, 60), boxRight(232, 80, 6, 60); // where the box appears moved to
    for (int sensor : {0, 1}) {
        const auto level = [&](int output, const QRect &area) {
            return meanLevel(images[size_t(output + sensor)], area);
        };
        using Settings = StructuredLightSettings;
        QVERIFY(std::abs(level(Settings::Stripes, darkPlain) - level(Settings::Stripes, lightPlain)) > 30.0);
        QVERIFY(std::abs(level(Settings::Plain, darkPlain) - level(Settings::Plain, lightPlain)) < 10.0);
        QVERIFY(level(Settings::ReliefFront, domeFront) > level(Settings::ReliefFront, domeBack) + 50.0);
        QVERIFY(level(Settings::ReliefBack, domeBack) > level(Settings::ReliefBack, domeFront) + 50.0);
        const bool movedRight = level(Settings::Plain, boxRight) > level(Settings::Plain, boxLeft) + 20.0;
        QCOMPARE(movedRight, sensor == 0);
    }
}

void tst_SimulatedStructuredLight::softwareTriggersTakeShots()
{
    const OpenDevice device(camera);
    setAll(device, "Bining=Binning4 AcquisitionFrameRate=10 AcquisitionMode=SoftwareTrigger");
    const auto fire = [&device] { device.command("TriggerSoftware")->Execute(); };
    fire(); // too early
    const Shots shots(device);
    QTest::qWait(250);
    QCOMPARE(shots.count(), 0);
    for (int i = 0; i < 5; ++i)
        fire();
    QTRY_COMPARE(device.integer("MissedTriggerCount")->GetValue(false, true), int64_t(3));
    QTRY_COMPARE(shots.count(), 2);
    fire();
    QTRY_COMPARE(shots.count(), 3);
}

void tst_SimulatedStructuredLight::acquisitionsEndAndLock()
{
    const OpenDevice device(camera);
    setAll(device, "Bining=Binning4 AcquisitionMode=SingleFrame SensorExposure=40000.0");
    const double rate = device->inside().inspect(&StructuredLightSettings::rate);
    QCOMPARE(rate, 1e6 / 480e3);
    QCOMPARE(device.number("ResultingFrameRate")->GetValue(), rate);
    const Shots single(device);
    QTRY_VERIFY(!device->isAcquiring());
    QTRY_COMPARE(single.count(), 1);
    setAll(device, "AcquisitionMode=Continuous SensorExposure=1000.0");
    const Shots running(device);
    QTRY_VERIFY(running.count() >= 3);
    for (const char *name : {"AcquisitionMode", "Bining"})
        QCOMPARE(device.access(name), GenApi::RO);
    QCOMPARE(device.access("UserSetLoad"), GenApi::NA);
    device.boolean("Left2DImage")->SetValue(false); // outputs may change while images come
    QTRY_VERIFY(running.heights.last().first().value<HeightFrame>().outputs[0].isNull());
    QVERIFY(!device.refusal("LowBrightness", "251").isEmpty()); // above the highest
    QVERIFY(!device.refusal("LowTruncation", "61").isEmpty());
}

void tst_SimulatedStructuredLight::userSetsKeepEverything()
{
    const QByteArray changed = "Bining=Binning2 SensorMethod=Right AcquisitionMode=SingleFrame Left2DImage=0 "
                               "Right2.5DBack=1 Light2Selector=Front Light2Mode=Strobe Light2Value=33 SensorGain=3.0 "
                               "Contrast=12 Modulation=9 LowBrightness=6 HighBrightness=240 FilterThreshold=4.0 "
                               "HighFilteringThreshold=5.0 Radius=1 Neighborhoods=3 FillThreshold=7 Denoising=1 "
                               "HighTruncation=50.0 LowTruncation=-2.0";
    const OpenDevice device(camera);
    const auto values = [&] {
        QStringList texts;
        for (const QByteArray &word : changed.split(' '))
            texts << device.text(word.left(word.indexOf('=')).constData());
        return texts;
    };
    const QStringList before = values();
    setAll(device, changed);
    const QStringList after = values();
    device.set("UserSetSelector", "UserSet2");
    device.command("UserSetSave")->Execute();
    device.set("UserSetSelector", "Default");
    device.command("UserSetLoad")->Execute();
    QCOMPARE(values(), before);
    device.set("UserSetSelector", "UserSet2");
    device.command("UserSetLoad")->Execute();
    QCOMPARE(values(), after);
}

void tst_SimulatedStructuredLight::showModeChoosesThePicture()
{
    QTemporaryDir folder;
    HostContext host({folder.filePath(QStringLiteral("host.ini")), {}});
    for (std::unique_ptr<Device> &device : makeSimulatedDevices())
        host.addDevice(std::move(device));
    ViewerWindow window(host);
    window.openWhenKnown(id);
    HeightDisplay display(host);
    const ImageView &view = window.image();
    QVERIFY(host.writeNode(id, QStringLiteral("Right2DSrcImage"), QStringLiteral("1")));
    QVERIFY(host.writeNode(id, QStringLiteral("AcquisitionMode"), QStringLiteral("SingleFrame")));
    QVERIFY(host.startAcquisition(id));
    QTRY_COMPARE(view.frame().format(), QImage::Format_RGB32);
    QTRY_VERIFY(!host.device(id)->isAcquiring());
    const QImage depth = view.frame();
    QVERIFY2(depth.pixel(150, 100) != depth.pixel(150, 20), "box and plate have the same colour");
    QVERIFY(display.textAt(id, {150, 100}).contains(QLatin1String(" mm: 1")));
    for (const int mode : {1, 4}) { // with the last shot
        HostCore::SetSLImageShowMode(camera, mode);
        QCOMPARE(view.frame().format(), QImage::Format_Grayscale8);
        QVERIFY(display.textAt(id, {150, 100}).isEmpty());
    }
    const QImage stripes = view.frame();
    QSignalSpy log(&host, &HostContext::logLine);
    for (const int mode : {2, 0, 9, -1}) { // not sent, none, unknown
        HostCore::SetSLImageShowMode(camera, 4);
        QCOMPARE(view.frame(), stripes);
        HostCore::SetSLImageShowMode(camera, mode);
        QCOMPARE(view.frame(), depth);
        QCOMPARE(host.showModes().of(id), mode == 2 ? 2 : 0);
    }
    QCOMPARE(log.size(), 2);
    HostCore::SetSLImageShowMode("nobody", 1);
    QCOMPARE(log.size(), 3);
    HostCore::SetSLImageShowMode(camera, 1);
    host.close(id);
    QTRY_VERIFY(!host.device(id)->isOpen());
    QVERIFY(host.open(id));
    QCOMPARE(host.showModes().of(id), 0);
}

QTEST_MAIN(tst_SimulatedStructuredLight)
#include "tst_SimulatedStructuredLight.moc"
