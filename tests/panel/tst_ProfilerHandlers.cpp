// SPDX-License-Identifier: MIT
#include <QRegularExpression>
#include <QSemaphore>
#include <QtTest>

#include <atomic>
#include <stdexcept>

#include "ProfilerFixture.h"

class tst_ProfilerHandlers : public ProfilerFixture
{
    Q_OBJECT

private Q_SLOTS:
    void cleanup() { m_panel.reset(); }

    void handlers_data();
    void handlers();
    void unfinishedEdits();
    void externalTrigger();
    void invertedZRange();
    void refusedWrites_data();
    void refusedWrites();
    void refusedSwitchesKeepTheirRegions();
    void fullHeightBelowTheOffset();
    void lockedMeasureRange_data();
    void lockedMeasureRange();
    void leavingAFieldUnchanged();
    void hostCorrects();
    void automaticZRange_data();
    void automaticZRange();
    void areaScanFlag();
};

void tst_ProfilerHandlers::handlers_data()
{
    QTest::addColumn<Action>("prepare");
    QTest::addColumn<Action>("act");
    QTest::addColumn<QString>("log");
    QTest::addColumn<int>("pauses"); // ms
    const auto row = [](const char *name, const Action &prepare, const Action &act, const char *log, int pauses = 0) {
        QTest::newRow(name) << prepare << act << QString::fromLatin1(log) << pauses;
    };
    const auto list = [&](const char *name, const char *label, int before, int entry, const char *log, int pauses = 0) {
        row(
            name, [=] { choose(label, before); }, [=] { choose(label, entry); }, log, pauses);
    };
    const auto switches = [&](const char *label, const char *on, const char *off, int pauses = 0) {
        const Action click = [=] { this->click(label); };
        row(label, {}, click, on, pauses);
        QTest::addRow("%s off", label) << click << click << QString::fromLatin1(off) << 0;
    };
    const auto typed = [&](const char *name, const char *label, const char *text, const char *log, int pauses = 0) {
        row(
            name, {}, [=] { type(label, text), press(label, Qt::Key_Enter); }, log, pauses);
    };
    list("continuous frames", "FrameTriggerMode", 0, 1, "TriggerSelector=1 TriggerMode=0 TriggerSelector=2", 10);
    list("frame source", "TriggerSource", 0, 1,
         "TriggerSelector=1 Set(TriggerSource,Line2) TriggerSelector=2 Set(TriggerSource,ShaftEncoderModuleOut)", 20);
    const Action software = [this] { choose("TriggerSource", 2); };
    const Action fire = [this] { click("TriggerSoftware"); };
    row("soft trigger", software, fire, "TriggerSelector=1 TriggerSoftware=1 TriggerSelector=2", 20);
    list("scan by time", "TriggerMode", 1, 0,
         "TriggerSelector=2 TriggerMode=0 TriggerSource=4 AcquisitionLineRateEnable=1", 20);
    list("scan by encoder", "TriggerMode", 0, 1,
         "TriggerSelector=2 TriggerMode=1 TriggerSource=4 AcquisitionLineRateEnable=0", 20);
    list("normal batches", "BatchTransmitMode", 2, 0, "Set(BatchNumber,100)");
    list("fast batches", "BatchTransmitMode", 0, 1, "Set(BatchNumber,400)");
    list("full batches", "BatchTransmitMode", 0, 2, "Set(BatchNumber,800)");
    list("depth", "AcqDataSource", 1, 0, "Set(DepthDataType,Uint16_t)");
    list("depth and intensity", "AcqDataSource", 0, 1, "Set(DepthDataType,Uint32_t)");
    list("laser by hand", "LaserAdjustMode", 1, 0, "Set(LaserAdjustMode,Manual)");
    list("automatic laser", "LaserAdjustMode", 0, 1, "Set(LaserAdjustMode,Auto)");
    list("sampling rate", "Sampling Rate", 0, 7, "Store(51,128)");
    list("automatic sampling rate", "Sampling Rate", 0, 8, "Store(51,0)");
    switches("GrabRangeCompression", "Set(CenterImageY,Off) DrawROI(0,0,2048,1024,0,false,0,1)",
             "RomoveROI(0) Set(OffsetY,0) Set(Height,2048)");
    switches("IntensityEnable", "Store(53,1) SetCameraImageMode(3,true)", "Store(53,0) SetCameraImageMode(3,true)");
    switches("  Mask1", "Set(ImageMaskerSelector,ImageMasker0) Set(ImageMask,1) DrawROI(0,0,0,0,1,false,1,0)",
             "RomoveROI(1) Set(ImageMaskerSelector,ImageMasker0) Set(ImageMask,0)", 5);
    switches("  Mask2", "Set(ImageMaskerSelector,ImageMasker1) Set(ImageMask,1) DrawROI(0,0,0,0,2,false,1,0)",
             "RomoveROI(2) Set(ImageMaskerSelector,ImageMasker1) Set(ImageMask,0)", 5);
    switches("  Mask3", "Set(ImageMaskerSelector,ImageMasker2) Set(ImageMask,1) DrawROI(0,0,0,0,3,false,1,0)",
             "RomoveROI(3) Set(ImageMaskerSelector,ImageMasker2) Set(ImageMask,0)", 5);
    row(
        "spacing", {}, [this] { editor<QDoubleSpinBox>("ContourSpacer")->setValue(0.12344); }, "Store(52,0.123400)");
    typed("Z maximum", "ZUpSizeInfo", "5", "Store(55,5.000000)");
    typed("Z minimum", "ZDownSizeInfo", "-5.25", "Store(56,-5.250000)");
    typed("empty Z range", "ZDownSizeInfo", "9", "Store(56,9.000000)");
    typed("tilt", "TiltCorrection", "30", "Set(SinData,0.500000) Set(CosData,0.866025)", 10);
    typed("no tilt", "TiltCorrection", "0", "Set(SinData,0.000000) Set(CosData,1.000000)", 10);
    typed("height", "HighCorrection", "1.5", "Set(ZCoorScale,1.500000)");
    typed("typed spacing, with more digits than are shown", "ContourSpacer", "0,123456", "Store(52,0.123456)");
    typed("the same to the eye", "ContourSpacer", "0.00201", "Store(52,0.002010)");
    typed("spacing beyond its limit", "ContourSpacer", "1200", "Store(52,1.000000)");
    typed("Z beyond its limit", "ZUpSizeInfo", "70", "Store(55,9.000000)");
    typed("no number", "ZUpSizeInfo", "1,234.5", "");
}

