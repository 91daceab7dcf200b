// SPDX-License-Identifier: MIT
#include <QTabWidget>
#include <QtTest>

#include "ProfilerFixture.h"
#include "support/BracketTranslator.h"

namespace {

/// What opening does with a device and a host that know nothing, from the first write on.
const char *const FirstSync = "TriggerSelector=1 Get(TriggerMode)"
                              " TriggerSelector=1 TriggerMode=1 Get(TriggerSource) TriggerSelector=2"
                              " TriggerSelector=2 Get(TriggerMode)"
                              " TriggerSelector=2 TriggerMode=1 TriggerSource=4 AcquisitionLineRateEnable=0"
                              " Get(DepthDataType) Get(BatchNumber) Get(LaserAdjustMode) Set(LaserAdjustMode,Auto)"
                              " Get(SinData) Recall(52) Store(52,0.002000) Recall(55) Recall(56)"
                              " Get(Height) Get(HeightMax)"
                              " Set(ImageMaskerSelector,ImageMasker0) Get(ImageMask)"
                              " Set(ImageMaskerSelector,ImageMasker1) Get(ImageMask)"
                              " Set(ImageMaskerSelector,ImageMasker2) Get(ImageMask)";

} // namespace

class tst_ProfilerPages : public ProfilerFixture
{
    Q_OBJECT

private Q_SLOTS:
    void cleanup() { m_panel.reset(); }

    void start_data();
    void start();
    void unusableTextsChangeNothing();
    void completeProfiler();
    void missingFeatures();
    void rowsFollowTheModes();
    void languages();
    void controlsFollowTheDevice_data();
    void controlsFollowTheDevice();
    void controlsFollowTheAcquisition();
    void deviceWithFewerMasks();
    void fieldsInUse();
    void releasedPanel();
    void deletedPanel();
};

void tst_ProfilerPages::start_data()
{
    QTest::addColumn<QString>("known");
    QTest::addColumn<QString>("replaced"); // in the log of a device that knows nothing
    QTest::addColumn<QString>("with");
    QTest::addColumn<QString>("shows");
    const auto row = [](const char *known, const char *replaced, const char *with, const char *shows) {
        QTest::newRow(known) << QString::fromLatin1(known) << QString::fromLatin1(replaced) << QString::fromLatin1(with)
                             << QString::fromLatin1(shows);
    };
    row("", "", "",
        "FrameTriggerMode=ExternalTrigger|TriggerMode=Encoder|AcqDataSource=3D|Sampling Rate=1|ZUpSizeInfo=9"
        "|ZDownSizeInfo=-9|HighCorrection=1.25|LaserAdjustMode=Auto");
    const auto batch = [&](const char *known, const char *write, const char *shows) {
        row(known, "BatchNumber)", (QByteArray("BatchNumber)") + write).constData(), shows);
    };
    batch("BatchNumber=0|SinData=0.5", "", "BatchTransmitMode=Normal|TiltCorrection=30");
    batch("BatchNumber=1|SinData=-1", "", "BatchTransmitMode=Normal|TiltCorrection=-44.427");
    batch("BatchNumber=100|SinData=1.5", "", "BatchTransmitMode=Normal|TiltCorrection=0");
    batch("BatchNumber=101|SinData=-2", " Set(BatchNumber,400)", "BatchTransmitMode=Fast|TiltCorrection=0");
    batch("BatchNumber=250|SinData=x", " Set(BatchNumber,400)", "BatchTransmitMode=Fast|TiltCorrection=0");
    batch("BatchNumber=400|SinData=", " Set(BatchNumber,400)", "BatchTransmitMode=Fast|TiltCorrection=0");
    batch("BatchNumber=401|SinData=nan", " Set(BatchNumber,800)", "BatchTransmitMode=Full|TiltCorrection=0");
    batch("BatchNumber=800", " Set(BatchNumber,800)", "BatchTransmitMode=Full");
    batch("BatchNumber=abc", "", "BatchTransmitMode=Normal");
    batch("BatchNumber=", "", "BatchTransmitMode=Normal");
    row("DepthDataType=Uint32_t|LaserAdjustMode=Manual", "Mode,Auto", "Mode,Manual",
        "AcqDataSource=3D + 2D|LaserAdjustMode=Manual");
    row("TriggerMode@1=Off|TriggerMode@2=On", "TriggerMode=1 Get(TriggerSource)", "TriggerMode=0",
        "FrameTriggerMode=ContinuousTrigger|TriggerMode=Encoder");
    row("TriggerMode@1=On|TriggerMode@2=Off", "TriggerMode=1 TriggerSource=4 AcquisitionLineRateEnable=0",
        "TriggerMode=0 TriggerSource=4 AcquisitionLineRateEnable=1",
        "FrameTriggerMode=ExternalTrigger|TriggerMode=Continuous");
    row("51=0|52=0.25|53=1|55=4.5|56=-3.25", " Store(52,0.002000)", "",
        "Sampling Rate=Auto|ContourSpacer=0.25|IntensityEnable=on|ZUpSizeInfo=4.5|ZDownSizeInfo=-3.25");
    row("51=3|52=wide|53=yes|54=x|55=high|56=inf", " Store(52,0.002000)", "",
        "Sampling Rate=1|ContourSpacer=0|IntensityEnable=off|ZUpSizeInfo=9|ZDownSizeInfo=-9");
    row("ZUpSizeInfo=-4|ZDownSizeInfo=4", "", "", "ZUpSizeInfo=4|ZDownSizeInfo=-4");
    row("ZUpSizeInfo=x|ZDownSizeInfo=", "", "", "ZUpSizeInfo=9|ZDownSizeInfo=-9");
    row("Height=1024|HeightMax=1024", "", "", "GrabRangeCompression=off");
    row("Height=512|HeightMax=1024", "HeightMax)",
        "HeightMax) Set(CenterImageY,Off) DrawROI(0,0,2048,1024,0,false,0,1)", "GrabRangeCompression=on");
    row("Height=512 lines|HeightMax=1024", "", "", "GrabRangeCompression=off");
    row("Height=512|HeightMax=", "", "", "GrabRangeCompression=off");
    row("ImageMask@ImageMasker2=True", "ImageMasker2) Get(ImageMask)",
        "ImageMasker2) Get(ImageMask) Set(ImageMaskerSelector,ImageMasker2) Set(ImageMask,1)"
        " DrawROI(0,0,0,0,3,false,1,0)",
        "  Mask1=off|  Mask2=off|  Mask3=on");
}

