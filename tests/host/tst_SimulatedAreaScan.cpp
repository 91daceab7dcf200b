// SPDX-License-Identifier: MIT
#include <cmath>

#include <QtTest>

#include "Features/NodeText.h"
#include "Simulation/Firmware.h"
#include "Simulation/ImageModel.h"
#include "Simulation/Picture.h"
#include "host/OpenDevice.h"

namespace {

/// The features that the curated pages of area-scan cameras show.
struct PageFeature
{
    const char *name;
    GenApi::EInterfaceType type;
    GenApi::EAccessMode access; ///< right after opening
};

const PageFeature PageFeatures[] = {
    {"AcquisitionFrameRateEnable", GenApi::intfIBoolean, GenApi::RW},
    {"ResultingFrameRate", GenApi::intfIFloat, GenApi::RO},
    {"AcquisitionFrameRate", GenApi::intfIFloat, GenApi::RW},
    {"ExposureAuto", GenApi::intfIEnumeration, GenApi::RW},
    {"ExposureTime", GenApi::intfIFloat, GenApi::RW},
    {"GainAuto", GenApi::intfIEnumeration, GenApi::RW},
    {"Gain", GenApi::intfIFloat, GenApi::RW},
    {"GammaEnable", GenApi::intfIBoolean, GenApi::RW},
    {"Gamma", GenApi::intfIFloat, GenApi::NA},
    {"Brightness", GenApi::intfIInteger, GenApi::RW},
    {"Contrast", GenApi::intfIInteger, GenApi::RW},
    {"GevSCPSPacketSize", GenApi::intfIInteger, GenApi::RW},
    {"GevSCPD", GenApi::intfIInteger, GenApi::RW},
    {"TriggerSelector", GenApi::intfIEnumeration, GenApi::RW},
    {"TriggerMode", GenApi::intfIEnumeration, GenApi::RW},
    {"TriggerSource", GenApi::intfIEnumeration, GenApi::RW},
    {"TriggerDelay", GenApi::intfIFloat, GenApi::RW},
    {"TriggerSoftware", GenApi::intfICommand, GenApi::WO},
    {"LineSelector", GenApi::intfIEnumeration, GenApi::RW},
    {"LineMode", GenApi::intfIEnumeration, GenApi::RW},
    {"LineSource", GenApi::intfIEnumeration, GenApi::NA},
    {"LineDebouncerTime", GenApi::intfIFloat, GenApi::RW},
    {"PixelFormat", GenApi::intfIEnumeration, GenApi::RW},
    {"Width", GenApi::intfIInteger, GenApi::RW},
    {"Height", GenApi::intfIInteger, GenApi::RW},
    {"OffsetX", GenApi::intfIInteger, GenApi::RW},
    {"OffsetY", GenApi::intfIInteger, GenApi::RW},
    {"ReverseX", GenApi::intfIBoolean, GenApi::RW},
    {"ReverseY", GenApi::intfIBoolean, GenApi::RW},
    {"UserSetSelector", GenApi::intfIEnumeration, GenApi::RW},
    {"UserSetLoad", GenApi::intfICommand, GenApi::WO},
    {"UserSetSave", GenApi::intfICommand, GenApi::RW},
    {"UserSetDefault", GenApi::intfIEnumeration, GenApi::RW},
};

QStringList entries(const GenApi::CEnumerationPtr &enumeration)
{
    GenApi::StringList_t names;
    enumeration->GetSymbolics(names);
    QStringList result;
    for (const GenICam::gcstring &name : names)
        result << QString::fromUtf8(name.c_str());
    return result;
}

/// Gray levels of a picture drawn with these settings: mean and standard deviation.
struct Levels
{
    explicit Levels(const PictureSettings &settings)
    {
        const QImage image = Picture().draw(settings);
        const double count = image.width() * image.height();
        double squares = 0.0;
        for (int y = 0; y < image.height(); ++y) {
            for (int x = 0; x < image.width(); ++x) {
                const double level = qGray(image.pixel(x, y));
                mean += level / count;
                squares += level * level / count;
            }
        }
        spread = std::sqrt(std::max(0.0, squares - mean * mean));
    }