void tst_ProfilerHandlers::handlers()
{
    QFETCH(Action, prepare);
    QFETCH(Action, act);
    QFETCH(int, pauses);
    open();
    if (prepare)
        prepare();
    m_log.clear();
    QElapsedTimer timer;
    timer.start();
    act();
    QVERIFY(timer.elapsed() >= pauses);
    QTEST(taken(), "log");
    if (taken().isEmpty())
        QCOMPARE(m_panel->host.callsTo(QStringLiteral("VLogInfo")),
                 words("VLogInfo(ToolPageWidgetItem, Set ZUpSizeInfo value failed, message = \"1,234.5\" is no number "
                       "from -9 to 9, 0)",
                       '|'));
}

/// Arrows and ends of edits that are not finished by Enter.
void tst_ProfilerHandlers::unfinishedEdits()
{
    open(words("SinData=0"));
    type("ZUpSizeInfo", "5");
    m_panel->panel->setFocus();
    m_panel->panel->hide();
    m_panel->panel->show();
    QApplication::setActiveWindow(m_panel->panel.get());
    const QString followed = taken(); // a page that is shown again
    QVERIFY2(!followed.contains(QLatin1String("Store")), qPrintable(followed));
    m_log.clear();
    QCOMPARE(editor<QDoubleSpinBox>("ZUpSizeInfo")->text(), QStringLiteral("5"));
    QTest::mouseClick(m_panel->row("ZUpSizeInfo"), Qt::LeftButton, {}, {2, 2});
    QCOMPARE(taken(), QStringLiteral("Store(55,5.000000)"));
    enter("TiltCorrection");
    press("TiltCorrection", Qt::Key_Up);
    QCOMPARE(taken(), QStringLiteral("Set(SinData,0.000017) Set(CosData,1.000000)"));
    QVERIFY(editor<QDoubleSpinBox>("TiltCorrection")->hasFocus());
}