void tst_ProfilerPages::start()
{
    QFETCH(QString, known);
    QFETCH(QString, replaced);
    QFETCH(QString, with);
    QFETCH(QString, shows);
    open(words(known.toLatin1().constData(), '|'));
    QString expected = QString::fromLatin1(FirstSync);
    QVERIFY(expected.contains(replaced));
    if (!replaced.isEmpty())
        expected.replace(replaced, with);
    QCOMPARE(m_log.mid(m_log.indexOf(QStringLiteral("TriggerSelector=1"))).join(QLatin1Char(' ')), expected);
    const QStringList controls = words(shows.toLatin1().constData(), '|');
    QCOMPARE(asShown(controls), controls);

    m_panel->host.setWriteResult("cam", "ImageMaskerSelector", -1);
    m_log.clear();
    m_panel->panel->imageMaskWidgetUpdate(); // masks that cannot be selected keep their switches
    QCOMPARE(m_log.size(), 3);
}

void tst_ProfilerPages::unusableTextsChangeNothing()
{
    open(words("SinData=0.5 52=0.25 55=4.5"));
    choose("BatchTransmitMode", 2);
    for (const auto &[lines, text] : {std::pair("0", "x"), std::pair("-1", "inf"), std::pair("many", "nan")}) {
        m_panel->host.setNodeValue("cam", "BatchNumber", lines);
        m_panel->host.setNodeValue("cam", "SinData", text);
        for (int item : {HostCore::CAM_INFO_CONTOUR_SPACING, HostCore::CAM_INFO_Z_MAXIMUM})
            m_panel->host.setCameraInfo("cam", item, text);
        m_panel->panel->init3DParameters();
        m_panel->panel->updateWidget(true);
        QCOMPARE(shown("BatchTransmitMode"), QStringLiteral("Full"));
        QCOMPARE(value("TiltCorrection"), 30.0);
        QCOMPARE(value("ContourSpacer"), 0.25);
        QCOMPARE(value("ZUpSizeInfo"), 4.5);
    }
    QCOMPARE(m_panel->host.callsTo(QStringLiteral("VLogInfo")).size(), 10); // one for each text that is no number
}