    double mean = 0.0;
    double spread = 0.0;
};

double meanLevel(const PictureSettings &settings)
{
    return Levels(settings).mean;
}

/// What the device would take a picture with, at one moment.
PictureSettings settingsOf(const OpenDevice &device)
{
    return device->inside().inspect(
        [](const RegisterMemory &memory) { return PictureSettings::fromRegisters(memory, 0); });
}

PictureSettings smallScene()
{
    PictureSettings settings;
    settings.sensor = settings.reducedSensor = QSize(256, 128);
    settings.region = QRect(QPoint(0, 0), settings.sensor);
    return settings;
}

} // namespace

class tst_SimulatedAreaScan : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void pageFeaturesExist();
    void selectorsShowTheirSelection_data();
    void selectorsShowTheirSelection();
    void sizesAndOffsetsLimitEachOther();
    void binningResizesTheImage();
    void modesSwitchAvailability_data();
    void modesSwitchAvailability();
    void entriesComeAndGo();
    void userSetsSaveAndLoad();
    void theStartSetIsLoadedAtTheStart();
    void resultingFrameRateIsWhatTheCameraDoes_data();
    void resultingFrameRateIsWhatTheCameraDoes();
    void autoExposureMovesByItself();
    void pictureFollowsTheLight();
    void pictureIsCutAndFlipped();
    void featuresChangeThePicture_data();
    void featuresChangeThePicture();
    void everyPixelFormatHasAPicture();
};

void tst_SimulatedAreaScan::pageFeaturesExist()
{
    const OpenDevice device("SIM-AREA-01");
    for (const PageFeature &feature : PageFeatures) {
        const GenApi::INode *const node = device.node(feature.name);
        QVERIFY2(node && node->IsFeature(), feature.name);
        QVERIFY2(node->GetPrincipalInterfaceType() == feature.type, feature.name);
        QVERIFY2(node->GetAccessMode() == feature.access, feature.name);
        QVERIFY2(node->GetVisibility() < GenApi::Invisible, feature.name);
    }
}

void tst_SimulatedAreaScan::selectorsShowTheirSelection_data()
{
    QTest::addColumn<QByteArray>("selector");
    QTest::addColumn<QByteArray>("feature");
    QTest::addColumn<QByteArrayList>("positions");
    QTest::addColumn<QByteArrayList>("values");
    QTest::newRow("line") << QByteArray("LineSelector") << QByteArray("LineMode")
                          << QByteArrayList{"Line0", "Line2", "Line3"} << QByteArrayList{"Input", "Output", "Output"};
    QTest::newRow("trigger") << QByteArray("TriggerSelector") << QByteArray("TriggerMode")
                             << QByteArrayList{"FrameStart", "FrameBurstStart"} << QByteArrayList{"Off", "On"};
    QTest::newRow("delay") << QByteArray("TriggerSelector") << QByteArray("TriggerDelay")
                           << QByteArrayList{"FrameStart", "AcquisitionStart"} << QByteArrayList{"12.5", "300.0"};
    QTest::newRow("gain") << QByteArray("GainSelector") << QByteArray("Gain")
                          << QByteArrayList{"AnalogAll", "DigitalAll"} << QByteArrayList{"6.00", "1.50"};
    QTest::newRow("knee") << QByteArray("MultiSlopeKneePointSelector") << QByteArray("MultiSlopeExposureLimit")
                          << QByteArrayList{"0", "2"} << QByteArrayList{"40", "99"};
    QTest::newRow("table") << QByteArray("LUTIndex") << QByteArray("LUTValue") << QByteArrayList{"0", "255"}
                           << QByteArrayList{"17", "4095"};
}