void tst_ProfilerHandlers::externalTrigger()
{
    struct Case
    {
        const char *ofDevice, *shown;
        bool fires;
    };
    open();
    for (const Case &source :
         {Case{"Line1", "Line1", false}, Case{"Line2", "Line2", false}, Case{"Software", "Software", true},
          Case{"Timer", "Line1", false}, Case{"Line7", "", false}, Case{"", "Line1", false}}) {
        choose("FrameTriggerMode", 1);
        choose("TriggerSource", 2);
        m_panel->host.setNodeValue("cam", "TriggerSource", source.ofDevice);
        m_panel->host.setReadResult("cam", "TriggerSource", *source.ofDevice ? 0 : -1);
        m_log.clear();
        choose("FrameTriggerMode", 0);
        const bool isTimer = qstrcmp(source.ofDevice, "Timer") == 0;
        QCOMPARE(taken(),
                 QStringLiteral("TriggerSelector=1 TriggerMode=1 Get(TriggerSource)%1 TriggerSelector=2")
                     .arg(QLatin1String(isTimer ? " Set(TriggerSource,Line1)" : "")));
        QCOMPARE(shown("TriggerSource"), QLatin1String(source.shown));
        QCOMPARE(editor<QPushButton>("TriggerSoftware")->isEnabled(), source.fires);
    }
    for (int source : {2, 1, 2, 0}) {
        choose("TriggerSource", source);
        QCOMPARE(editor<QPushButton>("TriggerSoftware")->isEnabled(), source == 2);
    }
}

void tst_ProfilerHandlers::invertedZRange()
{
    struct Case
    {
        const char *row, *other, *otherBound;
        int item;
        const char *stored, *typed;
        double restored; ///< what the host has stored, else the last value that was taken
    };
    const char *const upper = "ZUpSizeInfo", *const lower = "ZDownSizeInfo";
    for (const Case &bound : {Case{upper, lower, "-5", HostCore::CAM_INFO_Z_MAXIMUM, "6.5", "-6", 6.5},
                              Case{upper, lower, "-5", HostCore::CAM_INFO_Z_MAXIMUM, "", "-6", 9.0},
                              Case{upper, lower, "-5", HostCore::CAM_INFO_Z_MAXIMUM, "high", "-6", 9.0},
                              Case{lower, upper, "5", HostCore::CAM_INFO_Z_MINIMUM, "-6.5", "6", -6.5},
                              Case{lower, upper, "5", HostCore::CAM_INFO_Z_MINIMUM, "", "6", -9.0}}) {
        open();
        type(bound.other, bound.otherBound);
        press(bound.other, Qt::Key_Enter);
        m_panel->host.setCameraInfo("cam", bound.item, bound.stored);
        type(bound.row, bound.typed);
        press(bound.row, Qt::Key_Enter);
        press(bound.row, Qt::Key_Tab); // the edit has ended
        QCOMPARE(taken(), QStringLiteral("Recall(%1)").arg(bound.item));
        QCOMPARE(value(bound.row), bound.restored);
    }
}

