// SPDX-License-Identifier: MIT
#include <QDoubleSpinBox>
#include <QPushButton>
#include <QtTest>

#include <cmath>
#include <thread>

#include "Host/HeightAnalysis.h"
#include "TestHost.h"
#include "Viewer/HeightDisplay.h"
#include "Viewer/ImageView.h"
#include "Viewer/ViewerWindow.h"

namespace {

const char *const Id = "SIM-PROFILER-01";
const QString Profiler = QStringLiteral("SIM-PROFILER-01");
const std::string Key = "SIM-PROFILER-01";

/// Writes down what the range was when the host said that it has new settings.
struct ImportListener final : HostCore::IImportUpdate
{
    ImportListener() { HostCore::RegisterImportUpdateListener(this); }
    ~ImportListener() { HostCore::UnRegisterImportUpdateListener(this); }

    void OnUpdate(std::string id) override
    {
        ranges.push_back(HostCore::GetCameraInfo(id, HostCore::CAM_INFO_Z_MINIMUM) + ' '
                         + HostCore::GetCameraInfo(id, HostCore::CAM_INFO_Z_MAXIMUM));
    }

    std::vector<std::string> ranges;
};

void setInfo(HostCore::CAM_INFO item, const char *value)
{
    HostCore::SetCameraInfo(Key, item, value);
}

std::string info(HostCore::CAM_INFO item)
{
    return HostCore::GetCameraInfo(Key, item);
}

/// As the panel does. True when the host answers so in every way.
bool draw(int number)
{
    int name = number;
    bool isAccepted = false;
    const int result = HostCore::DrawROI(Key, 0, 0, 0, 0, name, isAccepted, number ? 1 : 0, number ? 0 : 1);
    return result == 0 && isAccepted && name == number;
}

} // namespace