void tst_SimulatedAreaScan::selectorsShowTheirSelection()
{
    QFETCH(QByteArray, selector);
    QFETCH(QByteArray, feature);
    QFETCH(QByteArrayList, positions);
    QFETCH(QByteArrayList, values);
    const OpenDevice device("SIM-AREA-01");
    device.set("MultiSlopeMode", "Manual");
    for (int i = 0; i < positions.size(); ++i) {
        device.set(selector.constData(), positions[i].constData());
        device.set(feature.constData(), values[i].constData());
    }
    for (int i = 0; i < positions.size(); ++i) {
        device.set(selector.constData(), positions[i].constData());
        const GenApi::CValuePtr value = device.node(feature.constData());
        QCOMPARE(QByteArray(value->ToString().c_str()), values[i]);
    }
}

void tst_SimulatedAreaScan::sizesAndOffsetsLimitEachOther()
{
    const OpenDevice device("SIM-AREA-01");
    QCOMPARE(device.integer("OffsetX")->GetMax(), int64_t(0));
    device.set("Width", "640");
    QCOMPARE(device.integer("OffsetX")->GetMax(), int64_t(2448 - 640));
    device.set("OffsetX", "104");
    QCOMPARE(device.integer("Width")->GetMax(), int64_t(2448 - 104));
    QVERIFY(!device.refusal("Width", "2352").isEmpty());
    QVERIFY(!device.refusal("Width", "641").isEmpty());
    device.set("Height", "480");
    QCOMPARE(device.integer("OffsetY")->GetMax(), int64_t(2048 - 480));
    QCOMPARE(device.integer("PayloadSize")->GetValue(), int64_t(640 * 480));
    for (const char *offset : {"OffsetY", "OffsetX"})
        device.set(offset, "0");
    QCOMPARE(device.integer("Height")->GetMax(), int64_t(2048));
    QCOMPARE(device.integer("Width")->GetMax(), int64_t(2448));
}

void tst_SimulatedAreaScan::binningResizesTheImage()
{
    const OpenDevice device("SIM-AREA-01");
    device.setAll("Width=640 OffsetX=800 DecimationHorizontal=2");
    QCOMPARE(device.integer("Width")->GetValue(), int64_t(1224));
    device.set("BinningHorizontal", "4");
    QVERIFY(!GenApi::IsAvailable(device.node("DecimationHorizontal")));
    QCOMPARE(device.integer("WidthMax")->GetValue(), int64_t(608));
    QCOMPARE(device.integer("Width")->GetValue(), int64_t(608));
    QCOMPARE(device.integer("OffsetX")->GetValue(), int64_t(0));
    QCOMPARE(device.integer("Height")->GetValue(), int64_t(2048));
    device.set("BinningHorizontal", "1");
    QCOMPARE(device.text("DecimationHorizontal"), QStringLiteral("1"));
    QCOMPARE(device.integer("Width")->GetMax(), int64_t(2448));
}

void tst_SimulatedAreaScan::modesSwitchAvailability_data()
{
    QTest::addColumn<QByteArray>("mode");
    QTest::addColumn<QByteArray>("off");
    QTest::addColumn<QByteArray>("on");
    QTest::addColumn<QByteArray>("feature");
    const auto row = [](const char *mode, const char *off, const char *on, const char *feature) {
        QTest::newRow(feature) << QByteArray(mode) << QByteArray(off) << QByteArray(on) << QByteArray(feature);
    };
    row("GammaEnable", "0", "1", "Gamma");
    row("AcquisitionFrameRateEnable", "0", "1", "AcquisitionFrameRate");
    row("AcquisitionMode", "Continuous", "MultiFrame", "AcquisitionFrameCount");
    row("LineSelector", "Line0", "Line2", "LineSource");
    row("LineSelector", "Line2", "Line0", "LineDebouncerTime");
    row("TriggerSource", "Software", "Line1", "TriggerActivation");
    row("ChunkModeActive", "0", "1", "ChunkExposureTime");
    row("ImageCompressionMode", "Off", "JPEG", "ImageCompressionQuality");
    row("DeviceLinkThroughputLimitMode", "Off", "On", "DeviceLinkThroughputLimit");
    row("EncoderMode", "Off", "FourPhase", "EncoderReset");
}

