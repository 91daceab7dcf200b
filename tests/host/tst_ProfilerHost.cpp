// SPDX-License-Identifier: MIT
#include <QDoubleSpinBox>
#include <QPushButton>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QtTest>

#include <cmath>
#include <thread>

#include "Host/HeightAnalysis.h"
#include "Host/HostContext.h"
#include "ParamterWnd/HostCore.h"
#include "Simulation/SimulatedDevices.h"
#include "TestDevice.h"
#include "Viewer/HeightDisplay.h"
#include "Viewer/ImageView.h"
#include "Viewer/ViewerWindow.h"

namespace {

const QString Profiler = QStringLiteral("SIM-PROFILER-01");
const std::string Key = "SIM-PROFILER-01";

/// Writes down what the range was when the host said that it has new settings.
struct ImportListener final : HostCore::IImportUpdate
{
    void OnUpdate(std::string id) override
    {
        ranges.push_back(HostCore::GetCameraInfo(id, HostCore::CAM_INFO_Z_MINIMUM) + ' '
                         + HostCore::GetCameraInfo(id, HostCore::CAM_INFO_Z_MAXIMUM));
    }

    std::vector<std::string> ranges;
};

} // namespace

/// The host's side of a laser profiler, with the simulated one.
class tst_ProfilerHost : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();
    void regionsKeepThePanelsNumbers();
    void deviceFollowsMovedRegions_data();
    void deviceFollowsMovedRegions();
    void measureRangeIsLockedWhileAcquiring();
    void automaticRangeIsFoundOnce();
    void automaticRangeIsTakenBack();
    void automaticRangeTakesOneCompleteFrame();
    void correctionsLevelTheBelt_data();
    void correctionsLevelTheBelt();
    void correctionsThatFailAreLogged();
    void pictureFollowsTheSettings();
    void regionsLieBelowHeights();
    void regionsFollowTheDevice_data();
    void regionsFollowTheDevice();
    void panelRestoresTheFullHeight();
    void panelShowsTheFoundRange();

private:
    void set(const char *node, const char *value) { QCOMPARE(HostCore::SetCameraNodeValue(Key, node, value), 0); }
    double read(const char *node)
    {
        QString value;
        m_host->values().read(Profiler, QLatin1String(node), &value);
        return value.toDouble();
    }
    QRect maskOnDevice(int number);
    QRect region(int number);
    /// The node map knows it, too.
    bool hasStopped() const
    {
        return m_host->values().nodeMap(HostCore::FOCUS_CAMERA, Profiler)->GetNode("Height")->GetAccessMode()
            == GenApi::RW;
    }
    /// Waits for a frame, after which the device stops.
    void takeFrame();

    QTemporaryDir m_folder;
    std::unique_ptr<HostContext> m_host;
};

void tst_ProfilerHost::init()
{
    QFile::remove(m_folder.filePath(QStringLiteral("host.ini")));
    m_host = std::make_unique<HostContext>(HostContext::Options{m_folder.filePath(QStringLiteral("host.ini")), {}});
    for (std::unique_ptr<Device> &device : makeSimulatedDevices())
        m_host->devices().add(std::move(device));
    QVERIFY(m_host->sessions().open(Profiler));
    set("AcquisitionMode", "SingleFrame");
    set("AcquisitionLineCount", "40");
    set("BatchNumber", "10");
    set("TestPartSpeed", "0"); // the belt stands, without a part under the laser
}

void tst_ProfilerHost::cleanup()
{
    m_host.reset();
}

QRect tst_ProfilerHost::maskOnDevice(int number)
{
    set("ImageMaskerSelector", qPrintable(QStringLiteral("ImageMasker%1").arg(number - 1)));
    return {int(read("ImageMaskOffsetX")), int(read("ImageMaskOffsetY")), int(read("ImageMaskWidth")),
            int(read("ImageMaskHeight"))};
}

QRect tst_ProfilerHost::region(int number)
{
    for (const ImageRegion &one : m_host->regions().of(Profiler)) {
        if (one.number == number)
            return one.area;
    }
    return {};
}

