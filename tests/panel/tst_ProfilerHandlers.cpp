// SPDX-License-Identifier: MIT
#include <QSemaphore>

#include <atomic>
#include <stdexcept>

#include "ProfilerFixture.h"

class tst_ProfilerHandlers : public ProfilerFixture
{
    Q_OBJECT

private Q_SLOTS:
    void cleanup() { m_panel.reset(); }

    void lists()
    {
        // The list, its entries before and then, what is logged, and how long it takes (ms).
        const std::tuple<const char *, const char *, int, int, const char *, int> rows[] = {
            {"continuous frames", "FrameTriggerMode", 0, 1, "TriggerSelector=1 TriggerMode=0 TriggerSelector=2", 10},
            {"frame source", "TriggerSource", 0, 1,
             "TriggerSelector=1 Set(TriggerSource,Line2) TriggerSelector=2 Set(TriggerSource,ShaftEncoderModuleOut)",
             20},
            {"scan by time", "TriggerMode", 1, 0,
             "TriggerSelector=2 TriggerMode=0 TriggerSource=4 AcquisitionLineRateEnable=1", 20},
            {"scan by encoder", "TriggerMode", 0, 1,
             "TriggerSelector=2 TriggerMode=1 TriggerSource=4 AcquisitionLineRateEnable=0", 20},
            {"normal batches", "BatchTransmitMode", 2, 0, "Set(BatchNumber,100)", 0},
            {"depth", "AcqDataSource", 1, 0, "Set(DepthDataType,Uint16_t)", 0},
            {"depth and intensity", "AcqDataSource", 0, 1, "Set(DepthDataType,Uint32_t)", 0},
            {"laser by hand", "LaserAdjustMode", 1, 0, "Set(LaserAdjustMode,Manual)", 0},
            {"automatic laser", "LaserAdjustMode", 0, 1, "Set(LaserAdjustMode,Auto)", 0},
            {"sampling rate", "Sampling Rate", 0, 7, "Store(51,128)", 0},
            {"automatic sampling rate", "Sampling Rate", 0, 8, "Store(51,0)", 0}};
        open();
        for (const auto &[name, list, before, entry, log, pauses] : rows) {
            const InRow inRow(name);
            choose(list, before);
            m_log.clear();
            QElapsedTimer timer;
            timer.start();
            choose(list, entry);
            QVERIFY(timer.elapsed() >= pauses);
            QCOMPARE(taken(), QLatin1String(log));
        }
        choose("TriggerSource", 2);
        m_log.clear();
        click("TriggerSoftware");
        QCOMPARE(taken(), "TriggerSelector=1 TriggerSoftware=1 TriggerSelector=2"_s);
    }

    void switches()
    {
        open();
        for (const auto &[name, on, off] :
             {std::tuple("GrabRangeCompression", "Set(CenterImageY,Off) DrawROI(0,0,2048,1024,0,false,0,1)",
                         "RomoveROI(0) Set(OffsetY,0) Set(Height,2048)"),
              std::tuple("IntensityEnable", "Store(53,1) SetCameraImageMode(3,true)",
                         "Store(53,0) SetCameraImageMode(3,true)"),
              std::tuple("  Mask1",
                         "Set(ImageMaskerSelector,ImageMasker0) Set(ImageMask,1) DrawROI(0,0,0,0,1,false,1,0)",
                         "RomoveROI(1) Set(ImageMaskerSelector,ImageMasker0) Set(ImageMask,0)"),
              std::tuple("  Mask3",
                         "Set(ImageMaskerSelector,ImageMasker2) Set(ImageMask,1) DrawROI(0,0,0,0,3,false,1,0)",
                         "RomoveROI(3) Set(ImageMaskerSelector,ImageMasker2) Set(ImageMask,0)")}) {
            const InRow inRow(name);
            m_log.clear();
            QElapsedTimer timer;
            timer.start();
            click(name);
            QVERIFY(timer.elapsed() >= (*name == ' ' ? 5 : 0)); // a mask, once it is selected
            QCOMPARE(taken(), QLatin1String(on));
            click(name);
            QCOMPARE(taken(), QLatin1String(off));
        }
    }

