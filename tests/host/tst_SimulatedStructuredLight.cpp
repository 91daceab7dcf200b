// SPDX-License-Identifier: MIT
#include <cmath>
#include <limits>

#include <QComboBox>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QtTest>

#include "Host/HostContext.h"
#include "ParamterWnd/HostCore.h"
#include "ParamterWnd/ParamterWnd.h"
#include "Simulation/Firmware.h"
#include "Simulation/StructuredLightSensor.h"
#include "Simulation/StructuredLightSource.h"
#include "Viewer/FrameStatus.h"
#include "Viewer/HeightDisplay.h"
#include "Viewer/ImageView.h"
#include "Viewer/ViewerWindow.h"
#include "host/OpenDevice.h"

namespace {

constexpr auto Serial = "SIM-SL-01";
const QString Id = QString::fromLatin1(Serial);
constexpr const char *Outputs[] = {"Left2DImage",   "Right2DImage",   "Left2DSrcImage", "Right2DSrcImage",
                                   "Left2.5DFront", "Right2.5DFront", "Left2.5DBack",   "Right2.5DBack"};

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
        back = meanLevel(plain, QRect(0, 0, 160, 60));
        front = meanLevel(plain, QRect(0, 60, 160, 60));
        for (int y = 20; y < 40; ++y) { // along the box
            for (int x = 0; x < 3; ++x)
                hiddenLeft += std::isnan(frame.profile(y)[14 + x]), hiddenRight += std::isnan(frame.profile(y)[57 + x]);
        }
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
    double back = 0.0, front = 0.0;
    int hiddenLeft = 0, hiddenRight = 0; ///< points without data beside the box
    int grain = 0; ///< noise of the left image
};

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

/// A camera whose time passes as a test wants.
struct Camera
{
    struct Source : StructuredLightSource
    {
        using StructuredLightSource::StructuredLightSource;
        using StructuredLightSource::ticked;
    };

    Camera() : source(device().inside()) { set("Bining", 2); }
    SimulatedDevice &device()
    {
        const auto isCamera = [](const std::unique_ptr<Device> &one) { return one->id() == Id; };
        return static_cast<SimulatedDevice &>(**std::find_if(devices.begin(), devices.end(), isCamera));
    }
    void set(const char *name, double value)
    {
        device().inside().change([=](RegisterMemory &memory) { memory.setNumber(name, value); });
    }
    double number(const char *name)
    {
        return device().inside().inspect([=](const RegisterMemory &memory) { return memory.number(name); });
    }
    void start(int mode)
    {
        set("AcquisitionMode", mode);
        device().inside().setAcquiring(true);
        source.setAcquiring(true);
    }
    void pass(int milliseconds)
    {
        for (; milliseconds > 0; milliseconds -= 20)
            source.ticked(std::chrono::milliseconds(20));
    }

    std::vector<std::unique_ptr<Device>> devices = makeSimulatedDevices();
    Source source;
};

HostContext &withDevices(HostContext &host)
{
    for (std::unique_ptr<Device> &device : makeSimulatedDevices())
        host.devices().add(std::move(device));
    return host;
}

/// The viewer, with the camera open.
struct Viewer
{
    Viewer()
    {
        window.openWhenKnown(Id);
        if (!QTest::qWaitFor([this] { return host.devices().isReady(Id); }))
            qFatal("the camera does not open");
    }

    QTemporaryDir folder;
    HostContext host{{folder.filePath(QStringLiteral("host.ini")), {}}};
    ViewerWindow window{withDevices(host)};
};

} // namespace

using S = const Shape &;
using Expectation = bool (*)(S before, S after);
Q_DECLARE_METATYPE(Expectation)