void tst_ProfilerHost::takeFrame()
{
    bool complete = false;
    QObject receiver;
    connect(&m_host->devices(), &KnownDevices::heightReady, &receiver,
            [&](const QString &, const HeightFrame &frame) { complete |= frame.complete; });
    QVERIFY(m_host->sessions().startAcquisition(Profiler));
    QTRY_VERIFY(complete && hasStopped());
}

void tst_ProfilerHost::regionsKeepThePanelsNumbers()
{
    for (int number : {3, 0, 1}) {
        int name = number;
        bool accepted = false;
        const int result = number == 0 ? HostCore::DrawROI(Key, 0, 0, 2048, 1024, name, accepted, 0, 1)
                                       : HostCore::DrawROI(Key, 0, 0, 0, 0, name, accepted, 1, 0);
        QCOMPARE(result, 0);
        QVERIFY(accepted);
        QCOMPARE(name, number);
    }
    QCOMPARE(region(0), QRect(0, 0, 2048, 1024));
    QCOMPARE(region(1), maskOnDevice(1));
    HostCore::RomoveROI(Key, 1);
    HostCore::RomoveROI(Key, 0);
    for (int gone : {0, 1, 2})
        HostCore::RomoveROI(Key, gone); // must not take one whose handle is that number
    QCOMPARE(m_host->regions().of(Profiler).size(), 1);
    QVERIFY(!region(3).isEmpty());
    int handle = 0, unknown = 4;
    bool accepted = false;
    QCOMPARE(HostCore::DrawROI(Key, 0, 0, 10, 10, handle, accepted, 0, 0), 0);
    QTRY_VERIFY(HostCore::DrawROI(Key, 0, 0, 0, 0, unknown, accepted, 1, 0) != 0);
    QVERIFY(!accepted);
    m_host->sessions().close(Profiler);
    QTRY_VERIFY(m_host->regions().of(Profiler).isEmpty());
    QVERIFY(!m_host->regions().handleOf(Profiler, 3));
}

void tst_ProfilerHost::deviceFollowsMovedRegions_data()
{
    QTest::addColumn<int>("number");
    QTest::addColumn<QRect>("area");
    QTest::addColumn<QRect>("result");
    QTest::newRow("mask") << 2 << QRect(1380, 60, 240, 50) << QRect(1380, 60, 240, 50);
    QTest::newRow("range in the middle") << 0 << QRect(0, 300, 2048, 400) << QRect(0, 300, 2048, 400);
    QTest::newRow("range at the end, full width") << 0 << QRect(500, 900, 100, 124) << QRect(0, 900, 2048, 124);
    QTest::newRow("lowest range") << 0 << QRect(0, 10, 2048, 3) << QRect(0, 10, 2048, 16);
}

void tst_ProfilerHost::deviceFollowsMovedRegions()
{
    QFETCH(int, number);
    QFETCH(QRect, area);
    QFETCH(QRect, result);
    bool accepted = false;
    int name = number;
    set("CenterImageY", "Off");
    set("Height", "200");
    set("OffsetY", "824"); // the range has to go up before it can grow
    HostCore::DrawROI(Key, 0, 0, 0, 0, name, accepted, number ? 1 : 0, number ? 0 : 1);
    const int handle = m_host->regions().handleOf(Profiler, number).value_or(-1);
    QSignalSpy log(&m_host->log(), &HostLog::lineAdded);
    m_host->regions().move(handle, QRect(5, 5, 60, 60));
    m_host->regions().move(handle, area);
    const auto onDevice = [&] {
        return number == 0 ? QRect(0, int(read("OffsetY")), 2048, int(read("Height"))) : maskOnDevice(number);
    };
    QTRY_COMPARE(onDevice(), result);
    QTRY_COMPARE(region(number), result);
    QCOMPARE(log.size(), 0);
    HostCore::RomoveROI(Key, number);
}