void tst_SimulatedAreaScan::modesSwitchAvailability()
{
    QFETCH(QByteArray, mode);
    QFETCH(QByteArray, off);
    QFETCH(QByteArray, on);
    QFETCH(QByteArray, feature);
    const OpenDevice device("SIM-AREA-01");
    for (int round = 0; round < 2; ++round) {
        device.set(mode.constData(), on.constData());
        QVERIFY(GenApi::IsAvailable(device.node(feature.constData())));
        device.set(mode.constData(), off.constData());
        QCOMPARE(device.access(feature.constData()), GenApi::NA);
    }
}

void tst_SimulatedAreaScan::entriesComeAndGo()
{
    const OpenDevice device("SIM-AREA-01");
    const GenApi::CEnumerationPtr format = device.enumeration("PixelFormat");
    QVERIFY(!entries(format).contains(QStringLiteral("Mono12")));
    device.set("SensorDigitizationBits", "Bpp12");
    QVERIFY(entries(format).contains(QStringLiteral("Mono12")));
    device.set("PixelFormat", "Mono12");
    QCOMPARE(device.text("PixelSize"), QStringLiteral("Bpp16"));
    QCOMPARE(device.integer("PixelDynamicRangeMax")->GetValue(), int64_t(4095));
    device.set("SensorDigitizationBits", "Bpp10");
    QCOMPARE(QByteArray(format->ToString().c_str()), QByteArray("Mono8"));
    QVERIFY(!entries(format).contains(QStringLiteral("Mono12")));
    const OpenDevice mono("SIM-AREA-02");
    QVERIFY(!entries(mono.enumeration("PixelFormat")).contains(QStringLiteral("RGB8")));
}

void tst_SimulatedAreaScan::userSetsSaveAndLoad()
{
    const OpenDevice device("SIM-AREA-01");
    device.set("UserSetSelector", "UserSet0");
    QVERIFY_EXCEPTION_THROWN(device.command("UserSetLoad")->Execute(), GenICam::GenericException);
    device.setAll("ExposureTime=2500 Width=1024 LineSelector=Line3 LineMode=Output");
    device.command("UserSetSave")->Execute();
    QTRY_VERIFY(device.command("UserSetSave")->IsDone());

    device.set("UserSetSelector", "Default");
    QVERIFY_EXCEPTION_THROWN(device.command("UserSetSave")->Execute(), GenICam::GenericException);
    device.command("UserSetLoad")->Execute();
    QCOMPARE(device.number("ExposureTime")->GetValue(), 10000.0);
    QCOMPARE(device.integer("Width")->GetValue(), int64_t(2448));
    QCOMPARE(device.integer("OffsetX")->GetMax(), int64_t(0));
    QCOMPARE(QByteArray(device.enumeration("LineMode")->ToString().c_str()), QByteArray("Input"));

    device.set("UserSetSelector", "UserSet0");
    device.command("UserSetLoad")->Execute();
    QCOMPARE(device.number("ExposureTime")->GetValue(), 2500.0);
    QCOMPARE(device.integer("Width")->GetValue(), int64_t(1024));
    QCOMPARE(QByteArray(device.enumeration("LineMode")->ToString().c_str()), QByteArray("Output"));
}

void tst_SimulatedAreaScan::theStartSetIsLoadedAtTheStart()
{
    const OpenDevice device("SIM-AREA-01");
    device.setAll("UserSetSelector=UserSet1 Gain=9");
    device.command("UserSetSave")->Execute();
    device.setAll("UserSetDefault=UserSet1 Gain=3");
    device.command("DeviceReset")->Execute();
    QTRY_COMPARE(device.number("Gain")->GetValue(), 9.0);
    QCOMPARE(device.text("UserSetDefault"), QStringLiteral("UserSet1"));
}

