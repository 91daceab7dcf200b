// SPDX-License-Identifier: MIT
#include <cmath>

#include <QtTest>

#include "Features/NodeText.h"
#include "Simulation/Firmware.h"
#include "Simulation/ImageModel.h"
#include "Simulation/Picture.h"
#include "host/OpenDevice.h"

namespace {

constexpr auto Camera = "SIM-AREA-01";

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
        const QImage image = Picture().draw(settings).convertToFormat(QImage::Format_Grayscale8);
        const double count = image.width() * image.height();
        double squares = 0.0;
        for (int y = 0; y < image.height(); ++y) {
            for (int x = 0; x < image.width(); ++x) {
                const double level = image.constScanLine(y)[x];
                mean += level / count, squares += level * level / count;
            }
        }
        spread = std::sqrt(std::max(0.0, squares - mean * mean));
    }

    double mean = 0.0, spread = 0.0;
};

/// What the device would take a picture with, at one moment.
PictureSettings settingsOf(const OpenDevice &device)
{
    return device->inside().inspect(
        [](const RegisterMemory &memory) { return PictureSettings::fromRegisters(memory, 0); });
}

} // namespace

class tst_SimulatedAreaScan : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    /// The features that the curated pages of area-scan cameras show, right after opening.
    void pageFeaturesExist()
    {
        const std::pair<GenApi::EAccessMode, QByteArray> names[] = {
            {GenApi::RO, "ResultingFrameRate"},
            {GenApi::NA, "Gamma LineSource"},
            {GenApi::WO, "TriggerSoftware UserSetLoad"},
            {GenApi::RW,
             "AcquisitionFrameRateEnable AcquisitionFrameRate ExposureAuto ExposureTime GainAuto Gain GammaEnable "
             "Brightness Contrast GevSCPSPacketSize GevSCPD TriggerSelector TriggerMode TriggerSource TriggerDelay "
             "LineSelector LineMode LineDebouncerTime PixelFormat Width Height OffsetX OffsetY ReverseX ReverseY "
             "UserSetSelector UserSetSave UserSetDefault"}};
        const OpenDevice device(Camera);
        for (const auto &[access, words] : names) {
            for (const QByteArray &name : words.split(' ')) {
                GenApi::INode *const node = device.node(name.constData());
                QVERIFY2(node && node->IsFeature() && node->GetVisibility() < GenApi::Invisible, name.constData());
                QVERIFY2(node->GetAccessMode() == access, name.constData());
            }
        }
    }

    void selectorsShowTheirSelection()
    {
        const std::tuple<const char *, const char *, QByteArray, QByteArray> rows[] = {
            {"LineSelector", "LineMode", "Line0 Line2 Line3", "Input Output Output"},
            {"TriggerSelector", "TriggerMode", "FrameStart FrameBurstStart", "Off On"},
            {"TriggerSelector", "TriggerDelay", "FrameStart AcquisitionStart", "12.5 300.0"},
            {"GainSelector", "Gain", "AnalogAll DigitalAll", "6.00 1.50"},
            {"MultiSlopeKneePointSelector", "MultiSlopeExposureLimit", "0 2", "40 99"},
            {"LUTIndex", "LUTValue", "0 255", "17 4095"},
        };
        for (const auto &[selector, feature, selected, shown] : rows) {
            const QByteArrayList positions = selected.split(' '), values = shown.split(' ');
            const OpenDevice device(Camera);
            device.set("MultiSlopeMode", "Manual");
            for (int i = 0; i < positions.size(); ++i) {
                device.set(selector, positions[i].constData());
                device.set(feature, values[i].constData());
            }
            for (int i = 0; i < positions.size(); ++i) {
                device.set(selector, positions[i].constData());
                const GenApi::CValuePtr value = device.node(feature);
                QVERIFY2(value->ToString().c_str() == values[i], feature);
            }
        }
    }

    void sizesAndOffsetsLimitEachOther()
    {
        const OpenDevice device(Camera);
        const auto largest = [&](const char *name) { return int(device.integer(name)->GetMax()); };
        QCOMPARE(largest("OffsetX"), 0);
        device.setAll("Width=640 OffsetX=104 Height=480");
        QCOMPARE(largest("OffsetX"), 2448 - 640);
        QCOMPARE(largest("Width"), 2448 - 104);
        QVERIFY(!device.refusal("Width", "2352").isEmpty());
        QVERIFY(!device.refusal("Width", "641").isEmpty());
        QCOMPARE(largest("OffsetY"), 2048 - 480);
        QCOMPARE(device.integer("PayloadSize")->GetValue(), int64_t(640 * 480));
    }

    void binningResizesTheImage()
    {
        const OpenDevice device(Camera);
        const auto now = [&](const char *name) { return int(device.integer(name)->GetValue()); };
        device.setAll("Width=640 OffsetX=800 DecimationHorizontal=2");
        QCOMPARE(now("Width"), 1224);
        device.set("BinningHorizontal", "4");
        QVERIFY(!GenApi::IsAvailable(device.node("DecimationHorizontal")));
        QCOMPARE(now("Width"), 608);
        QCOMPARE(now("WidthMax"), 608);
        QCOMPARE(now("OffsetX"), 0);
        QCOMPARE(now("Height"), 2048);
        device.set("BinningHorizontal", "1");
        QCOMPARE(device.text("DecimationHorizontal"), QStringLiteral("1"));
        QCOMPARE(int(device.integer("Width")->GetMax()), 2448);
    }

    void modesSwitchAvailability()
    {
        const std::tuple<const char *, const char *, const char *, const char *> rows[] = {
            {"GammaEnable", "0", "1", "Gamma"},
            {"AcquisitionFrameRateEnable", "0", "1", "AcquisitionFrameRate"},
            {"AcquisitionMode", "Continuous", "MultiFrame", "AcquisitionFrameCount"},
            {"LineSelector", "Line0", "Line2", "LineSource"},
            {"LineSelector", "Line2", "Line0", "LineDebouncerTime"},
            {"TriggerSource", "Software", "Line1", "TriggerActivation"},
            {"ChunkModeActive", "0", "1", "ChunkExposureTime"},
            {"EncoderMode", "Off", "FourPhase", "EncoderReset"},
        };
        const OpenDevice device(Camera);
        for (const auto &[mode, off, on, feature] : rows) {
            for (int round = 0; round < 2; ++round) {
                device.set(mode, on);
                QVERIFY2(GenApi::IsAvailable(device.node(feature)), feature);
                device.set(mode, off);
                QVERIFY2(device.access(feature) == GenApi::NA, feature);
            }
        }
    }

    void entriesComeAndGo()
    {
        const OpenDevice device(Camera);
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

    void userSetsSaveAndLoad()
    {
        const OpenDevice device(Camera);
        const auto hasValues = [&](double exposure, int64_t width, const char *line) {
            return device.number("ExposureTime")->GetValue() == exposure && device.integer("Width")->GetValue() == width
                && device.enumeration("LineMode")->ToString() == line;
        };
        device.set("UserSetSelector", "UserSet0");
        QVERIFY_EXCEPTION_THROWN(device.command("UserSetLoad")->Execute(), GenICam::GenericException);
        device.setAll("ExposureTime=2500 Width=1024 LineSelector=Line3 LineMode=Output");
        device.command("UserSetSave")->Execute();
        QTRY_VERIFY(device.command("UserSetSave")->IsDone());
        device.set("UserSetSelector", "Default");
        QVERIFY_EXCEPTION_THROWN(device.command("UserSetSave")->Execute(), GenICam::GenericException);
        device.command("UserSetLoad")->Execute();
        QVERIFY(hasValues(10000.0, 2448, "Input"));
        QCOMPARE(device.integer("OffsetX")->GetMax(), int64_t(0));
        device.set("UserSetSelector", "UserSet0");
        device.command("UserSetLoad")->Execute();
        QVERIFY(hasValues(2500.0, 1024, "Output"));
    }

    void theStartSetIsLoadedAtTheStart()
    {
        const OpenDevice device(Camera);
        device.setAll("UserSetSelector=UserSet1 Gain=9");
        device.command("UserSetSave")->Execute();
        device.setAll("UserSetDefault=UserSet1 Gain=3");
        device.command("DeviceReset")->Execute();
        QTRY_COMPARE(device.number("Gain")->GetValue(), 9.0);
        QCOMPARE(device.text("UserSetDefault"), QStringLiteral("UserSet1"));
    }

    void resultingFrameRateIsWhatTheCameraDoes()
    {
        constexpr double Packets = 1464.0 / 1500.0; // of the link is left for images
        constexpr double Image = 2448.0 * 2048.0;
        const std::pair<const char *, double> rows[] = {
            {"AcquisitionFrameRate=5", 5.0},
            {"AcquisitionFrameRateEnable=0", 125e6 * Packets / Image},
            {"AcquisitionFrameRateEnable=0 Width=64", 1e6 / (2048 * 10 + 400)}, // the sensor
            {"ExposureTime=199950", 5.0},
            {"DeviceLinkThroughputLimitMode=On DeviceLinkThroughputLimit=10000000", 1e7 * Packets / Image},
            {"GevSCPD=1000", 1464 / (1500 / 125e6 + 8e-6) / Image}, // pauses of 8 us
            {"Height=512 AcquisitionFrameRate=5 TriggerMode=On", 125e6 * Packets / (2448 * 512)},
            {"AcquisitionFrameRate=5 TriggerSelector=FrameBurstStart TriggerMode=On", 5.0},
        };
        for (const auto &[settings, rate] : rows) {
            const OpenDevice device(Camera);
            device.setAll(settings);
            QVERIFY2(qFuzzyCompare(device.number("ResultingFrameRate")->GetValue(), rate), settings);
            QVERIFY2(qFuzzyCompare(device->inside().inspect(&ImageModel::frameRate), rate), settings);
        }
    }

    void autoExposureMovesByItself()
    {
        const OpenDevice device(Camera);
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

    void pictureIsCutAndFlipped()
    {
        PictureSettings settings;
        settings.sensor = settings.reducedSensor = QSize(256, 128);
        settings.pattern = PictureSettings::HorizontalRamp;
        settings.region = QRect(100, 10, 50, 20);
        Picture picture;
        QCOMPARE(picture.draw(settings).size(), QSize(50, 20));
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

    void featuresChangeThePicture()
    {
        // mean: 1: grows, -1: shrinks, 0: does not matter
        const std::tuple<const char *, int, int> rows[] = {
            {"ExposureTime=2000", -1, -1}, {"Gain=3", 1, 0},           {"Gamma=0.5", 1, -1},
            {"Brightness=60", 1, -1},      {"Brightness=-60", -1, -1}, {"Contrast=50", 0, -1},
        };
        for (const auto &[setting, mean, spread] : rows) {
            const OpenDevice device("SIM-AREA-02");
            device.setAll("GammaEnable=1 ExposureTime=10000");
            const Levels before(settingsOf(device));
            device.setAll(setting);
            const Levels after(settingsOf(device));
            QVERIFY2(mean == 0 || (after.mean - before.mean) * mean > 1.0, setting);
            QVERIFY2(spread == 0 || (after.spread - before.spread) * spread > 1.0, setting);
        }
    }

    void everyPixelFormatHasAPicture()
    {
        const OpenDevice device(Camera);
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
};

QTEST_GUILESS_MAIN(tst_SimulatedAreaScan)
#include "tst_SimulatedAreaScan.moc"