void tst_ProfilerHost::measureRangeIsLockedWhileAcquiring()
{
    bool accepted = false;
    int name = 0;
    set("AcquisitionMode", "Continuous");
    set("Height", "200");
    set("OffsetY", "300");
    HostCore::DrawROI(Key, 0, 0, 2048, 1024, name, accepted, 0, 1);
    QVERIFY(m_host->sessions().startAcquisition(Profiler));
    QSignalSpy log(&m_host->log(), &HostLog::lineAdded);
    m_host->regions().move(*m_host->regions().handleOf(Profiler, 0), QRect(0, 100, 2048, 200));
    QTRY_COMPARE(region(0), QRect(0, 300, 2048, 200)); // as the device has it
    QCOMPARE(log.size(), 1);
}

void tst_ProfilerHost::automaticRangeIsFoundOnce()
{
    set("TestStrayLight", "0");
    set("TestMountingTilt", "0");
    set("TestMountingScale", "1");
    ImportListener import;
    HostCore::RegisterImportUpdateListener(&import);
    HostCore::SetCameraInfo(Key, HostCore::CAM_INFO_AUTOMATIC_Z_RANGE, "1");
    std::thread([] { HostCore::StartGrab(Key); }).join();
    QTRY_COMPARE(HostCore::GetCameraInfo(Key, HostCore::CAM_INFO_AUTOMATIC_Z_RANGE), std::string("0"));
    const std::string minimum = HostCore::GetCameraInfo(Key, HostCore::CAM_INFO_Z_MINIMUM);
    const std::string maximum = HostCore::GetCameraInfo(Key, HostCore::CAM_INFO_Z_MAXIMUM);
    const double lowest = std::stod(minimum), highest = std::stod(maximum);
    QVERIFY2(lowest > -5.2 && highest < -4.8 && lowest < highest, "the belt lies at -5 mm");
    takeFrame();
    QCOMPARE(import.ranges, std::vector<std::string>{minimum + ' ' + maximum});
    HostCore::UnRegisterImportUpdateListener(&import);
}

/// By a range of one's own, and by the end of the host.
void tst_ProfilerHost::automaticRangeIsTakenBack()
{
    HostCore::SetCameraInfo(Key, HostCore::CAM_INFO_AUTOMATIC_Z_RANGE, "1");
    HostCore::SetCameraInfo(Key, HostCore::CAM_INFO_Z_MINIMUM, "1");
    takeFrame();
    QCOMPARE(HostCore::GetCameraInfo(Key, HostCore::CAM_INFO_Z_MINIMUM), std::string("1"));
    HostCore::SetCameraInfo(Key, HostCore::CAM_INFO_AUTOMATIC_Z_RANGE, "1");
    m_host->sessions().close(Profiler);
    QTRY_VERIFY(m_host->sessions().open(Profiler));
    takeFrame();
    QCOMPARE(HostCore::GetCameraInfo(Key, HostCore::CAM_INFO_Z_MINIMUM), std::string("1"));
}

/// Parts of a frame leave the wish, a complete one ends it, even when the range stays as it was.
void tst_ProfilerHost::automaticRangeTakesOneCompleteFrame()
{
    auto *const device = new TestDevice(QStringLiteral("cam"));
    m_host->devices().add(std::unique_ptr<Device>(device));
    QVERIFY(m_host->sessions().open(QStringLiteral("cam")));
    ImportListener import;
    HostCore::RegisterImportUpdateListener(&import);
    HeightFrame frame;
    frame.width = frame.height = frame.lines = 2;
    frame.heights = {-2.0F, -1.0F, 1.0F, 2.0F};
    for (size_t imports : {1, 2}) {
        HostCore::SetCameraInfo("cam", HostCore::CAM_INFO_AUTOMATIC_Z_RANGE, "1");
        for (bool complete : {false, true, true}) {
            frame.complete = complete;
            Q_EMIT device->heightReady(frame);
            QCOMPARE(import.ranges.size(), complete ? imports : imports - 1);
            QCOMPARE(HostCore::GetCameraInfo("cam", HostCore::CAM_INFO_AUTOMATIC_Z_RANGE),
                     std::string(complete ? "0" : "1"));
        }
    }
    HostCore::UnRegisterImportUpdateListener(&import);
}