/// A control shows what the device has after a write that it refused. What it does not tell stays as the user chose.
void tst_ProfilerHandlers::refusedWrites_data()
{
    QTest::addColumn<QString>("known");
    QTest::addColumn<QString>("refused"); // by name, and by the register where a log line is expected
    QTest::addColumn<Action>("act");
    QTest::addColumn<QString>("control");
    QTest::addColumn<QString>("wished");
    QTest::addColumn<QString>("back");
    QTest::addColumn<QString>("log"); // lines of the panel; what is refused by name the host reports
    const auto row = [](const char *name, const char *known, const char *refused, const Action &act, const char *wished,
                        const char *back, const char *log = "") {
        const QString control = QString::fromLatin1(wished).section(QLatin1Char('='), 0, 0);
        QTest::newRow(name) << QString::fromLatin1(known) << QString::fromLatin1(refused) << act << control
                            << QString::fromLatin1(wished) << control + QLatin1Char('=') + QLatin1String(back)
                            << QString::fromLatin1(log);
    };
    const auto list = [this](const char *label, int entry) -> Action { return [=] { choose(label, entry); }; };
    const auto button = [this](const char *label) -> Action { return [=] { click(label); }; };
    const auto field = [this](const char *label, const char *text) -> Action {
        return [=] { type(label, text), press(label, Qt::Key_Enter); };
    };
    const char *const triggers = "TriggerMode@1=Off|TriggerMode@2=Off";
    row("frame trigger", triggers, "TriggerMode", list("FrameTriggerMode", 0), "FrameTriggerMode=ExternalTrigger",
        "ContinuousTrigger", "The device refuses TriggerMode 1");
    row("line scan", triggers, "TriggerMode", list("TriggerMode", 1), "TriggerMode=Encoder", "Continuous",
        "The device refuses TriggerMode 1");
    row("frame source", "TriggerSource=Line1", "TriggerSource", list("TriggerSource", 2), "TriggerSource=Software",
        "Line1");
    row("soft trigger", "TriggerSource=Software", "TriggerSoftware", button("TriggerSoftware"),
        "TriggerSource=Software", "Software", "The device refuses TriggerSoftware");
    row("data source", "DepthDataType=Uint16_t", "DepthDataType", list("AcqDataSource", 1), "AcqDataSource=3D + 2D",
        "3D");
    row("batches", "BatchNumber=100", "BatchNumber", list("BatchTransmitMode", 2), "BatchTransmitMode=Full", "Normal");
    row("laser", "LaserAdjustMode=Auto", "LaserAdjustMode", list("LaserAdjustMode", 0), "LaserAdjustMode=Manual",
        "Auto");
    row("mask", "ImageMask@ImageMasker1=False", "ImageMask", button("  Mask2"), "  Mask2=on", "off");
    row("no mask", "ImageMask@ImageMasker1=True", "ImageMask", button("  Mask2"), "  Mask2=off", "on");
    row("no measure range", "Height=300|HeightMax=1024", "OffsetY|Height", button("GrabRangeCompression"),
        "GrabRangeCompression=off", "on");
    row("tilt", "SinData=0.5", "SinData|CosData", field("TiltCorrection", "10"), "TiltCorrection=10", "30");
    row("height", "", "ZCoorScale", field("HighCorrection", "1.5"), "HighCorrection=1.5", "1.25");
}

void tst_ProfilerHandlers::refusedWrites()
{
    QFETCH(QString, known);
    QFETCH(QString, refused);
    QFETCH(Action, act);
    QFETCH(QString, wished);
    QFETCH(QString, back);
    QFETCH(QString, log);
    for (bool isReadable : {true, false}) {
        const QStringList values = words(known.toLatin1(), '|');
        open(values);
        for (const QString &feature : words(refused.toLatin1(), '|')) {
            m_panel->host.setWriteResult("cam", feature.toStdString(), -1);
            MemoryPort &port = m_panel->camera.port;
            port.writeFault = log.isEmpty() ? MemoryPort::Fault::None : MemoryPort::Fault::Refused;
            port.faultFrom = m_panel->camera.address(feature.toStdString());
            port.faultTo = port.faultFrom + 4;
        }
        for (const QString &value : values) {
            const QString feature = value.section(QRegularExpression(QStringLiteral("[@=]")), 0, 0);
            m_panel->host.setReadResult("cam", feature.toStdString(), isReadable ? 0 : -1);
        }
        m_panel->host.clearCalls();
        act();
        if (!known.isEmpty() || isReadable)
            QCOMPARE(asShown({back}), QStringList(isReadable ? back : wished));
        const QStringList lines = m_panel->host.callsTo(QStringLiteral("VLogInfo"));
        QCOMPARE(lines,
                 log.isEmpty() ? QStringList()
                               : QStringList(QStringLiteral("VLogInfo(WriteSequence, %1, 0)").arg(log)));
    }
}