    void fields()
    {
        for (const auto &[name, field, text, logged] :
             {std::tuple("Z maximum", "ZUpSizeInfo", "5", "Store(55,5.000000)"),
              std::tuple("Z minimum", "ZDownSizeInfo", "-5.25", "Store(56,-5.250000)"),
              std::tuple("empty Z range", "ZDownSizeInfo", "9", "Store(56,9.000000)"),
              std::tuple("tilt", "TiltCorrection", "30", "Set(SinData,0.500000) Set(CosData,0.866025)"),
              std::tuple("no tilt", "TiltCorrection", "0", "Set(SinData,0.000000) Set(CosData,1.000000)"),
              std::tuple("height", "HighCorrection", "1.5", "Set(ZCoorScale,1.500000)"),
              std::tuple("spacing, with more digits than are shown", "ContourSpacer", "0,123456", "Store(52,0.123456)"),
              std::tuple("the same to the eye", "ContourSpacer", "0.00201", "Store(52,0.002010)"),
              std::tuple("spacing beyond its limit", "ContourSpacer", "1200", "Store(52,1.000000)"),
              std::tuple("Z beyond its limit", "ZUpSizeInfo", "70", "Store(55,9.000000)"),
              std::tuple("no number", "ZUpSizeInfo", "1,234.5", "")}) {
            const InRow inRow(name);
            open();
            type(field, text);
            press(field, Qt::Key_Enter);
            QCOMPARE(taken(), QLatin1String(logged));
        }
        QCOMPARE(told(),
                 QStringList("VLogInfo(ToolPageWidgetItem, Set ZUpSizeInfo value failed, message = \"1,234.5\" is no"
                             " number from -9 to 9, 0)"_s));
    }

    /// Arrows and ends of edits that are not finished by Enter.
    void unfinishedEdits()
    {
        open(words("SinData=0"));
        type("ZUpSizeInfo", "5");
        panel()->setFocus();
        panel()->hide();
        panel()->show();
        QApplication::setActiveWindow(panel());
        const QString shownAgain = taken();
        QVERIFY2(!shownAgain.contains("Store"_s), qPrintable(shownAgain));
        QCOMPARE(editor<QDoubleSpinBox>("ZUpSizeInfo")->text(), "5"_s);
        QTest::mouseClick(m_panel->row("ZUpSizeInfo"), Qt::LeftButton, {}, {2, 2});
        QCOMPARE(taken(), "Store(55,5.000000)"_s);
        enter("TiltCorrection");
        QElapsedTimer timer;
        timer.start();
        press("TiltCorrection", Qt::Key_Up);
        QVERIFY(timer.elapsed() >= 10); // between sine and cosine
        QCOMPARE(taken(), "Set(SinData,0.000017) Set(CosData,1.000000)"_s);
        QVERIFY(editor<QDoubleSpinBox>("TiltCorrection")->hasFocus());
    }

    void externalTrigger()
    {
        open();
        for (const auto &[name, source, fires] :
             {std::tuple("Line1", "Line1", false), std::tuple("Line2", "Line2", false),
              std::tuple("Software", "Software", true), std::tuple("Timer", "Line1", false),
              std::tuple("Line7", "", false), std::tuple("", "Line1", false)}) {
            const InRow inRow(name);
            choose("FrameTriggerMode", 1);
            choose("TriggerSource", 2);
            QVERIFY(button("TriggerSoftware")->isEnabled());
            m_panel->host.setNodeValue("cam", "TriggerSource", name);
            m_panel->host.setReadResult("cam", "TriggerSource", *name ? 0 : -1);
            m_log.clear();
            choose("FrameTriggerMode", 0);
            const bool isTimer = qstrcmp(name, "Timer") == 0;
            QCOMPARE(taken(),
                     "TriggerSelector=1 TriggerMode=1 Get(TriggerSource)%1 TriggerSelector=2"_s.arg(
                         isTimer ? " Set(TriggerSource,Line1)"_s : QString()));
            QCOMPARE(shown("TriggerSource"), QLatin1String(source));
            QCOMPARE(button("TriggerSoftware")->isEnabled(), fires);
        }
        choose("TriggerSource", 2);
        choose("TriggerSource", 1);
        QVERIFY(!button("TriggerSoftware")->isEnabled());
    }

    /// The field goes back to what the host has stored, else to the last value that was taken.
    void invertedZRange()
    {
        for (const auto &[isUpper, stored, restored] : {std::tuple(true, "6.5", 6.5), std::tuple(true, "high", 9.0),
                                                        std::tuple(false, "-6.5", -6.5), std::tuple(false, "", -9.0)}) {
            const InRow inRow(stored);
            const char *const bound = isUpper ? "ZUpSizeInfo" : "ZDownSizeInfo";
            const char *const other = isUpper ? "ZDownSizeInfo" : "ZUpSizeInfo";
            const int item = isUpper ? HostCore::CAM_INFO_Z_MAXIMUM : HostCore::CAM_INFO_Z_MINIMUM;
            open();
            type(other, isUpper ? "-5" : "5");
            press(other, Qt::Key_Enter);
            m_panel->host.setCameraInfo("cam", item, stored);
            type(bound, isUpper ? "-6" : "6");
            press(bound, Qt::Key_Enter);
            press(bound, Qt::Key_Tab); // the edit has ended
            QCOMPARE(taken(), "Recall(%1)"_s.arg(item));
            QCOMPARE(value(bound), restored);
        }
    }