/// The host's side of a laser profiler, with the simulated one.
class tst_ProfilerHost : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        m_host.renewSimulated();
        QVERIFY(m_host.open(Id));
        set("AcquisitionMode=SingleFrame AcquisitionLineCount=40 BatchNumber=10");
        set("TestPartSpeed=0"); // the belt stands, without a part under the laser
    }
    void cleanup() { m_host.end(); }

    void regionsKeepThePanelsNumbers()
    {
        for (int number : {3, 0, 1})
            QVERIFY(draw(number));
        QCOMPARE(region(0), QRect(0, 0, 2048, 1024));
        QCOMPARE(region(1), maskOnDevice(1));
        HostCore::RomoveROI(Key, 1);
        HostCore::RomoveROI(Key, 0);
        for (int gone : {0, 1, 2})
            HostCore::RomoveROI(Key, gone); // must not take one whose handle is that number
        QCOMPARE(m_host->regions().of(Profiler).size(), 1);
        QVERIFY(!region(3).isEmpty());
        int handle = 0;
        bool accepted = false;
        QCOMPARE(HostCore::DrawROI(Key, 0, 0, 10, 10, handle, accepted, 0, 0), 0);
        QVERIFY(!draw(4));
        m_host.close(Id);
        QTRY_VERIFY(m_host->regions().of(Profiler).isEmpty());
        QVERIFY(!m_host->regions().handleOf(Profiler, 3));
    }

    void movedRegionsAreAppliedToTheDevice()
    {
        const struct
        {
            const char *name;
            int number;
            QRect area, result;
        } rows[] = {{"mask", 2, {1380, 60, 240, 50}, {1380, 60, 240, 50}},
                    {"range in the middle", 0, {0, 300, 2048, 400}, {0, 300, 2048, 400}},
                    {"range at the end, full width", 0, {500, 900, 100, 124}, {0, 900, 2048, 124}},
                    {"lowest range", 0, {0, 10, 2048, 3}, {0, 10, 2048, 16}}};
        for (const auto &row : rows) {
            set("CenterImageY=Off Height=16 OffsetY=824 Height=200"); // the range has to go up before it can grow
            QVERIFY2(draw(row.number), row.name);
            m_host.log.clear();
            const int handle = m_host->regions().handleOf(Profiler, row.number).value_or(-1);
            m_host->regions().move(handle, QRect(5, 5, 60, 60));
            m_host->regions().move(handle, row.area);
            const auto onDevice = [&] {
                return row.number ? maskOnDevice(row.number)
                                  : QRect(0, int(read("OffsetY")), 2048, int(read("Height")));
            };
            QTRY_VERIFY2(onDevice() == row.result, row.name);
            QTRY_VERIFY2(region(row.number) == row.result, row.name);
            QVERIFY2(m_host.log.isEmpty(), row.name);
            HostCore::RomoveROI(Key, row.number);
        }
    }

    void automaticRangeIsFoundOnce()
    {
        set("TestStrayLight=0 TestMountingTilt=0 TestMountingScale=1");
        const ImportListener import;
        setInfo(HostCore::CAM_INFO_AUTOMATIC_Z_RANGE, "1");
        std::thread([] { HostCore::StartGrab(Key); }).join();
        QTRY_COMPARE(info(HostCore::CAM_INFO_AUTOMATIC_Z_RANGE), std::string("0"));
        const std::string minimum = info(HostCore::CAM_INFO_Z_MINIMUM), maximum = info(HostCore::CAM_INFO_Z_MAXIMUM);
        const double lowest = std::stod(minimum), highest = std::stod(maximum);
        QVERIFY2(lowest > -5.2 && highest < -4.8 && lowest < highest, "the belt lies at -5 mm");
        takeFrame();
        QCOMPARE(import.ranges, std::vector<std::string>{minimum + ' ' + maximum});
    }

    /// By a range of one's own, and by the end of the host.
    void automaticRangeIsTakenBack()
    {
        setInfo(HostCore::CAM_INFO_AUTOMATIC_Z_RANGE, "1");
        setInfo(HostCore::CAM_INFO_Z_MINIMUM, "1");
        takeFrame();
        QCOMPARE(info(HostCore::CAM_INFO_Z_MINIMUM), std::string("1"));
        setInfo(HostCore::CAM_INFO_AUTOMATIC_Z_RANGE, "1");
        m_host.close(Id);
        QTRY_VERIFY(m_host.open(Id));
        takeFrame();
        QCOMPARE(info(HostCore::CAM_INFO_Z_MINIMUM), std::string("1"));
    }

    /// Parts of a frame leave the request, a complete one ends it, even when the range stays as it was.
    void automaticRangeTakesOneCompleteFrame()
    {
        TestDevice *const device = m_host.add("cam");
        QVERIFY(m_host.open("cam"));
        const ImportListener import;
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
    }

    void correctionsLevelTheBelt()
    {
        // as mounted; mirrored and moved; corrected before, wrongly
        for (const char *settings :
             {"ReverseX=0", "ReverseX=1 ZCoorOffset=0.5", "SinData=0.1 CosData=0.994987 ZCoorScale=1.2"}) {
            init();
            set(settings);
            QDoubleSpinBox tilt, scale;
            for (QDoubleSpinBox *box : {&tilt, &scale}) {
                box->setRange(-45, 45);
                box->setDecimals(4);
            }
            takeFrame();
            HostCore::NotifyCorrection(Key, ProfilerHeights::Tilt, 0.0F, &tilt);
            QVERIFY2(std::abs(tilt.value() - 1.2) < 0.1, qPrintable(tilt.text())); // as it is mounted
            const double found = tilt.value(), radians = qDegreesToRadians(found);
            set("SinData=" + QByteArray::number(std::sin(radians))
                + " CosData=" + QByteArray::number(std::cos(radians)));
            HostCore::NotifyCorrection(Key, ProfilerHeights::Tilt, 0.0F, &tilt);
            QVERIFY2(tilt.value() == found, "the profile was taken before the correction");
            takeFrame();
            HostCore::NotifyCorrection(Key, ProfilerHeights::HeightScale, 1.0F, &scale);
            set("ZCoorScale=" + scale.text().toUtf8());
            double mean = 0.0, ends = 0.0; // of a profile that is right
            connect(&m_host->devices(), &KnownDevices::heightReady, &scale,
                    [&](const QString &, const HeightFrame &frame) {
                        const auto line = HeightAnalysis::mainLine(frame.lastProfile(), frame.firstX, frame.pitchX);
                        mean = line->meanHeight;
                        ends = line->slope * frame.pitchX * frame.width;
                    });
            takeFrame();
            QVERIFY2(std::abs(mean - read("ZCoorOffset") - read("ZReferenceHeight")) < 0.01,
                     qPrintable(QString::number(mean)));
            QVERIFY2(std::abs(ends) < 0.02, qPrintable(QString::number(ends)));
        }
    }

    void correctionsThatFailAreLogged()
    {
        QDoubleSpinBox box;
        box.setValue(1.5);
        HostCore::NotifyCorrection(Key, ProfilerHeights::Tilt, 1.5F, &box);
        HostCore::NotifyCorrection("nobody", ProfilerHeights::HeightScale, 1.5F, &box);
        HostCore::NotifyCorrection(Key, 2, 1.5F, &box);
        takeFrame();
        box.setRange(1.3, 1.8); // it is 1.2
        HostCore::NotifyCorrection(Key, ProfilerHeights::Tilt, 1.5F, &box);
        QCOMPARE(m_host.log.size(), 4);
        QCOMPARE(box.value(), 1.5);
    }

    void picturesShowTheSettings()
    {
        set("DepthDataType=Uint32_t");
        HeightDisplay display(*m_host);
        const QSignalSpy changed(&display, &HeightDisplay::changed);
        const QImage gray(4, 4, QImage::Format_Grayscale8);
        const auto picture = [&] { return display.picture(Profiler, gray); };
        QCOMPARE(picture(), gray);
        takeFrame();
        QVERIFY(display.shows(Profiler));
        const QImage wide = picture();
        QCOMPARE(wide.size(), QSize(2048, 40));
        QVERIFY(display.textAt(Profiler, {1000, 10}).contains(QLatin1String(" mm: -4.8")));
        QVERIFY(display.textAt(Profiler, {1000, 40}).isEmpty());
        setInfo(HostCore::CAM_INFO_Z_MINIMUM, "-5.5");
        setInfo(HostCore::CAM_INFO_Z_MAXIMUM, "nonsense");
        QVERIFY(picture().pixel(1000, 10) != wide.pixel(1000, 10));
        setInfo(HostCore::CAM_INFO_CONTOUR_SPACING, "0.002000"); // hides everything
        QCOMPARE(picture().size(), wide.size());
        setInfo(HostCore::CAM_INFO_CONTOUR_SPACING, "0.040000");
        setInfo(HostCore::CAM_INFO_SAMPLING_RATE, "4");
        QCOMPARE(picture().size(), QSize(512, 20));
        setInfo(HostCore::CAM_INFO_SAMPLING_RATE, "0");
        setInfo(HostCore::CAM_INFO_GRAY_IMAGE, "1");
        QCOMPARE(picture().size(), QSize(2048, 80));
        QCOMPARE(picture().format(), QImage::Format_Grayscale8);
        QVERIFY(display.textAt(Profiler, {1000, 10}).isEmpty());
        QCOMPARE(changed.size(), 7);
        set("ImageOutputMode=SensorImage");
        QVERIFY(m_host.acquire(Id));
        QTRY_VERIFY(!display.shows(Profiler));
        m_host.close(Id);
        QCOMPARE(picture(), gray);
    }

    /// They lie on a picture of the sensor, which is below the height map and has nothing to do with it.
    void regionsLieBelowHeights()
    {
        ViewerWindow window(*m_host);
        window.openWhenKnown(Profiler);
        window.show();
        set("ImageOutputMode=SensorImage");
        QVERIFY(m_host.acquire(Id));
        QTRY_VERIFY(!window.image().frame().isNull() && hasStopped());
        const QImage sensor = window.image().frame();
        set("ImageOutputMode=HeightMap");
        takeFrame();
        ImageView &view = window.image();
        QTRY_COMPARE(view.frame().format(), QImage::Format_RGB32);
        const QRgb before = view.frame().pixel(1000, 10);
        setInfo(HostCore::CAM_INFO_Z_MINIMUM, "-5.5");
        QVERIFY(view.frame().pixel(1000, 10) != before);

        ImageView &below = window.regionView();
        QVERIFY(&below != &view && !below.isVisible());
        QVERIFY(draw(1) && draw(2));
        QVERIFY(below.isVisible() && below.isCanvas());
        QCOMPARE(below.imageSize(), sensor.size());
        QCOMPARE(below.canvasPicture(), sensor);
        set("AcquisitionMode=Continuous");
        QVERIFY(m_host.acquire(Id));
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
    void regionsShowTheDevice()
    {
        for (const char *command : {"UserSetLoad=", "DeviceReset="}) {
            const QRect usual = maskOnDevice(2);
            set("ImageMaskOffsetX=77");
            QVERIFY(draw(2));
            QCOMPARE(region(2), usual.translated(77 - usual.x(), 0));
            set("ImageMaskerSelector=ImageMasker2 UserSetSelector=Default");
            m_host.log.clear();
            const ImportListener import;
            set(command);
            QTRY_VERIFY2(region(2) == usual, command);
            QCOMPARE(import.ranges.size(), size_t(command == QByteArray("DeviceReset=") ? 1 : 0)); // of a restart
            QString selected;
            m_host->values().read(Profiler, text("ImageMaskerSelector"), &selected);
            QVERIFY2(selected != text("ImageMasker1"), "which was selected only to be asked");
            HostCore::RomoveROI(Key, 2);
            HostCore::RomoveROI(Key, 3); // a switch that shows the device's state has no region
            QCOMPARE(m_host.log, QStringList());
        }
    }

    /// Not while the device acquires: the switch goes back.
    void panelHandlesTheMeasureRange()
    {
        set("AcquisitionMode=Continuous Height=300 OffsetY=600");
        m_host.close(Id);
        ViewerWindow window(*m_host);
        QTRY_VERIFY(m_host.open(Id));
        const auto measureRange = [&] {
            const auto *const row = window.findChild<QWidget *>(QStringLiteral("GrabRangeCompression"));
            return row ? row->findChild<QPushButton *>() : nullptr;
        };
        QTRY_VERIFY(measureRange() && measureRange()->isChecked());
        QCOMPARE(region(0), QRect(0, 600, 2048, 300));
        QVERIFY(m_host.acquire(Id));
        m_host.log.clear();
        measureRange()->click();
        QVERIFY(measureRange()->isChecked() && !region(0).isEmpty());
        QCOMPARE(m_host.log.size(), 1);
        m_host->regions().move(*m_host->regions().handleOf(Profiler, 0), QRect(0, 100, 2048, 300));
        QTRY_COMPARE(region(0), QRect(0, 600, 2048, 300)); // as the device has it
        QCOMPARE(m_host.log.size(), 2);
        m_host->sessions().stopAcquisition(Profiler);
        measureRange()->click();
        QVERIFY(!measureRange()->isChecked() && region(0).isEmpty());
        QCOMPARE(read("OffsetY"), 0.0);
        QCOMPARE(read("Height"), 1024.0);
        QCOMPARE(m_host.log.size(), 2);
        set("Height=300");
        m_host->listeners().raiseImport(Profiler); // has the panel look again
        QTRY_VERIFY(measureRange()->isChecked());
    }

private:
    void set(const QByteArray &words) { m_host.set(Id, words); }
    double read(const char *node) { return m_host.number(Id, node); }
    QRect maskOnDevice(int number)
    {
        set("ImageMaskerSelector=ImageMasker" + QByteArray::number(number - 1));
        return {int(read("ImageMaskOffsetX")), int(read("ImageMaskOffsetY")), int(read("ImageMaskWidth")),
                int(read("ImageMaskHeight"))};
    }
    QRect region(int number)
    {
        const auto handle = m_host->regions().handleOf(Profiler, number);
        return handle ? m_host->regions().region(*handle).area : QRect();
    }
    /// The node map knows it, too.
    bool hasStopped() { return m_host.device(Id)->nodeMap()->GetNode("Height")->GetAccessMode() == GenApi::RW; }
    /// Waits for a frame, after which the device stops.
    void takeFrame()
    {
        bool complete = false;
        QObject receiver;
        connect(&m_host->devices(), &KnownDevices::heightReady, &receiver,
                [&](const QString &, const HeightFrame &frame) { complete |= frame.complete; });
        QVERIFY(m_host.acquire(Id));
        QTRY_VERIFY(complete && hasStopped());
    }

    TestHost m_host;
};

QTEST_MAIN(tst_ProfilerHost)
#include "tst_ProfilerHost.moc"