/// A region that was removed for a switch that could not go off is there again.
void tst_ProfilerHandlers::refusedSwitchesKeepTheirRegions()
{
    open(words("Height=300 HeightMax=1024 ImageMask@ImageMasker0=True"));
    for (const char *feature : {"Height", "OffsetY", "ImageMask"})
        m_panel->host.setWriteResult("cam", feature, -1);
    m_log.clear();
    click("GrabRangeCompression");
    click("  Mask1");
    QCOMPARE(taken(),
             QStringLiteral("RomoveROI(0) Set(OffsetY,0) Set(Height,2048) Get(Height) Get(HeightMax)"
                            " DrawROI(0,0,2048,1024,0,false,0,1) RomoveROI(1)"
                            " Set(ImageMaskerSelector,ImageMasker0) Set(ImageMask,0) Get(ImageMask)"
                            " DrawROI(0,0,0,0,1,false,1,0)"));
}

/// The maximum of Height is what the sensor has below the offset.
void tst_ProfilerHandlers::fullHeightBelowTheOffset()
{
    open(words("Height=300 HeightMax=2048"));
    m_panel->camera.port.poke(m_panel->camera.address("OffsetY"), 1000);
    m_panel->camera.map->InvalidateNodes();
    m_panel->host.setCallHook([this](const QString &call) {
        log(call);
        if (call == QLatin1String("SetCameraNodeValue(cam, OffsetY, 0)"))
            GenApi::CIntegerPtr(m_panel->camera.node("OffsetY"))->SetValue(0);
    });
    m_log.clear();
    click("GrabRangeCompression");
    QCOMPARE(m_log.filter(QStringLiteral("Set(")), words("Set(OffsetY,0) Set(Height,2048)"));
}

void tst_ProfilerHandlers::lockedMeasureRange_data()
{
    QTest::addColumn<QString>("height");
    QTest::addColumn<QString>("shown");
    QTest::newRow("on") << QStringLiteral("Height=300") << QStringLiteral("GrabRangeCompression=on");
    QTest::newRow("off") << QStringLiteral("Height=2048") << QStringLiteral("GrabRangeCompression=off");
}

/// The device acquires.
void tst_ProfilerHandlers::lockedMeasureRange()
{
    QFETCH(QString, height);
    QFETCH(QString, shown);
    open({height, QStringLiteral("HeightMax=2048")},
         {{"Integer", "Height", "<pIsLocked>LaserSwitchReg</pIsLocked><Min>16</Min><pMax>HeightLimit</pMax>"}});
    QCOMPARE(asShown({shown}), QStringList(shown));
    m_panel->camera.port.poke(m_panel->camera.address("LaserSwitch"), 1);
    m_panel->camera.map->InvalidateNodes();
    m_panel->host.setCameraInfo("cam", HostCore::CAM_INFO_ACQUISITION, "1");
    m_log.clear();
    click("GrabRangeCompression");
    QCOMPARE(taken(), QStringLiteral("Recall(10) Get(Height) Get(HeightMax)"));
    QCOMPARE(asShown({shown}), QStringList(shown));
    QCOMPARE(m_panel->host.callsTo(QStringLiteral("VLogInfo")).size(), 1);
}

