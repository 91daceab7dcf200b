// SPDX-License-Identifier: MIT
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

    void start()
    {
        // What the host knows, what is replaced in the log of a device that knows nothing, and what the rows show.
        const char *const batch = "Get(BatchNumber)";
        const char *const fast = "Get(BatchNumber) Set(BatchNumber,400)";
        const char *const full = "Get(BatchNumber) Set(BatchNumber,800)";
        const std::tuple<const char *, const char *, const char *, const char *> rows[] = {
            {"", "", "",
             "FrameTriggerMode=ExternalTrigger|TriggerMode=Encoder|AcqDataSource=3D|Sampling Rate=1|ZUpSizeInfo=9"
             "|ZDownSizeInfo=-9|HighCorrection=1.25|LaserAdjustMode=Auto"},
            {"BatchNumber=1|SinData=-1", "", "", "BatchTransmitMode=Normal|TiltCorrection=-44.427"},
            {"BatchNumber=100|SinData=1.5", "", "", "BatchTransmitMode=Normal|TiltCorrection=0"},
            {"BatchNumber=101|SinData=x", batch, fast, "BatchTransmitMode=Fast|TiltCorrection=0"},
            {"BatchNumber=400|SinData=", batch, fast, "BatchTransmitMode=Fast|TiltCorrection=0"},
            {"BatchNumber=401|SinData=nan", batch, full, "BatchTransmitMode=Full|TiltCorrection=0"},
            {"BatchNumber=abc", "", "", "BatchTransmitMode=Normal"},
            {"DepthDataType=Uint32_t|LaserAdjustMode=Manual", "Mode,Auto", "Mode,Manual",
             "AcqDataSource=3D + 2D|LaserAdjustMode=Manual"},
            {"TriggerMode@1=Off|TriggerMode@2=On", "TriggerMode=1 Get(TriggerSource)", "TriggerMode=0",
             "FrameTriggerMode=ContinuousTrigger|TriggerMode=Encoder"},
            {"TriggerMode@1=On|TriggerMode@2=Off", "TriggerMode=1 TriggerSource=4 AcquisitionLineRateEnable=0",
             "TriggerMode=0 TriggerSource=4 AcquisitionLineRateEnable=1",
             "FrameTriggerMode=ExternalTrigger|TriggerMode=Continuous"},
            {"51=0|52=0.25|53=1|55=4.5|56=-3.25", " Store(52,0.002000)", "",
             "Sampling Rate=Auto|ContourSpacer=0.25|IntensityEnable=on|ZUpSizeInfo=4.5|ZDownSizeInfo=-3.25"},
            {"51=3|52=wide|53=yes|54=x|55=high|56=inf", " Store(52,0.002000)", "",
             "Sampling Rate=1|ContourSpacer=0|IntensityEnable=off|ZUpSizeInfo=9|ZDownSizeInfo=-9"},
            {"ZUpSizeInfo=-4|ZDownSizeInfo=4", "", "", "ZUpSizeInfo=4|ZDownSizeInfo=-4"},
            {"Height=512|HeightMax=1024", "HeightMax)",
             "HeightMax) Set(CenterImageY,Off) DrawROI(0,0,2048,1024,0,false,0,1)", "GrabRangeCompression=on"},
            {"Height=512 lines|HeightMax=1024", "", "", "GrabRangeCompression=off"},
            {"ImageMask@ImageMasker2=True", "ImageMasker2) Get(ImageMask)",
             "ImageMasker2) Get(ImageMask) Set(ImageMaskerSelector,ImageMasker2) Set(ImageMask,1)"
             " DrawROI(0,0,0,0,3,false,1,0)",
             "  Mask1=off|  Mask2=off|  Mask3=on"}};
        for (const auto &[known, replaced, with, shows] : rows) {
            const InRow inRow(known);
            open(words(known, '|'));
            QString expected = QLatin1String(FirstSync);
            if (*replaced)
                expected.replace(QLatin1String(replaced), QLatin1String(with));
            QCOMPARE(m_log.mid(m_log.indexOf("TriggerSelector=1"_s)).join(QLatin1Char(' ')), expected);
            QCOMPARE(asShown(words(shows, '|')), words(shows, '|'));
        }
        m_panel->host.setWriteResult("cam", "ImageMaskerSelector", -1);
        m_log.clear();
        panel()->imageMaskWidgetUpdate(); // masks that cannot be selected keep their switches
        QCOMPARE(m_log.size(), 3);
    }

    void unusableTextsChangeNothing()
    {
        open(words("SinData=0.5 52=0.25 55=4.5"));
        choose("BatchTransmitMode", 2);
        for (const auto &[lines, text] : {std::pair("0", "x"), std::pair("-1", "inf"), std::pair("many", "nan")}) {
            m_panel->host.setNodeValue("cam", "BatchNumber", lines);
            m_panel->host.setNodeValue("cam", "SinData", text);
            for (int item : {HostCore::CAM_INFO_CONTOUR_SPACING, HostCore::CAM_INFO_Z_MAXIMUM})
                m_panel->host.setCameraInfo("cam", item, text);
            panel()->init3DParameters();
            panel()->updateWidget(true);
            QCOMPARE(shown("BatchTransmitMode"), "Full"_s);
            QCOMPARE(value("TiltCorrection"), 30.0);
            QCOMPARE(value("ContourSpacer"), 0.25);
            QCOMPARE(value("ZUpSizeInfo"), 4.5);
        }
        QCOMPARE(told().size(), 10); // one for each text that is no number
    }

    void completeProfiler()
    {
        open();
        const std::pair<const char *, int> rowsShown[] = {
            {"firstToolBox", 11}, {"secondToolBox", 12}, {"thirdToolBox", 15}, {"fourthToolBox", 10}};
        for (const auto &[toolBox, count] : rowsShown)
            QCOMPARE(std::pair(toolBox, int(m_panel->labels(toolBox).size())), std::pair(toolBox, count));
        QCOMPARE(button("UserSetLoad")->minimumSize(), QSize(150, 34));
        QCOMPARE(button("TiltCorrection")->size(), QSize(60, 34));
        QCOMPARE(editor<QDoubleSpinBox>("HighCorrection")->decimals(), 4);
        QCOMPARE(told(), QStringList());
    }

    /// Rows of features that some devices lack are hidden; those that a mode brings stay as labels.
    void missingFeatures()
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
        QCOMPARE(m_log.filter("="_s), QStringList());
        QCOMPARE(told(), QStringList());
        click("GrabRangeCompression");
        m_log.clear();
        click("GrabRangeCompression");
        QCOMPARE(taken(), "RomoveROI(0) Set(OffsetY,0)"_s);

        open({}, {{"Enumeration", "TriggerSelector", "<EnumEntry Name=\"Line\"><Value>2</Value></EnumEntry>"}});
        m_log.clear();
        m_panel->host.clearCalls();
        choose("FrameTriggerMode", 1); // a step that fails does not keep the others from being made
        QCOMPARE(taken(), "TriggerMode=0 TriggerSelector=2 TriggerSelector=2 Get(TriggerMode)"_s);
        choose("FrameTriggerMode", 0);
        QCOMPARE(told().size(), 2); // one for each choice

        m_panel.reset();
        const CuratedPanel closed({}, PageSet::Profiler, [](CuratedPanel &panel) {
            panel.host.setNodeMap(HostCore::FOCUS_CAMERA, "cam", nullptr);
        });
        QCOMPARE(closed.innerTabs()->count(), 4);
        QCOMPARE(closed.labels(), QStringList());
    }

    void rowsFollowTheModes()
    {
        open();
        for (const auto &[list, entry, more, fewer] :
             {std::tuple("FrameTriggerMode", 1, "", "TriggerSource TriggerSoftware"),
              std::tuple("FrameTriggerMode", 0, "TriggerSource TriggerSoftware", ""),
              std::tuple("TriggerMode", 0, "AcquisitionLineRate", "EncoderDivider EncoderOutputMode EncoderMode"),
              std::tuple("TriggerMode", 1, "EncoderDivider EncoderOutputMode EncoderMode", "AcquisitionLineRate"),
              std::tuple("LaserAdjustMode", 0, "Lasersetting", "LowerBound UpperBound"),
              std::tuple("LaserAdjustMode", 1, "LowerBound UpperBound", "Lasersetting")}) {
            choose(list, entry);
            panel()->updateWidget(false);
            const QStringList labels = m_panel->labels();
            for (const QString &label : words(more))
                QVERIFY2(labels.contains(label), qPrintable(label));
            for (const QString &label : words(fewer))
                QVERIFY2(m_panel->row(label.toUtf8())->isHidden(), qPrintable(label));
        }
        port().pokeDouble(m_panel->camera.address("AcquisitionLineRate"), 500);
        m_panel->camera.map->InvalidateNodes();
        choose("TriggerMode", 0);
        QCOMPARE(value("AcquisitionLineRate"), 500.0);
    }

    void languages()
    {
        open();
        QCOMPARE(m_panel->innerTitles(), words("Trigger Image Contour Others"));
        BracketTranslator translator;
        QCoreApplication::installTranslator(&translator);
        panel()->retranslate(1);
        QCoreApplication::removeTranslator(&translator);
        QCOMPARE(m_panel->innerTitles(), words("[Trigger] [Image] [Contour] [Others]"));
        for (const auto &[row, text] :
             {std::pair("TriggerSoftware", "[Execute]"), std::pair("UserSetLoad", "[Execute]"),
              std::pair("Z Range", "[Auto]"), std::pair("TiltCorrection", "[Settings]"),
              std::pair("HighCorrection", "[Settings]")})
            QCOMPARE(button(row)->text(), QLatin1String(text));
        QCOMPARE(m_panel->labels("fourthToolBox"),
                 words("X方向偏移(mm) Z方向偏移(mm) 倾斜矫正 高度矫正 参数选择 参数加载 参数保存 默认方案选择 激光 "
                       "自动激光控制"));
    }

    /// What has changed is shown, and not written back: switches that the device has off take their regions along,
    /// others do not begin to draw.
    void controlsShowTheDevice()
    {
        const std::tuple<const char *, Action, QString> causes[] = {
            {"import or reset", [this] { panel()->updateWidget(true); }, QString()},
            {"user set", [this] { click("UserSetLoad"); }, "Set(UserSetLoad,) "_s},
            {"pages are shown again",
             [this] {
                 for (int tab : {0, 1, 2, 3})
                     m_panel->innerTabs()->setCurrentIndex(tab);
             },
             QString()}};
        for (const auto &[name, cause, first] : causes) {
            const InRow inRow(name);
            open(words(
                "TriggerMode@1=Off TriggerMode@2=On Height=300 HeightMax=1024 ImageMask@ImageMasker0=True SinData=0"));
            panel()->show();
            m_panel->innerTabs()->setCurrentIndex(3);
            know(
                words("TriggerMode@1=On TriggerMode@2=Off TriggerSource=Software DepthDataType=Uint32_t BatchNumber=250"
                      " LaserAdjustMode=Manual 51=8 52=0.5 53=1 55=5.5 56=-4 Height=1024 ImageMask@ImageMasker0=False"
                      " ImageMask@ImageMasker2=True ImageMaskerSelector=ImageMasker1 SinData=0.5"));
            port().pokeDouble(m_panel->camera.address("ZCoorScale"), 1.5);
            for (const char *feature : {"ReverseX", "Threshold", "LaserSwitch"})
                port().poke(m_panel->camera.address(feature), 1);
            m_panel->camera.map->InvalidateNodes();
            m_log.clear();
            cause();
            QCOMPARE(taken(),
                     first
                         + "TriggerSelector=1 Get(TriggerMode) Get(TriggerSource) TriggerSelector=2"
                           " Get(TriggerMode) Get(DepthDataType) Get(BatchNumber) Recall(53) Recall(52)"
                           " Recall(51) Get(Height) Get(HeightMax) RomoveROI(0) Get(ImageMaskerSelector)"
                           " Set(ImageMaskerSelector,ImageMasker0) Get(ImageMask) RomoveROI(1)"
                           " Set(ImageMaskerSelector,ImageMasker1) Get(ImageMask)"
                           " Set(ImageMaskerSelector,ImageMasker2) Get(ImageMask)"
                           " Set(ImageMaskerSelector,ImageMasker1) Recall(55) Recall(56) Get(LaserAdjustMode)"
                           " Get(SinData)"_s);
            const QStringList shown = words(
                "FrameTriggerMode=ExternalTrigger|TriggerSource=Software|TriggerMode=Continuous|AcqDataSource=3D + 2D"
                "|BatchTransmitMode=Fast|LaserAdjustMode=Manual|Sampling Rate=8|ContourSpacer=0.5|IntensityEnable=on"
                "|ZUpSizeInfo=5.5|ZDownSizeInfo=-4|GrabRangeCompression=off|  Mask1=off|  Mask2=off|  Mask3=on"
                "|TiltCorrection=30|HighCorrection=1.5|ReverseX=on",
                '|');
            QCOMPARE(asShown(shown), shown);
            QVERIFY(!isHidden("Lasersetting") && isHidden("LowerBound"));
            QVERIFY(!isHidden("TriggerSource") && isHidden("EncoderMode"));
            QVERIFY(button("TriggerSoftware")->isEnabled());
            QCOMPARE(told(), QStringList());
        }
    }

    /// The acquisition has started or stopped: nothing is selected for being read, and drawing goes on.
    void controlsShowTheAcquisition()
    {
        open(words("Height=300 HeightMax=1024"));
        know(words("Height=1024 BatchNumber=250 55=5.5"));
        m_log.clear();
        panel()->updateWidget(false);
        QCOMPARE(taken(),
                 "Get(DepthDataType) Get(BatchNumber) Get(LaserAdjustMode) Recall(53) Recall(52) Recall(51)"
                 " Recall(55) Recall(56)"_s);
        const QStringList shown = words("BatchTransmitMode=Fast ZUpSizeInfo=5.5 GrabRangeCompression=on");
        QCOMPARE(asShown(shown), shown);
        know(words("LaserSwitch=1"));
        click("UserSetLoad");
        QCOMPARE(this->shown("LaserSwitch"), "off"_s); // the rows of the fourth tool box stay
    }

    /// The user's choice of a mask stays, also when not all of them can be asked for.
    void deviceWithFewerMasks()
    {
        open();
        know(words("ImageMaskerSelector=ImageMasker0"));
        m_panel->host.setCallHook([this](const QString &call) {
            const bool isLacking = call.endsWith("ImageMasker2)"_s);
            m_panel->host.setWriteResult("cam", "ImageMaskerSelector", isLacking ? -1 : 0);
        });
        panel()->updateWidget(true);
        QCOMPARE(m_panel->host.nodeValue("cam", "ImageMaskerSelector"), std::string("ImageMasker0"));
    }

    void fieldsInUse()
    {
        open();
        type("ZUpSizeInfo", "5");
        know(words("55=7"));
        panel()->updateWidget(true);
        QCOMPARE(editor<QDoubleSpinBox>("ZUpSizeInfo")->text(), "5"_s);
        press("ZUpSizeInfo", Qt::Key_Escape);
        QCOMPARE(value("ZUpSizeInfo"), 9.0);
        panel()->updateWidget(true);
        QCOMPARE(value("ZUpSizeInfo"), 7.0);
        m_log.clear();
        press("ZUpSizeInfo", Qt::Key_Escape); // there is nothing to give back
        press("ZUpSizeInfo", Qt::Key_Tab);
        QCOMPARE(value("ZUpSizeInfo"), 7.0);
        QCOMPARE(taken(), QString());
    }

    /// A field that is being typed in loses the focus, and with it ends its editing, when half of the panel has gone.
    void deletedPanel()
    {
        open();
        type("TiltCorrection", "12");
        m_panel->panel.reset();
        QCOMPARE(taken(), QString());
    }
};

QTEST_MAIN(tst_ProfilerPages)
#include "tst_ProfilerPages.moc"