void tst_ProfilerHost::correctionsLevelTheBelt_data()
{
    QTest::addColumn<QByteArrayList>("settings"); // feature, value, feature, value...
    QTest::newRow("as mounted") << QByteArrayList();
    QTest::newRow("mirrored and moved") << QByteArrayList({"ReverseX", "1", "ZCoorOffset", "0.5"});
    QTest::newRow("corrected before, wrongly")
        << QByteArrayList({"SinData", "0.1", "CosData", "0.994987", "ZCoorScale", "1.2"});
}

void tst_ProfilerHost::correctionsLevelTheBelt()
{
    QFETCH(QByteArrayList, settings);
    for (int i = 0; i + 1 < settings.size(); i += 2)
        set(settings.at(i).constData(), settings.at(i + 1).constData());
    QDoubleSpinBox tilt, scale;
    for (QDoubleSpinBox *box : {&tilt, &scale}) {
        box->setRange(-45, 45);
        box->setDecimals(4);
    }
    takeFrame();
    HostCore::NotifyCorrection(Key, ProfilerHeights::Tilt, 0.0f, &tilt);
    QVERIFY2(std::abs(tilt.value() - 1.2) < 0.1, qPrintable(tilt.text())); // as it is mounted
    set("SinData", qPrintable(QString::number(std::sin(qDegreesToRadians(tilt.value())))));
    set("CosData", qPrintable(QString::number(std::cos(qDegreesToRadians(tilt.value())))));
    const double found = tilt.value();
    HostCore::NotifyCorrection(Key, ProfilerHeights::Tilt, 0.0f, &tilt);
    QVERIFY2(tilt.value() == found, "the profile was taken before the correction");
    takeFrame();
    HostCore::NotifyCorrection(Key, ProfilerHeights::HeightScale, 1.0f, &scale);
    set("ZCoorScale", qPrintable(scale.text()));
    double mean = 0.0, ends = 0.0; // of a profile that is right
    connect(&m_host->devices(), &KnownDevices::heightReady, this, [&](const QString &, const HeightFrame &frame) {
        const auto line = HeightAnalysis::mainLine(frame.lastProfile(), frame.firstX, frame.pitchX);
        mean = line->meanHeight;
        ends = line->slope * frame.pitchX * frame.width;
    });
    takeFrame();
    QVERIFY2(std::abs(mean - read("ZCoorOffset") - read("ZReferenceHeight")) < 0.01, qPrintable(QString::number(mean)));
    QVERIFY2(std::abs(ends) < 0.02, qPrintable(QString::number(ends)));
}

void tst_ProfilerHost::correctionsThatFailAreLogged()
{
    QDoubleSpinBox box;
    box.setValue(1.5);
    QSignalSpy log(&m_host->log(), &HostLog::lineAdded);
    HostCore::NotifyCorrection(Key, ProfilerHeights::Tilt, 1.5f, &box);
    HostCore::NotifyCorrection("nobody", ProfilerHeights::HeightScale, 1.5f, &box);
    HostCore::NotifyCorrection(Key, 2, 1.5f, &box);
    takeFrame();
    box.setRange(1.3, 1.8); // it is 1.2
    HostCore::NotifyCorrection(Key, ProfilerHeights::Tilt, 1.5f, &box);
    QCOMPARE(log.size(), 4);
    QCOMPARE(box.value(), 1.5);
}