void tst_ProfilerHandlers::leavingAFieldUnchanged()
{
    open(words("SinData=0.1234567"));
    for (const char *row : {"ContourSpacer", "ZUpSizeInfo", "ZDownSizeInfo", "TiltCorrection", "HighCorrection"}) {
        enter(row);
        press(row, Qt::Key_Tab);
        QVERIFY(!editor<QDoubleSpinBox>(row)->hasFocus());
        QCOMPARE(taken(), QString());
    }
    enter("HighCorrection");
    press("HighCorrection", Qt::Key_Up);
    press("HighCorrection", Qt::Key_Tab);
    QCOMPARE(taken(), QStringLiteral("Set(ZCoorScale,1.251000)"));
    type("TiltCorrection", "30");
    press("TiltCorrection", Qt::Key_Enter);
    QVERIFY(m_panel->row("TiltCorrection")->hasFocus()); // Tab goes on from here
}

void tst_ProfilerHandlers::hostCorrects()
{
    open(words("SinData=0"));
    bool changes = true;
    editor<QDoubleSpinBox>("TiltCorrection")->setValue(-2.5);
    m_panel->host.setCallHook([&](const QString &call) {
        log(call);
        if (changes && call.startsWith(QLatin1String("NotifyCorrection")))
            static_cast<QDoubleSpinBox *>(m_panel->host.correctionField)->setValue(0.5);
    });
    m_log.clear();
    click("TiltCorrection");
    click("HighCorrection");
    changes = false;
    click("HighCorrection");
    QCOMPARE(m_log,
             words("NotifyCorrection(0,-2.5) Set(SinData,0.008727) Set(CosData,0.999962)"
                   " NotifyCorrection(1,1.25) Set(ZCoorScale,0.500000)"
                   " NotifyCorrection(1,0.5) Set(ZCoorScale,0.500000)"));
}

void tst_ProfilerHandlers::automaticZRange_data()
{
    QTest::addColumn<bool>("hostThrows");
    QTest::newRow("started") << false;
    QTest::newRow("the host fails") << true;
}

/// The panel goes while the host is still starting.
void tst_ProfilerHandlers::automaticZRange()
{
    QFETCH(bool, hostThrows);
    open();
    QSemaphore panelIsGone;
    std::atomic<bool> done{false};
    m_panel->host.setCallHook([&, gui = QThread::currentThread()](const QString &call) {
        if (call != QLatin1String("StartGrab(cam)"))
            return;
        const bool throws = hostThrows;
        done = QThread::currentThread() != gui && panelIsGone.tryAcquire(1, 10000);
        if (throws)
            throw std::runtime_error("no acquisition");
    });
    m_panel->host.clearCalls();
    click("Z Range");
    m_panel->panel.reset();
    QVERIFY(!done);
    QCOMPARE(m_panel->host.callsTo(words("SetCameraInfo SetCameraImageMode")),
             words("SetCameraInfo(cam, 54, 1)|SetCameraImageMode(cam, 1, false)", '|'));
    panelIsGone.release();
    QTRY_VERIFY(done);
    QCOMPARE(m_panel->host.callsTo(QStringLiteral("StartGrab")).size(), 1);
}

void tst_ProfilerHandlers::areaScanFlag()
{
    open();
    m_panel->panel->setAreaScan(true);
    m_log.clear();
    choose("FrameTriggerMode", 1);
    choose("TriggerMode", 0);
    click("IntensityEnable");
    editor<QDoubleSpinBox>("ContourSpacer")->setValue(0.5);
    m_panel->panel->init3DParameters();
    m_panel->panel->measureRangeAreaUpdate();
    m_panel->panel->imageMaskWidgetUpdate();
    QCOMPARE(taken(), QString());
    choose("BatchTransmitMode", 1);
    QCOMPARE(taken(), QStringLiteral("Set(BatchNumber,400)"));
}

QTEST_MAIN(tst_ProfilerHandlers)
#include "tst_ProfilerHandlers.moc"