void tst_ProfilerPages::completeProfiler()
{
    open();
    const std::pair<const char *, int> rowsShown[] = {
        {"firstToolBox", 11}, {"secondToolBox", 12}, {"thirdToolBox", 15}, {"fourthToolBox", 10}};
    for (const auto &[toolBox, count] : rowsShown)
        QCOMPARE(std::pair(toolBox, int(m_panel->labels(toolBox).size())), std::pair(toolBox, count));
    QCOMPARE(editor<QPushButton>("UserSetLoad")->minimumSize(), QSize(150, 34));
    QCOMPARE(editor<QPushButton>("TiltCorrection")->size(), QSize(60, 34));
    QCOMPARE(editor<QDoubleSpinBox>("HighCorrection")->decimals(), 4);
    QCOMPARE(m_panel->host.callsTo(QStringLiteral("VLogInfo")), QStringList());
}

/// Rows of features that some devices lack are hidden; those that a mode brings stay as labels.
void tst_ProfilerPages::missingFeatures()
{
    CuratedFeatures missing = profilerFeatures();
    for (CuratedFeature &feature : missing)
        feature.kind.clear();
    open({}, missing);
    QCOMPARE(m_panel->innerTabs()->count(), 4);
    QCOMPARE(m_panel->labels("firstToolBox"),
             words("FrameTriggerMode TriggerSource TriggerSoftware TriggerMode EncoderDivider EncoderOutputMode"
                   " EncoderMode AcqDataSource BatchTransmitMode"));
    QVERIFY(!editor<QAbstractSpinBox>("EncoderDivider"));
    QCOMPARE(m_panel->labels("thirdToolBox"), words("LaserAdjustMode LowerBound UpperBound"));
    QCOMPARE(m_panel->labels("fourthToolBox"), words("TiltCorrection HighCorrection UserSetLoad"));
    QCOMPARE(m_log.filter(QStringLiteral("=")), QStringList());
    QCOMPARE(m_panel->host.callsTo(QStringLiteral("VLogInfo")), QStringList());
    click("GrabRangeCompression");
    m_log.clear();
    click("GrabRangeCompression");
    QCOMPARE(taken(), QStringLiteral("RomoveROI(0) Set(OffsetY,0)"));

    open({}, {{"Enumeration", "TriggerSelector", "<EnumEntry Name=\"Line\"><Value>2</Value></EnumEntry>"}});
    m_log.clear();
    m_panel->host.clearCalls();
    choose("FrameTriggerMode", 1); // a step that fails does not keep the others from being made
    QCOMPARE(taken(), QStringLiteral("TriggerMode=0 TriggerSelector=2 TriggerSelector=2 Get(TriggerMode)"));
    choose("FrameTriggerMode", 0);
    QCOMPARE(m_panel->host.callsTo(QStringLiteral("VLogInfo")).size(), 2); // one for each choice

    m_panel.reset();
    const CuratedPanel closed({}, PageSet::Profiler, [](CuratedPanel &panel) {
        panel.host.setNodeMap(HostCore::FOCUS_CAMERA, "cam", nullptr);
    });
    QCOMPARE(closed.innerTabs()->count(), 4);
    QCOMPARE(closed.labels(), QStringList());
}

void tst_ProfilerPages::rowsFollowTheModes()
{
    struct Step
    {
        const char *list;
        int entry;
        const char *shown, *hidden;
    };
    open();
    for (const Step &step :
         {Step{"FrameTriggerMode", 1, "", "TriggerSource TriggerSoftware"},
          Step{"FrameTriggerMode", 0, "TriggerSource TriggerSoftware", ""},
          Step{"TriggerMode", 0, "AcquisitionLineRate", "EncoderDivider EncoderOutputMode EncoderMode"},
          Step{"TriggerMode", 1, "EncoderDivider EncoderOutputMode EncoderMode", "AcquisitionLineRate"},
          Step{"LaserAdjustMode", 0, "Lasersetting", "LowerBound UpperBound"},
          Step{"LaserAdjustMode", 1, "LowerBound UpperBound", "Lasersetting"}}) {
        choose(step.list, step.entry);
        m_panel->panel->updateWidget(false);
        const QStringList labels = m_panel->labels();
        for (const QString &label : words(step.shown))
            QVERIFY2(labels.contains(label), qPrintable(label));
        for (const QString &label : words(step.hidden))
            QVERIFY2(m_panel->row(label.toLatin1().constData())->isHidden(), qPrintable(label));
    }
    m_panel->camera.port.pokeDouble(m_panel->camera.address("AcquisitionLineRate"), 500);
    m_panel->camera.map->InvalidateNodes();
    choose("TriggerMode", 0);
    QCOMPARE(value("AcquisitionLineRate"), 500.0);
}