    /// A control shows what the device has after a write that it refused. What it does not tell stays as the user
    /// chose.
    void refusedWrites()
    {
        struct Row
        {
            const char *name; ///< of the control's row
            const char *known;
            const char *refused; ///< by name, and by the register where a log line is expected
            const char *act; ///< the entry or text that is chosen; empty: a click
            const char *wished, *back;
            const char *log; ///< line of the panel; what is refused by name the host reports
        };
        const char *const triggers = "TriggerMode@1=Off|TriggerMode@2=Off";
        const Row rows[] = {
            {"FrameTriggerMode", triggers, "TriggerMode", "0", "ExternalTrigger", "ContinuousTrigger", "TriggerMode 1"},
            {"TriggerMode", triggers, "TriggerMode", "1", "Encoder", "Continuous", "TriggerMode 1"},
            {"TriggerSource", "TriggerSource=Line1", "TriggerSource", "2", "Software", "Line1", ""},
            {"AcqDataSource", "DepthDataType=Uint16_t", "DepthDataType", "1", "3D + 2D", "3D", ""},
            {"BatchTransmitMode", "BatchNumber=100", "BatchNumber", "2", "Full", "Normal", ""},
            {"LaserAdjustMode", "LaserAdjustMode=Auto", "LaserAdjustMode", "0", "Manual", "Auto", ""},
            {"  Mask2", "ImageMask@ImageMasker1=False", "ImageMask", "", "on", "off", ""},
            {"  Mask2", "ImageMask@ImageMasker1=True", "ImageMask", "", "off", "on", ""},
            {"GrabRangeCompression", "Height=300|HeightMax=1024", "OffsetY|Height", "", "off", "on", ""},
            {"TiltCorrection", "SinData=0.5", "SinData|CosData", "10", "10", "30", ""},
            {"HighCorrection", "", "ZCoorScale", "1.5", "", "1.25", ""}};
        for (const Row &row : rows) {
            const InRow inRow(row.name);
            for (const bool isReadable : {true, false}) {
                open(words(row.known, '|'));
                for (const QString &feature : words(row.refused, '|'))
                    refuse(feature.toStdString(), *row.log);
                for (const QString &known : words(row.known, '|'))
                    m_panel->host.setReadResult("cam", known.section(QRegularExpression("[@=]"_s), 0, 0).toStdString(),
                                                isReadable ? 0 : -1);
                m_panel->host.clearCalls();
                if (editor<QComboBox>(row.name)) {
                    choose(row.name, *row.act - '0');
                } else if (*row.act) {
                    type(row.name, row.act);
                    press(row.name, Qt::Key_Enter);
                } else {
                    click(row.name);
                }
                if (isReadable || *row.wished)
                    QCOMPARE(shown(row.name), QLatin1String(isReadable ? row.back : row.wished));
                QCOMPARE(told(), *row.log ? refusal(row.log) : QStringList());
            }
        }
        open(words("TriggerSource=Software"));
        choose("TriggerSource", 2);
        refuse("TriggerSoftware", true);
        m_panel->host.clearCalls();
        click("TriggerSoftware");
        QCOMPARE(told(), refusal("TriggerSoftware"));
    }

    /// A region that was removed for a switch that could not go off is there again.
    void refusedSwitchesKeepTheirRegions()
    {
        open(words("Height=300 HeightMax=1024 ImageMask@ImageMasker0=True"));
        for (const char *feature : {"Height", "OffsetY", "ImageMask"})
            refuse(feature, false);
        m_log.clear();
        click("GrabRangeCompression");
        click("  Mask1");
        QCOMPARE(taken(),
                 "RomoveROI(0) Set(OffsetY,0) Set(Height,2048) Get(Height) Get(HeightMax)"
                 " DrawROI(0,0,2048,1024,0,false,0,1) RomoveROI(1) Set(ImageMaskerSelector,ImageMasker0)"
                 " Set(ImageMask,0) Get(ImageMask) DrawROI(0,0,0,0,1,false,1,0)"_s);
    }

    /// The maximum of Height is what the sensor has below the offset.
    void fullHeightBelowTheOffset()
    {
        open(words("Height=300 HeightMax=2048"));
        m_panel->poke("OffsetY", 1000);
        m_panel->host.setCallHook([this](const QString &call) {
            log(call);
            if (call == "SetCameraNodeValue(cam, OffsetY, 0)"_s)
                GenApi::CIntegerPtr(m_panel->camera.node("OffsetY"))->SetValue(0);
        });
        m_log.clear();
        click("GrabRangeCompression");
        QCOMPARE(m_log.filter("Set("_s), words("Set(OffsetY,0) Set(Height,2048)"));
    }