class tst_SimulatedStructuredLight : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void featuresChangeTheShot_data();
    void featuresChangeTheShot();
    void sendsTheWantedImages();
    void imagesShowWhatTheyShould();
    void shotsComeInTime_data();
    void shotsComeInTime();
    void softwareTriggersTakeShots();
    void thePlateMoves();
    void acquisitionsEndAndLock();
    void userSetsKeepEverything();
    void showModeChoosesThePicture();
    void restartsReachThePanel();
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
    row("Light1Selector=Left", [](S, S after) { return after.left > 1.5 * after.right; });
    row("Light1Selector=Right", [](S, S after) { return after.right > 1.5 * after.left; });
    row("Light1Selector=Front", [](S, S after) { return after.front > 1.5 * after.back; });
    row("Light1Selector=Back", [](S, S after) { return after.back > 1.5 * after.front; });
    row(
        "Light2Value=100", [](S before, S after) { return after.left > 1.5 * before.left; },
        "Light1Mode=Off Light2Mode=Strobe");
    row(
        "Light3Value=100", [](S before, S after) { return after.left > 1.5 * before.left; },
        "Light1Mode=Off Light3Selector=Left Light3Mode=Strobe");
    row("Light3Mode=Continuous Light3Value=100", fewer, "Contrast=50");
    row("SensorGain=6.0",
        [](S before, S after) { return after.left > 1.8 * before.left && after.grain > 1.4 * before.grain; });
    row("SensorExposure=3000.0",
        [](S before, S after) { return after.left < 0.4 * before.left && after.deviation > 1.5 * before.deviation; });
    row("SensorMethod=Left",
        [](S before, S after) { return after.hiddenRight > before.hiddenRight + 30 && after.hiddenLeft < 10; });
    row("SensorMethod=Right",
        [](S before, S after) { return after.hiddenLeft > before.hiddenLeft + 30 && after.hiddenRight < 10; });
    row("Contrast=90", [](S, S after) { return after.points == 0; });
    row("Modulation=60", fewer);
    row("LowBrightness=30", fewer);
    row("HighBrightness=100", fewer);
    const char *unfiltered = "FilterThreshold=0 HighFilteringThreshold=0 FillThreshold=0 LowBrightness=0 Modulation=0 "
                             "SensorExposure=300.0 SensorMethod=Left";
    const auto calmer = [](S before, S after) { return before.wrong > 4 && after.wrong < before.wrong / 2; };
    row("FilterThreshold=2", calmer, unfiltered);
    row("HighFilteringThreshold=6", calmer, unfiltered);
    row("Radius=2", fewer, "FillThreshold=0 Neighborhoods=23 Radius=5");
    row("Neighborhoods=24", fewer, "FillThreshold=0 Radius=2");
    row("FillThreshold=2000", more, "FillThreshold=0");
    row("Denoising=1", [](S before, S after) { return after.deviation < 0.6 * before.deviation; });
    row("HighTruncation=10.0", [](S before, S after) { return before.highest > 20.0f && after.highest <= 10.0f; });
    row("LowTruncation=-5.0", [](S before, S after) { return before.lowest < -9.0f && after.lowest >= -5.0f; });
}

void tst_SimulatedStructuredLight::featuresChangeTheShot()
{
    QFETCH(QByteArray, before);
    QFETCH(Expectation, expected);
    const OpenDevice device(Serial);
    device.setAll("Bining=Binning4 " + before);
    const Shape first(shotOf(device));
    device.setAll(QTest::currentDataTag());
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

void tst_SimulatedStructuredLight::sendsTheWantedImages()
{
    const OpenDevice device(Serial);
    device.setAll("Bining=Binning2 Left2DImage=0");
    for (int wanted = 0; wanted < StructuredLightSettings::outputCount; ++wanted) {
        device.boolean(Outputs[wanted])->SetValue(true);
        const HeightFrame frame = shotOf(device);
        QCOMPARE(QSize(frame.width, frame.height), QSize(320, 240));
        QCOMPARE(int64_t(frame.width), device.integer("Width")->GetValue());
        for (int i = 0; i < StructuredLightSettings::outputCount; ++i)
            QCOMPARE(frame.outputs[size_t(i)].size(), i == wanted ? QSize(320, 240) : QSize(0, 0));
        device.boolean(Outputs[wanted])->SetValue(false);
    }
}

void tst_SimulatedStructuredLight::imagesShowWhatTheyShould()
{
    const OpenDevice device(Serial);
    for (const char *output : Outputs)
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
        for (const int output : {Settings::Plain, Settings::Stripes, Settings::ReliefFront, Settings::ReliefBack}) {
            const bool movedRight = level(output, boxRight) > level(output, boxLeft) + 20.0;
            QCOMPARE(movedRight, sensor == 0);
        }
    }
}

void tst_SimulatedStructuredLight::shotsComeInTime_data()
{
    QTest::addColumn<double>("rate");
    QTest::addColumn<double>("exposure");
    QTest::addColumn<int>("shots"); // in four seconds
    QTest::newRow("as fast as wanted") << 7.0 << 1000.0 << 28;
    QTest::newRow("as fast as possible") << 10.0 << 50000.0 << 7;
}

void tst_SimulatedStructuredLight::shotsComeInTime()
{
    QFETCH(double, rate);
    QFETCH(double, exposure);
    QFETCH(int, shots);
    Camera camera;
    camera.set("AcquisitionFrameRate", rate);
    camera.set("SensorExposure", exposure);
    camera.start(StructuredLightSettings::Continuous);
    camera.pass(4000);
    QVERIFY2(std::abs(camera.number("AcquiredFrameCount") - shots) <= 1,
             qPrintable(QString::number(camera.number("AcquiredFrameCount"))));
}