void tst_ProfilerPages::languages()
{
    open();
    const auto titles = [this] {
        QStringList texts;
        for (int tab = 0; tab < m_panel->innerTabs()->count(); ++tab)
            texts << m_panel->innerTabs()->tabText(tab);
        return texts;
    };
    QCOMPARE(titles(), words("Trigger Image Contour Others"));
    BracketTranslator translator;
    QCoreApplication::installTranslator(&translator);
    m_panel->panel->retranslate(1);
    QCoreApplication::removeTranslator(&translator);
    QCOMPARE(titles(), words("[Trigger] [Image] [Contour] [Others]"));
    for (const auto &[row, text] : {std::pair("TriggerSoftware", "[Execute]"), std::pair("UserSetLoad", "[Execute]"),
                                    std::pair("Z Range", "[Auto]"), std::pair("TiltCorrection", "[Settings]"),
                                    std::pair("HighCorrection", "[Settings]")})
        QCOMPARE(editor<QPushButton>(row)->text(), QLatin1String(text));
    QCOMPARE(
        m_panel->labels("fourthToolBox"),
        words(
            "X方向偏移(mm) Z方向偏移(mm) 倾斜矫正 高度矫正 参数选择 参数加载 参数保存 默认方案选择 激光 自动激光控制"));
}

/// What has changed is shown, and not written back: switches that the device has off take their regions along, others
/// do not begin to draw.
void tst_ProfilerPages::controlsFollowTheDevice_data()
{
    QTest::addColumn<Action>("cause");
    QTest::addColumn<QString>("first"); // in the log
    const Action imports = [this] { m_panel->panel->updateWidget(true); };
    const Action loads = [this] { click("UserSetLoad"); };
    const Action shows = [this] {
        for (int tab : {0, 1, 2, 3})
            m_panel->innerTabs()->setCurrentIndex(tab);
    };
    QTest::newRow("import or reset") << imports << "";
    QTest::newRow("user set") << loads << "Set(UserSetLoad,) ";
    QTest::newRow("pages are shown again") << shows << "";
}

void tst_ProfilerPages::controlsFollowTheDevice()
{
    QFETCH(Action, cause);
    QFETCH(QString, first);
    open(words("TriggerMode@1=Off TriggerMode@2=On Height=300 HeightMax=1024 ImageMask@ImageMasker0=True SinData=0"));
    m_panel->panel->show();
    m_panel->innerTabs()->setCurrentIndex(3);
    know(words("TriggerMode@1=On TriggerMode@2=Off TriggerSource=Software DepthDataType=Uint32_t BatchNumber=250"
               " LaserAdjustMode=Manual 51=8 52=0.5 53=1 55=5.5 56=-4 Height=1024 ImageMask@ImageMasker0=False"
               " ImageMask@ImageMasker2=True ImageMaskerSelector=ImageMasker1 SinData=0.5"));
    m_panel->camera.port.pokeDouble(m_panel->camera.address("ZCoorScale"), 1.5);
    for (const char *feature : {"ReverseX", "Threshold", "LaserSwitch"})
        m_panel->camera.port.poke(m_panel->camera.address(feature), 1);
    m_panel->camera.map->InvalidateNodes();
    m_log.clear();
    cause();
    QCOMPARE(taken(),
             first
                 + QStringLiteral("TriggerSelector=1 Get(TriggerMode) Get(TriggerSource) TriggerSelector=2"
                                  " Get(TriggerMode) Get(DepthDataType) Get(BatchNumber) Recall(53) Recall(52)"
                                  " Recall(51) Get(Height) Get(HeightMax) RomoveROI(0) Get(ImageMaskerSelector)"
                                  " Set(ImageMaskerSelector,ImageMasker0) Get(ImageMask) RomoveROI(1)"
                                  " Set(ImageMaskerSelector,ImageMasker1) Get(ImageMask)"
                                  " Set(ImageMaskerSelector,ImageMasker2) Get(ImageMask)"
                                  " Set(ImageMaskerSelector,ImageMasker1) Recall(55) Recall(56) Get(LaserAdjustMode)"
                                  " Get(SinData)"));
    const QStringList shown =
        words("FrameTriggerMode=ExternalTrigger|TriggerSource=Software|TriggerMode=Continuous|AcqDataSource=3D + 2D"
              "|BatchTransmitMode=Fast|LaserAdjustMode=Manual|Sampling Rate=8|ContourSpacer=0.5|IntensityEnable=on"
              "|ZUpSizeInfo=5.5|ZDownSizeInfo=-4|GrabRangeCompression=off|  Mask1=off|  Mask2=off|  Mask3=on"
              "|TiltCorrection=30|HighCorrection=1.5|ReverseX=on",
              '|');
    QCOMPARE(asShown(shown), shown);
    QVERIFY(!m_panel->row("Lasersetting")->isHidden() && m_panel->row("LowerBound")->isHidden());
    QVERIFY(!m_panel->row("TriggerSource")->isHidden() && m_panel->row("EncoderMode")->isHidden());
    QVERIFY(editor<QPushButton>("TriggerSoftware")->isEnabled());
    QCOMPARE(m_panel->host.callsTo(QStringLiteral("VLogInfo")), QStringList());
}