void tst_ProfilerHost::pictureFollowsTheSettings()
{
    set("DepthDataType", "Uint32_t");
    HeightDisplay display(*m_host);
    QSignalSpy changed(&display, &HeightDisplay::changed);
    const QImage gray(4, 4, QImage::Format_Grayscale8);
    QCOMPARE(display.picture(Profiler, gray), gray);
    takeFrame();
    QVERIFY(display.shows(Profiler));
    const QImage wide = display.picture(Profiler, gray);
    QCOMPARE(wide.size(), QSize(2048, 40));
    QVERIFY(display.textAt(Profiler, {1000, 10}).contains(QLatin1String(" mm: -4.8")));
    QVERIFY(display.textAt(Profiler, {1000, 40}).isEmpty());
    HostCore::SetCameraInfo(Key, HostCore::CAM_INFO_Z_MINIMUM, "-5.5");
    HostCore::SetCameraInfo(Key, HostCore::CAM_INFO_Z_MAXIMUM, "nonsense");
    QVERIFY(display.picture(Profiler, gray).pixel(1000, 10) != wide.pixel(1000, 10));
    HostCore::SetCameraInfo(Key, HostCore::CAM_INFO_CONTOUR_SPACING, "0.002000"); // hides everything
    QCOMPARE(display.picture(Profiler, gray).size(), wide.size());
    HostCore::SetCameraInfo(Key, HostCore::CAM_INFO_CONTOUR_SPACING, "0.040000");
    HostCore::SetCameraInfo(Key, HostCore::CAM_INFO_SAMPLING_RATE, "4");
    QCOMPARE(display.picture(Profiler, gray).size(), QSize(512, 20));
    HostCore::SetCameraInfo(Key, HostCore::CAM_INFO_SAMPLING_RATE, "0");
    HostCore::SetCameraInfo(Key, HostCore::CAM_INFO_GRAY_IMAGE, "1");
    QCOMPARE(display.picture(Profiler, gray).size(), QSize(2048, 80));
    QCOMPARE(display.picture(Profiler, gray).format(), QImage::Format_Grayscale8);
    QVERIFY(display.textAt(Profiler, {1000, 10}).isEmpty());
    QCOMPARE(changed.size(), 7);
    set("ImageOutputMode", "SensorImage");
    QVERIFY(m_host->sessions().startAcquisition(Profiler));
    QTRY_VERIFY(!display.shows(Profiler));
    m_host->sessions().close(Profiler);
    QCOMPARE(display.picture(Profiler, gray), gray);
}

/// They lie on a picture of the sensor, which is below the height map and has nothing to do with it.
void tst_ProfilerHost::regionsLieBelowHeights()
{
    ViewerWindow window(*m_host);
    window.openWhenKnown(Profiler);
    window.show();
    set("ImageOutputMode", "SensorImage");
    QVERIFY(m_host->sessions().startAcquisition(Profiler));
    QTRY_VERIFY(!window.image().frame().isNull() && hasStopped());
    const QImage sensor = window.image().frame();
    set("ImageOutputMode", "HeightMap");
    takeFrame();
    ImageView &view = window.image();
    QTRY_COMPARE(view.frame().format(), QImage::Format_RGB32);
    const QRgb before = view.frame().pixel(1000, 10);
    HostCore::SetCameraInfo(Key, HostCore::CAM_INFO_Z_MINIMUM, "-5.5");
    QVERIFY(view.frame().pixel(1000, 10) != before);

    ImageView &below = window.regionView();
    QVERIFY(&below != &view && !below.isVisible());
    bool accepted = false;
    for (int name : {1, 2})
        HostCore::DrawROI(Key, 0, 0, 0, 0, name, accepted, 1, 0);
    QVERIFY(below.isVisible() && below.isCanvas());
    QCOMPARE(below.imageSize(), sensor.size());
    QCOMPARE(below.canvasPicture(), sensor);
    set("AcquisitionMode", "Continuous");
    QVERIFY(m_host->sessions().startAcquisition(Profiler));
    QTRY_VERIFY(view.framesPerSecond() > 0);
    QVERIFY(&below == &window.regionView() && below.isVisible());
    const QRect mask = maskOnDevice(2);
    const QPointF middle = QRectF(region(2)).center() * below.imageRect().width() / below.imageSize().width();
    const QPoint from = below.mapTo(&window, (below.imageRect().topLeft() + middle).toPoint());
    QTest::mousePress(window.windowHandle(), Qt::LeftButton, {}, from);
    QTest::mouseMove(window.windowHandle(), from + QPoint(20, 10));
    QTest::mouseRelease(window.windowHandle(), Qt::LeftButton, {}, from + QPoint(20, 10));
    QTRY_VERIFY(maskOnDevice(2).x() > mask.x() && maskOnDevice(2).y() > mask.y());
    QCOMPARE(view.regions().selected(), 0);
    for (int name : {1, 2})
        HostCore::RomoveROI(Key, name);
    QVERIFY(!below.isVisible());
}