    /// The device acquires.
    void lockedMeasureRange()
    {
        for (const auto &[height, expected] : {std::pair("Height=300", "on"), std::pair("Height=2048", "off")}) {
            open({QLatin1String(height), "HeightMax=2048"_s},
                 {{"Integer", "Height", "<pIsLocked>LaserSwitchReg</pIsLocked><Min>16</Min><pMax>HeightLimit</pMax>"}});
            QCOMPARE(shown("GrabRangeCompression"), QLatin1String(expected));
            m_panel->poke("LaserSwitch", 1);
            m_panel->host.setCameraInfo("cam", HostCore::CAM_INFO_ACQUISITION, "1");
            m_log.clear();
            click("GrabRangeCompression");
            QCOMPARE(taken(), "Recall(10) Get(Height) Get(HeightMax)"_s);
            QCOMPARE(shown("GrabRangeCompression"), QLatin1String(expected));
            QCOMPARE(told().size(), 1);
        }
    }

    void leavingAFieldUnchanged()
    {
        open(words("SinData=0.1234567"));
        for (const char *row : {"ContourSpacer", "ZUpSizeInfo", "ZDownSizeInfo", "TiltCorrection", "HighCorrection"}) {
            enter(row);
            press(row, Qt::Key_Tab);
            QVERIFY(!editor<QDoubleSpinBox>(row)->hasFocus());
            QCOMPARE(taken(), QString());
        }
        type("TiltCorrection", "30");
        press("TiltCorrection", Qt::Key_Enter);
        QVERIFY(m_panel->row("TiltCorrection")->hasFocus()); // Tab goes on from here
    }

    void hostCorrects()
    {
        open(words("SinData=0"));
        bool changes = true;
        editor<QDoubleSpinBox>("TiltCorrection")->setValue(-2.5);
        m_panel->host.setCallHook([&](const QString &call) {
            log(call);
            if (changes && call.startsWith("NotifyCorrection"_s))
                static_cast<QDoubleSpinBox *>(m_panel->host.correctionField)->setValue(0.5);
        });
        m_log.clear();
        click("TiltCorrection");
        click("HighCorrection");
        changes = false;
        click("HighCorrection");
        QCOMPARE(
            taken(),
            "NotifyCorrection(0,-2.5) Set(SinData,0.008727) Set(CosData,0.999962)"
            " NotifyCorrection(1,1.25) Set(ZCoorScale,0.500000) NotifyCorrection(1,0.5) Set(ZCoorScale,0.500000)"_s);
    }

    /// The panel goes while the host is still starting.
    void automaticZRange()
    {
        for (const bool hostThrows : {false, true}) {
            open();
            QSemaphore panelIsGone;
            std::atomic<bool> done{false};
            m_panel->host.setCallHook([&, hostThrows, gui = QThread::currentThread()](const QString &call) {
                if (call != "StartGrab(cam)"_s)
                    return;
                const bool throws = hostThrows; // what is captured goes with the test
                done = QThread::currentThread() != gui && panelIsGone.tryAcquire(1, 10000);
                if (throws)
                    throw std::runtime_error("no acquisition");
            });
            m_panel->host.clearCalls();
            click("Z Range");
            m_panel->panel.reset();
            QVERIFY(!done);
            QCOMPARE(calls("SetCameraInfo SetCameraImageMode"),
                     words("SetCameraInfo(cam, 54, 1)|SetCameraImageMode(cam, 1, false)", '|'));
            panelIsGone.release();
            QTRY_VERIFY(done);
            QCOMPARE(calls("StartGrab").size(), 1);
        }
    }

    void areaScanFlag()
    {
        open();
        panel()->setAreaScan(true);
        m_log.clear();
        choose("FrameTriggerMode", 1);
        choose("TriggerMode", 0);
        click("IntensityEnable");
        editor<QDoubleSpinBox>("ContourSpacer")->setValue(0.5);
        panel()->init3DParameters();
        panel()->measureRangeAreaUpdate();
        panel()->imageMaskWidgetUpdate();
        QCOMPARE(taken(), QString());
        choose("BatchTransmitMode", 1);
        QCOMPARE(taken(), "Set(BatchNumber,400)"_s);
    }

private:
    /// By name, and by the register too.
    void refuse(const std::string &feature, bool inRegister)
    {
        m_panel->host.setWriteResult("cam", feature, -1);
        port().writeFault = inRegister ? MemoryPort::Fault::Refused : MemoryPort::Fault::None;
        port().faultFrom = m_panel->camera.address(feature);
        port().faultTo = port().faultFrom + 4;
    }

    static QStringList refusal(const char *what)
    {
        return {"VLogInfo(WriteSequence, The device refuses %1, 0)"_s.arg(QLatin1String(what))};
    }
};

QTEST_MAIN(tst_ProfilerHandlers)
#include "tst_ProfilerHandlers.moc"