void tst_SimulatedStructuredLight::softwareTriggersTakeShots()
{
    Camera camera;
    camera.set("AcquisitionFrameRate", 0.5); // does not limit triggers
    camera.source.trigger(0); // too early
    camera.start(StructuredLightSettings::SoftwareTrigger);
    camera.pass(1000);
    QCOMPARE(camera.number("AcquiredFrameCount"), 0.0);
    for (int i = 0; i < 5; ++i)
        camera.source.trigger(0);
    QCOMPARE(camera.number("MissedTriggerCount"), 3.0);
    camera.pass(1000);
    QCOMPARE(camera.number("AcquiredFrameCount"), 2.0);
    camera.source.trigger(0);
    camera.source.setAcquiring(true); // an acquisition begins without triggers
    camera.pass(1000);
    QCOMPARE(camera.number("AcquiredFrameCount"), 2.0);
}

void tst_SimulatedStructuredLight::thePlateMoves()
{
    const auto edge = [](const HeightFrame &frame) { // the left one of the box
        int column = 0;
        while (column < frame.width && !(frame.profile(27)[column] > 6.0f))
            ++column;
        return column;
    };
    StructuredLightSettings settings;
    settings.binning = 4;
    StructuredLightSensor sensor;
    QCOMPARE(edge(sensor.shot(settings, 4.0)), edge(sensor.shot(settings, 0.0)) + 5);
}

void tst_SimulatedStructuredLight::acquisitionsEndAndLock()
{
    const OpenDevice device(Serial);
    device.setAll("Bining=Binning4 AcquisitionMode=SingleFrame SensorExposure=40000.0");
    const double rate = device->inside().inspect(&StructuredLightSettings::rate);
    QCOMPARE(rate, 1e6 / 480e3);
    QCOMPARE(device.number("ResultingFrameRate")->GetValue(), rate);
    const Shots single(device);
    QTRY_VERIFY(!device->isAcquiring());
    QTRY_COMPARE(single.count(), 1);
    QTRY_COMPARE(device.access("AcquisitionMode"), GenApi::RW); // the host has heard of the end
    device.setAll("AcquisitionMode=Continuous SensorExposure=1000.0");
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
    const OpenDevice device(Serial);
    const auto values = [&] {
        QStringList texts;
        for (const QByteArray &word : changed.split(' '))
            texts << device.text(word.left(word.indexOf('=')).constData());
        return texts;
    };
    const QStringList before = values();
    device.setAll(changed);
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
    Viewer viewer;
    HostContext &host = viewer.host;
    ViewerWindow &window = viewer.window;
    HeightDisplay display(host);
    const ImageView &view = window.image();
    for (const char *output : Outputs)
        QVERIFY(host.values().write(Id, QLatin1String(output), QStringLiteral("1")));
    QVERIFY(host.values().write(Id, QStringLiteral("Right2DImage"), QStringLiteral("0")));
    const QSignalSpy shots(&host.devices(), &KnownDevices::heightReady);
    QVERIFY(host.values().write(Id, QStringLiteral("AcquisitionMode"), QStringLiteral("SingleFrame")));
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
    QSignalSpy log(&host.log(), &HostLog::lineAdded);
    for (const int mode : {2, 0, 9, -1}) { // not sent, none, unknown
        HostCore::SetSLImageShowMode(Serial, 4);
        QCOMPARE(view.frame(), stripes);
        HostCore::SetSLImageShowMode(Serial, mode);
        QCOMPARE(view.frame(), depth);
        QCOMPARE(host.showModes().of(Id), mode == 2 ? 2 : 0);
    }
    QCOMPARE(log.size(), 2);
    HostCore::SetSLImageShowMode("nobody", 1);
    QCOMPARE(log.size(), 3);
    QVERIFY(host.values().write(Id, QStringLiteral("AcquisitionMode"), QStringLiteral("Continuous")));
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

void tst_SimulatedStructuredLight::restartsReachThePanel()
{
    Viewer viewer;
    const auto row = [&] { return viewer.window.panel().findChild<QWidget *>(QStringLiteral("2D Image Show")); };
    QTRY_VERIFY(row());
    const auto *const showTypes = row()->findChild<QComboBox *>();
    QCOMPARE(showTypes->count(), 2);
    QVERIFY(viewer.host.values().write(Id, QStringLiteral("Right2DImage"), QStringLiteral("1")));
    viewer.host.listeners().raiseImport(Id);
    QTRY_COMPARE(showTypes->count(), 3);
    QVERIFY(viewer.host.values().write(Id, QStringLiteral("DeviceReset"), QString()));
    QTRY_COMPARE(showTypes->count(), 2);
}

QTEST_MAIN(tst_SimulatedStructuredLight)
#include "tst_SimulatedStructuredLight.moc"