void tst_SimulatedAreaScan::resultingFrameRateIsWhatTheCameraDoes_data()
{
    QTest::addColumn<double>("rate");
    constexpr double Packets = 1464.0 / 1500.0; // of the link is left for images
    constexpr double Image = 2448.0 * 2048.0;
    const auto row = [](const char *settings, double rate) { QTest::newRow(settings) << rate; };
    row("AcquisitionFrameRate=5", 5.0);
    row("AcquisitionFrameRateEnable=0", 125e6 * Packets / Image);
    row("AcquisitionFrameRateEnable=0 Width=64", 1e6 / (2048 * 10 + 400)); // the sensor
    row("ExposureTime=199950", 5.0);
    row("DeviceLinkThroughputLimitMode=On DeviceLinkThroughputLimit=10000000", 1e7 * Packets / Image);
    row("AcquisitionFrameRateEnable=0 GevSCPSPacketSize=576", 125e6 * 540 / 576 / Image);
    row("GevSCPD=1000", 1464 / (1500 / 125e6 + 8e-6) / Image); // pauses of 8 us
    row("Height=512 AcquisitionFrameRate=5 TriggerMode=On", 125e6 * Packets / (2448 * 512));
    row("AcquisitionFrameRate=5 TriggerSelector=FrameBurstStart TriggerMode=On", 5.0);
}

void tst_SimulatedAreaScan::resultingFrameRateIsWhatTheCameraDoes()
{
    QFETCH(double, rate);
    const OpenDevice device("SIM-AREA-01");
    device.setAll(QTest::currentDataTag());
    QCOMPARE(device.number("ResultingFrameRate")->GetValue(), rate);
    QCOMPARE(device->inside().inspect(&ImageModel::frameRate), rate);
}

void tst_SimulatedAreaScan::autoExposureMovesByItself()
{
    const OpenDevice device("SIM-AREA-01");
    device.set("TestSceneLight", "200");
    const auto exposure = [&device] { // as a host reads it by name, which polls now and then
        device.nodes().Poll(500);
        return readNodeText(device.nodes(), QStringLiteral("ExposureTime")).toDouble();
    };
    device.set("ExposureAuto", "Continuous");
    QCOMPARE(device.access("ExposureTime"), GenApi::RO);
    QTRY_VERIFY_WITH_TIMEOUT(std::abs(exposure() - 5000.0) < 1000.0, 5000);
    device.set("ExposureAuto", "Off");
    QCOMPARE(device.access("ExposureTime"), GenApi::RW);
    device.set("TestSceneLight", "100");
    device.set("ExposureAuto", "Once");
    QTRY_COMPARE_WITH_TIMEOUT(device.text("ExposureAuto"), QStringLiteral("Off"), 5000);
    QVERIFY(exposure() > 8000.0);
    device.set("TestSceneLight", "10"); // too dark for the longest time
    device.set("ExposureAuto", "Once");
    QTRY_COMPARE_WITH_TIMEOUT(device.text("ExposureAuto"), QStringLiteral("Off"), 5000);
    QCOMPARE(exposure(), 40000.0);
}

void tst_SimulatedAreaScan::pictureFollowsTheLight()
{
    PictureSettings settings = smallScene();
    const double medium = meanLevel(settings);
    QVERIFY(medium > 100.0 && medium < 150.0);
    settings.brightness = 0.25;
    QVERIFY(std::abs(meanLevel(settings) - medium / 2.0) < 5.0);
    settings.brightness = 50.0;
    QVERIFY(meanLevel(settings) > 230.0);
    settings.pattern = PictureSettings::Black;
    QCOMPARE(meanLevel(settings), 0.0);
    settings.pattern = PictureSettings::White;
    QCOMPARE(meanLevel(settings), 255.0);
}

