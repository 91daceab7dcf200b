// SPDX-License-Identifier: MIT
#include <cmath>

#include <QtTest>

#include "Simulation/Firmware.h"
#include "Simulation/ImageModel.h"
#include "Simulation/Picture.h"
#include "host/OpenDevice.h"

namespace {

constexpr auto Camera = "SIM-AREA-01";

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
        QCOMPARE(
            OpenDevice(Camera).failureOf(
                "ResultingFrameRate:RO Gamma:NA LineSource:NA TriggerSoftware:WO UserSetLoad:WO "
                "AcquisitionFrameRateEnable:RW AcquisitionFrameRate:RW ExposureAuto:RW ExposureTime:RW GainAuto:RW "
                "Gain:RW GammaEnable:RW Brightness:RW Contrast:RW GevSCPSPacketSize:RW GevSCPD:RW "
                "TriggerSelector:RW TriggerMode:RW TriggerSource:RW TriggerDelay:RW LineSelector:RW LineMode:RW "
                "LineDebouncerTime:RW PixelFormat:RW Width:RW Height:RW OffsetX:RW OffsetY:RW ReverseX:RW "
                "ReverseY:RW UserSetSelector:RW UserSetSave:RW UserSetDefault:RW"),
            QByteArray());
    }

    void settingsDependOnEachOther()
    {
        const QByteArray rows[] = {
            // what a selector's positions keep apart
            ("LineSelector=Line0 LineMode=Input LineSelector=Line2 LineMode=Output LineSelector=Line3 LineMode=Output "
             "LineSelector=Line0 LineMode==Input LineSelector=Line2 LineMode==Output LineSelector=Line3 "
             "LineMode==Output"),
            ("TriggerSelector=FrameStart TriggerDelay=12.5 TriggerSelector=AcquisitionStart TriggerDelay=300 "
             "TriggerSelector=FrameStart TriggerDelay==12.5 TriggerSelector=AcquisitionStart TriggerDelay==300.0"),
            ("MultiSlopeMode=Manual MultiSlopeKneePointSelector=0 MultiSlopeExposureLimit=40 "
             "MultiSlopeKneePointSelector=2 MultiSlopeExposureLimit=99 "
             "MultiSlopeKneePointSelector=0 MultiSlopeExposureLimit==40 "
             "MultiSlopeKneePointSelector=2 MultiSlopeExposureLimit==99"),
            ("GainSelector=AnalogAll Gain=6.00 GainSelector=DigitalAll Gain=1.50 "
             "GainSelector=AnalogAll Gain==6.00 GainSelector=DigitalAll Gain==1.50"),
            "LUTIndex=0 LUTValue=17 LUTIndex=255 LUTValue=4095 LUTIndex=0 LUTValue==17 LUTIndex=255 LUTValue==4095",
            ("UserSetSelector=UserSet1 UserSetDescription==Night UserSetDescription=Dämmerung·黄昏 "
             "UserSetSelector=UserSet0 UserSetDescription==Day UserSetSelector=UserSet1 "
             "UserSetDescription==Dämmerung·黄昏"),
            // sizes, offsets, binning
            ("OffsetX!=8 Width=640 OffsetX!=1816 OffsetX=1808 OffsetX=104 Width!=2352 Width!=641 Width=2344 Width=640 "
             "Height=480 OffsetY!=1570 OffsetY=1568 PayloadSize==307200"),
            ("Width=640 OffsetX=800 DecimationHorizontal=2 Width==1224 BinningHorizontal=4 DecimationHorizontal:NA "
             "Width==608 WidthMax==608 OffsetX==0 Height==2048 BinningHorizontal=1 DecimationHorizontal==1 Width=2448"),
            // entries
            ("PixelFormat!=Mono12 SensorDigitizationBits=Bpp12 PixelFormat=Mono12 PixelSize==Bpp16 "
             "PixelDynamicRangeMax==4095 SensorDigitizationBits=Bpp10 PixelFormat==Mono8 PixelFormat!=Mono12"),
            // user sets
            ("UserSetSelector=UserSet0 UserSetLoad!= ExposureTime=2500 Width=1024 LineSelector=Line3 LineMode=Output "
             "UserSetSave= UserSetSelector=Default UserSetSave!= UserSetLoad= "
             "ExposureTime==10000.0 Width==2448 LineMode==Input OffsetX!=8 "
             "UserSetSelector=UserSet0 UserSetLoad= ExposureTime==2500.0 Width==1024 LineMode==Output"),
        };
        for (const QByteArray &row : rows)
            QCOMPARE(OpenDevice(Camera).failureOf(row), QByteArray());
        QCOMPARE(OpenDevice("SIM-AREA-02").failureOf("PixelFormat!=RGB8"), QByteArray());
    }

    void modesSwitchAvailability()
    {
        const std::tuple<QByteArray, QByteArray, QByteArray> rows[] = {
            {"GammaEnable=0", "GammaEnable=1", "Gamma:RW"},
            {"AcquisitionFrameRateEnable=0", "AcquisitionFrameRateEnable=1", "AcquisitionFrameRate:RW"},
            {"AcquisitionMode=Continuous", "AcquisitionMode=MultiFrame", "AcquisitionFrameCount:RW"},
            {"LineSelector=Line0", "LineSelector=Line2", "LineSource:RW"},
            {"LineSelector=Line2", "LineSelector=Line0", "LineDebouncerTime:RW"},
            {"TriggerSource=Software", "TriggerSource=Line1", "TriggerActivation:RW"},
            {"ChunkModeActive=0", "ChunkModeActive=1", "ChunkExposureTime:RO"},
            {"EncoderMode=Off", "EncoderMode=FourPhase", "EncoderReset:WO"},
        };
        const OpenDevice device(Camera);
        for (const auto &[off, on, access] : rows) {
            const QByteArray round = on + ' ' + access + ' ' + off + ' ' + access.left(access.size() - 2) + "NA";
            QCOMPARE(device.failureOf(round + ' ' + round), QByteArray());
        }
    }

    void aRestartLoadsTheStartSet()
    {
        const OpenDevice device(Camera);
        device.setAll("ExposureTime=777 DeviceUserID=kept DeviceReset=");
        QTRY_COMPARE(device.failureOf("ExposureTime==10000.0 DeviceUserID==kept"), QByteArray());
        device.setAll("UserSetSelector=UserSet1 Gain=9 UserSetSave= UserSetDefault=UserSet1 Gain=3 DeviceReset=");
        QTRY_COMPARE(device.failureOf("Gain==9.00 UserSetDefault==UserSet1"), QByteArray());
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
        QCOMPARE(device.failureOf("ExposureAuto=Continuous ExposureTime:RO"), QByteArray());
        QTRY_VERIFY_WITH_TIMEOUT(std::abs(exposure() - 5000.0) < 1000.0, 5000);
        QCOMPARE(device.failureOf("ExposureAuto=Off ExposureTime:RW TestSceneLight=100 ExposureAuto=Once"),
                 QByteArray());
        QTRY_COMPARE_WITH_TIMEOUT(device.text("ExposureAuto"), QStringLiteral("Off"), 5000);
        QVERIFY(exposure() > 8000.0);
        device.setAll("TestSceneLight=10 ExposureAuto=Once"); // too dark for the longest time
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
        GenApi::StringList_t formats;
        device.enumeration("PixelFormat")->GetSymbolics(formats);
        QCOMPARE(formats.size(), size_t(9));
        Picture picture;
        for (const GenICam::gcstring &format : formats) {
            device.set("PixelFormat", format.c_str());
            const QImage image = picture.draw(settingsOf(device));
            QCOMPARE(image.size(), QSize(64, 64));
            QVERIFY2(image.isGrayscale() == (format.find("Mono") == 0), format.c_str());
        }
    }
};

QTEST_GUILESS_MAIN(tst_SimulatedAreaScan)
#include "tst_SimulatedAreaScan.moc"