/// The acquisition has started or stopped: nothing is selected for being read, and drawing goes on.
void tst_ProfilerPages::controlsFollowTheAcquisition()
{
    open(words("Height=300 HeightMax=1024"));
    know(words("Height=1024 BatchNumber=250 55=5.5"));
    m_log.clear();
    m_panel->panel->updateWidget(false);
    QCOMPARE(taken(),
             QStringLiteral("Get(DepthDataType) Get(BatchNumber) Get(LaserAdjustMode) Recall(53) Recall(52) Recall(51)"
                            " Recall(55) Recall(56)"));
    const QStringList shown = words("BatchTransmitMode=Fast ZUpSizeInfo=5.5 GrabRangeCompression=on");
    QCOMPARE(asShown(shown), shown);
    know(words("LaserSwitch=1"));
    click("UserSetLoad");
    QCOMPARE(this->shown("LaserSwitch"), QStringLiteral("off")); // the rows of the fourth tool box stay
}

/// The user's choice of a mask stays, also when not all of them can be asked for.
void tst_ProfilerPages::deviceWithFewerMasks()
{
    open();
    know(words("ImageMaskerSelector=ImageMasker0"));
    m_panel->host.setCallHook([this](const QString &call) {
        const bool isLacking = call.endsWith(QLatin1String("ImageMasker2)"));
        m_panel->host.setWriteResult("cam", "ImageMaskerSelector", isLacking ? -1 : 0);
    });
    m_panel->panel->updateWidget(true);
    QCOMPARE(m_panel->host.nodeValue("cam", "ImageMaskerSelector"), std::string("ImageMasker0"));
}

void tst_ProfilerPages::fieldsInUse()
{
    open();
    type("ZUpSizeInfo", "5");
    know(words("55=7"));
    m_panel->panel->updateWidget(true);
    QCOMPARE(editor<QDoubleSpinBox>("ZUpSizeInfo")->text(), QStringLiteral("5"));
    press("ZUpSizeInfo", Qt::Key_Escape);
    QCOMPARE(value("ZUpSizeInfo"), 9.0);
    m_panel->panel->updateWidget(true);
    QCOMPARE(value("ZUpSizeInfo"), 7.0);
    m_log.clear();
    press("ZUpSizeInfo", Qt::Key_Escape); // there is nothing to give back
    press("ZUpSizeInfo", Qt::Key_Tab);
    QCOMPARE(value("ZUpSizeInfo"), 7.0);
    QCOMPARE(taken(), QString());
}

/// The device goes while a tilt is being typed.
void tst_ProfilerPages::releasedPanel()
{
    open();
    type("TiltCorrection", "12");
    m_panel->panel->setParamterViewDisable();
    m_panel->host.setNodeMap(HostCore::FOCUS_CAMERA, "cam", nullptr);
    m_panel->camera.map->InvalidateNodes();
    m_panel->camera.port.resetCounters();
    m_panel->panel->startAcquireOperation();
    m_panel->panel->stopAcquireOperation();
    m_panel->panel->updateWidget(true);
    m_panel->panel->init3DParameters();
    m_panel->panel->retranslate(1);
    for (int tab : {0, 1, 2, 3})
        m_panel->innerTabs()->setCurrentIndex(tab);
    for (ToolPageWidgetItem *row : m_panel->panel->findChildren<ToolPageWidgetItem *>()) {
        for (QPushButton *button : row->findChildren<QPushButton *>())
            button->click();
    }
    m_panel->panel->hide();
    QCOMPARE(taken(), QString());
    QCOMPARE(m_panel->camera.port.accesses.size(), size_t(0));
}

/// A field that is being typed in loses the focus, and with it ends its editing, when half of the panel has gone.
void tst_ProfilerPages::deletedPanel()
{
    open();
    type("TiltCorrection", "12");
    m_panel->panel.reset();
    QCOMPARE(taken(), QString());
}

QTEST_MAIN(tst_ProfilerPages)
#include "tst_ProfilerPages.moc"