/// Other settings of the device put its regions elsewhere.
void tst_ProfilerHost::regionsFollowTheDevice_data()
{
    QTest::addColumn<QByteArray>("command");
    QTest::newRow("user set") << QByteArray("UserSetLoad");
    QTest::newRow("reset") << QByteArray("DeviceReset");
}

void tst_ProfilerHost::regionsFollowTheDevice()
{
    QFETCH(QByteArray, command);
    const QRect usual = maskOnDevice(2);
    set("ImageMaskOffsetX", "77");
    int name = 2;
    bool accepted = false;
    HostCore::DrawROI(Key, 0, 0, 0, 0, name, accepted, 1, 0);
    QCOMPARE(region(2), usual.translated(77 - usual.x(), 0));
    set("ImageMaskerSelector", "ImageMasker2");
    set("UserSetSelector", "Default");
    QSignalSpy log(&m_host->log(), &HostLog::lineAdded);
    set(command.constData(), "");
    QTRY_COMPARE(region(2), usual);
    QString selected;
    m_host->values().read(Profiler, QStringLiteral("ImageMaskerSelector"), &selected);
    QVERIFY2(selected != QStringLiteral("ImageMasker1"), "which was selected only to be asked");
    HostCore::RomoveROI(Key, 3); // a switch that has followed the device has no region
    QCOMPARE(log.size(), 0);
}

void tst_ProfilerHost::panelShowsTheFoundRange()
{
    ViewerWindow window(*m_host);
    window.openWhenKnown(Profiler);
    const auto shown = [&] {
        const auto *const row = window.findChild<QWidget *>(QStringLiteral("ZUpSizeInfo"));
        const auto *const field = row ? row->findChild<QDoubleSpinBox *>() : nullptr;
        return field ? field->value() : 0.0;
    };
    set("AcquisitionMode", "Continuous");
    QVERIFY(m_host->sessions().startAcquisition(Profiler)); // the panel hears of it, and of the device
    QTRY_COMPARE(shown(), 9.0);
    HostCore::SetCameraInfo(Key, HostCore::CAM_INFO_AUTOMATIC_Z_RANGE, "1");
    QTRY_VERIFY(shown() != 9.0);
    QVERIFY(std::abs(shown() - std::stod(HostCore::GetCameraInfo(Key, HostCore::CAM_INFO_Z_MAXIMUM))) <= 0.005001);
}

/// Not while the device acquires: the switch goes back.
void tst_ProfilerHost::panelRestoresTheFullHeight()
{
    set("AcquisitionMode", "Continuous");
    set("Height", "300");
    set("OffsetY", "600");
    m_host->sessions().close(Profiler);
    ViewerWindow window(*m_host);
    QTRY_VERIFY(m_host->sessions().open(Profiler));
    const auto measureRange = [&] {
        const auto *const row = window.findChild<QWidget *>(QStringLiteral("GrabRangeCompression"));
        return row ? row->findChild<QPushButton *>() : nullptr;
    };
    QTRY_VERIFY(measureRange() && measureRange()->isChecked());
    QCOMPARE(region(0), QRect(0, 600, 2048, 300));
    QVERIFY(m_host->sessions().startAcquisition(Profiler));
    QSignalSpy log(&m_host->log(), &HostLog::lineAdded);
    measureRange()->click();
    QVERIFY(measureRange()->isChecked() && !region(0).isEmpty());
    QCOMPARE(log.size(), 1);
    m_host->sessions().stopAcquisition(Profiler);
    measureRange()->click();
    QVERIFY(!measureRange()->isChecked() && region(0).isEmpty());
    QCOMPARE(read("OffsetY"), 0.0);
    QCOMPARE(read("Height"), 1024.0);
    QCOMPARE(log.size(), 1);
}

QTEST_MAIN(tst_ProfilerHost)
#include "tst_ProfilerHost.moc"