void tst_SimulatedAreaScan::pictureIsCutAndFlipped()
{
    PictureSettings settings = smallScene();
    settings.pattern = PictureSettings::HorizontalRamp;
    Picture picture;
    settings.region = QRect(100, 10, 50, 20);
    QCOMPARE(picture.draw(settings).size(), QSize(50, 20));
    QCOMPARE(qGray(picture.draw(settings).pixel(0, 0)), 100);
    QCOMPARE(qGray(picture.draw(settings).pixel(49, 19)), 149);
    settings.reverseX = true; // the flip comes first, then the region is cut out
    QCOMPARE(qGray(picture.draw(settings).pixel(0, 0)), 155);
    settings.reverseX = false;
    settings.pattern = PictureSettings::VerticalRamp;
    settings.reverseY = true;
    QCOMPARE(qGray(picture.draw(settings).pixel(0, 0)), 117);
    settings.reduction = QSize(2, 2);
    settings.reducedSensor = QSize(128, 64);
    settings.region = QRect(0, 0, 128, 64);
    QCOMPARE(qGray(picture.draw(settings).pixel(0, 0)), 126);
}

void tst_SimulatedAreaScan::featuresChangeThePicture_data()
{
    QTest::addColumn<QByteArray>("feature");
    QTest::addColumn<QByteArray>("value");
    QTest::addColumn<int>("mean"); // 1: grows, -1: shrinks, 0: does not matter
    QTest::addColumn<int>("spread");
    const auto row = [](const char *feature, const char *value, int mean, int spread) {
        QTest::addRow("%s %s", feature, value) << QByteArray(feature) << QByteArray(value) << mean << spread;
    };
    row("ExposureTime", "2000", -1, -1);
    row("Gain", "3", 1, 0);
    row("Gamma", "0.5", 1, -1);
    row("Gamma", "2", -1, 0);
    row("Brightness", "60", 1, -1);
    row("Brightness", "-60", -1, -1);
    row("Contrast", "50", 0, -1);
    row("Contrast", "150", 0, 1);
}

void tst_SimulatedAreaScan::featuresChangeThePicture()
{
    QFETCH(QByteArray, feature);
    QFETCH(QByteArray, value);
    QFETCH(int, mean);
    QFETCH(int, spread);
    const OpenDevice device("SIM-AREA-02");
    device.set("GammaEnable", "1");
    device.set("ExposureTime", "10000");
    const Levels before(settingsOf(device));
    device.set(feature.constData(), value.constData());
    const Levels after(settingsOf(device));
    const QString seen = QStringLiteral("mean %1 to %2, spread %3 to %4")
                             .arg(before.mean)
                             .arg(after.mean)
                             .arg(before.spread)
                             .arg(after.spread);
    QVERIFY2(mean == 0 || (after.mean - before.mean) * mean > 1.0, qPrintable(seen));
    QVERIFY2(spread == 0 || (after.spread - before.spread) * spread > 1.0, qPrintable(seen));
}

void tst_SimulatedAreaScan::everyPixelFormatHasAPicture()
{
    const OpenDevice device("SIM-AREA-01");
    device.setAll("Width=64 Height=64 SensorDigitizationBits=Bpp12");
    const QStringList formats = entries(device.enumeration("PixelFormat"));
    QCOMPARE(formats.size(), 9);
    Picture picture;
    for (const QString &format : formats) {
        device.set("PixelFormat", format.toLatin1().constData());
        const QImage image = picture.draw(settingsOf(device));
        QCOMPARE(image.size(), QSize(64, 64));
        QVERIFY2(image.isGrayscale() == format.startsWith(QLatin1String("Mono")), qPrintable(format));
    }
}

QTEST_GUILESS_MAIN(tst_SimulatedAreaScan)
#include "tst_SimulatedAreaScan.moc"
