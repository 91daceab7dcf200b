// SPDX-License-Identifier: MIT
#include <QComboBox>
#include <QDoubleSpinBox>
#include <QPushButton>
#include <QSemaphore>
#include <QTabWidget>
#include <QtTest>

#include <algorithm>
#include <atomic>
#include <stdexcept>

#include "CuratedPanel.h"
#include "ToolPage/SwitchButton.h"
#include "support/BracketTranslator.h"

namespace {

using Action = std::function<void()>;
using Prepare = std::function<void(CuratedPanel &)>;

QStringList words(const char *text, char separator = ' ')
{
    return QString::fromUtf8(text).split(QLatin1Char(separator), Qt::SkipEmptyParts);
}

/// What opening does with a device and a host that know nothing, from the first write on.
const char *const firstSync = "TriggerSelector=1 Get(TriggerMode)"
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

Q_DECLARE_METATYPE(Action)
Q_DECLARE_METATYPE(Prepare)

/// Log lines: calls to the host without the device ("Set" and "Get" by feature name, "Store" and "Recall" of its
/// settings) and, as "feature=value", writes to the registers of the node map, all in one order.
class tst_ProfilerPages : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { open(); }
    void cleanup() { m_panel.reset(); }

    void handlers_data();
    void handlers();
    void externalTrigger_data();
    void externalTrigger();
    void invertedZRange_data();
    void invertedZRange();
    void hostCorrects_data();
    void hostCorrects();
    void automaticZRange_data();
    void automaticZRange();
    void areaScanFlagStopsSomeHandlers();
    void start_data();
    void start();
    void modeSwitchIsQuick();
    void completeProfiler();
    void missingFeatures();
    void rowsFollowTheModes();
    void languages();
    void userSets();
    void releasedPanel();

private:
    void open(const Prepare &prepare = {}, const CuratedFeatures &changes = {});
    void log(const QString &call);
    void choose(const char *row, int entry) { editor<QComboBox>(row)->setCurrentIndex(entry); }
    void click(const char *row) { editor<QPushButton>(row)->click(); }
    /// Types into the field of a row; the log starts with the first key.
    void type(const char *row, const char *text, bool enter = true);
    template <class Widget>
    Widget *editor(const char *row) const
    {
        return m_panel->editor<Widget>(row);
    }
    double value(const char *row) const { return editor<QDoubleSpinBox>(row)->value(); }
    QString chosen(const char *row) const { return editor<QComboBox>(row)->currentText(); }
    bool isOn(const char *row) const { return editor<SwitchButton>(row)->isOn(); }
    bool isShown(const char *row) const { return !m_panel->row(row)->isHidden(); }

    QStringList m_log;
    std::unique_ptr<CuratedPanel> m_panel;
};

void tst_ProfilerPages::open(const Prepare &prepare, const CuratedFeatures &changes)
{
    m_panel.reset();
    m_log.clear();
    CuratedFeatures features = profilerFeatures();
    features.insert(features.end(), changes.begin(), changes.end());
    m_panel = std::make_unique<CuratedPanel>(features, PageSet::Profiler, [&](CuratedPanel &panel) {
        panel.host.setCallHook([this](const QString &call) { log(call); });
        panel.camera.watchWrites([this](const std::string &feature, uint64_t value) {
            m_log << QStringLiteral("%1=%2").arg(QString::fromStdString(feature)).arg(value);
        });
        if (prepare)
            prepare(panel);
    });
}

void tst_ProfilerPages::log(const QString &call)
{
    if (call.startsWith(QLatin1String("GetAttrNodeMap")) || QThread::currentThread() != thread())
        return;
    QString line = call;
    for (const auto &[name, word] : {std::pair("SetCameraNodeValue", "Set"), std::pair("GetCameraNodeValue", "Get"),
                                     std::pair("SetCameraInfo", "Store"), std::pair("GetCameraInfo", "Recall"),
                                     std::pair("cam, ", ""), std::pair("(cam)", "()"), std::pair(", ", ",")})
        line.replace(QLatin1String(name), QLatin1String(word));
    m_log << line;
}

void tst_ProfilerPages::type(const char *row, const char *text, bool enter)
{
    auto *const field = editor<QDoubleSpinBox>(row);
    m_panel->panel->show();
    QTabWidget *const tabs = m_panel->innerTabs();
    while (!tabs->currentWidget()->isAncestorOf(field))
        tabs->setCurrentIndex(tabs->currentIndex() + 1);
    QVERIFY(QTest::qWaitForWindowActive(m_panel->panel.get()));
    field->setFocus();
    QVERIFY(field->hasFocus());
    field->selectAll();
    m_log.clear();
    QTest::keyClicks(field, QString::fromLatin1(text));
    if (enter)
        QTest::keyClick(field, Qt::Key_Enter);
}

void tst_ProfilerPages::handlers_data()
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
            name, {}, [=] { type(label, text); }, log, pauses);
    };
    list("continuous frames", "FrameTriggerMode", 0, 1, "TriggerSelector=1 TriggerMode=0 TriggerSelector=2", 10);
    list("frame source", "TriggerSource", 0, 1,
         "TriggerSelector=1 Set(TriggerSource,Line2) TriggerSelector=2 Set(TriggerSource,ShaftEncoderModuleOut)", 20);
    row(
        "soft trigger", [this] { choose("TriggerSource", 2); }, [this] { click("TriggerSoftware"); },
        "TriggerSelector=1 TriggerSoftware=1 TriggerSelector=2", 20);
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
    typed("Z range of nothing", "ZDownSizeInfo", "9", "Store(56,9.000000)");
    typed("tilt", "TiltCorrection", "30", "Set(SinData,0.500000) Set(CosData,0.866025)", 10);
    typed("no tilt", "TiltCorrection", "0", "Set(SinData,0.000000) Set(CosData,1.000000)", 10);
    typed("height", "HighCorrection", "1.5", "Set(ZCoorScale,1.500000)");
}

void tst_ProfilerPages::handlers()
{
    QFETCH(Action, prepare);
    QFETCH(Action, act);
    QFETCH(QString, log);
    QFETCH(int, pauses);
    if (prepare)
        prepare();
    m_log.clear();
    QElapsedTimer timer;
    timer.start();
    act();
    QVERIFY(timer.elapsed() >= pauses);
    QCOMPARE(m_log.join(QLatin1Char(' ')), log);
}

void tst_ProfilerPages::externalTrigger_data()
{
    QTest::addColumn<QByteArray>("ofDevice");
    QTest::addColumn<QByteArray>("shown");
    QTest::addColumn<bool>("fires");
    QTest::newRow("line 1") << QByteArray("Line1") << QByteArray("Line1") << false;
    QTest::newRow("line 2") << QByteArray("Line2") << QByteArray("Line2") << false;
    QTest::newRow("software") << QByteArray("Software") << QByteArray("Software") << true;
    QTest::newRow("timer") << QByteArray("Timer") << QByteArray("Line1") << false;
    QTest::newRow("not offered") << QByteArray("Line7") << QByteArray("Software") << false;
    QTest::newRow("not readable") << QByteArray() << QByteArray("Line1") << false;
}

void tst_ProfilerPages::externalTrigger()
{
    QFETCH(QByteArray, ofDevice);
    QFETCH(QByteArray, shown);
    QFETCH(bool, fires);
    choose("TriggerSource", 2);
    choose("FrameTriggerMode", 1);
    m_panel->host.setNodeValue("cam", "TriggerSource", ofDevice.toStdString());
    m_panel->host.setReadResult("cam", "TriggerSource", ofDevice.isEmpty() ? -1 : 0);
    m_log.clear();
    choose("FrameTriggerMode", 0);
    QString expected = QStringLiteral("TriggerSelector=1 TriggerMode=1 Get(TriggerSource) TriggerSelector=2");
    if (ofDevice == "Timer")
        expected.insert(expected.lastIndexOf(QLatin1Char(' ')), QStringLiteral(" Set(TriggerSource,Line1)"));
    QCOMPARE(m_log.join(QLatin1Char(' ')), expected);
    QCOMPARE(chosen("TriggerSource"), QString::fromLatin1(shown));
    QCOMPARE(editor<QPushButton>("TriggerSoftware")->isEnabled(), fires);
}

void tst_ProfilerPages::invertedZRange_data()
{
    QTest::addColumn<QByteArray>("label");
    QTest::addColumn<QByteArray>("stored");
    QTest::addColumn<double>("restored");
    QTest::newRow("maximum") << QByteArray("ZUpSizeInfo") << QByteArray("6.5") << 6.5;
    QTest::newRow("minimum") << QByteArray("ZDownSizeInfo") << QByteArray("-2") << -2.0;
    QTest::newRow("nothing stored") << QByteArray("ZUpSizeInfo") << QByteArray() << -8.0;
    QTest::newRow("no number stored") << QByteArray("ZDownSizeInfo") << QByteArray("low") << 8.0;
}

void tst_ProfilerPages::invertedZRange()
{
    QFETCH(QByteArray, label);
    QFETCH(QByteArray, stored);
    QFETCH(double, restored);
    const bool upper = label == "ZUpSizeInfo";
    editor<QDoubleSpinBox>(upper ? "ZDownSizeInfo" : "ZUpSizeInfo")->setValue(upper ? -7 : 7);
    m_panel->host.setCameraInfo("cam", upper ? 55 : 56, stored.toStdString());
    type(label.constData(), upper ? "-8" : "8");
    QCOMPARE(m_log, words(upper ? "Recall(55)" : "Recall(56)"));
    QCOMPARE(value(label.constData()), restored);
}

void tst_ProfilerPages::hostCorrects_data()
{
    QTest::addColumn<QByteArray>("label");
    QTest::addColumn<bool>("changes");
    QTest::addColumn<QByteArray>("log");
    QTest::newRow("tilt") << QByteArray("TiltCorrection") << true
                          << QByteArray("NotifyCorrection(0,-2.5) Set(SinData,0.008727) Set(CosData,0.999962)");
    QTest::newRow("height") << QByteArray("HighCorrection") << true
                            << QByteArray("NotifyCorrection(1,1.25) Set(ZCoorScale,0.500000)");
    QTest::newRow("height as it is") << QByteArray("HighCorrection") << false
                                     << QByteArray("NotifyCorrection(1,1.25) Set(ZCoorScale,1.250000)");
}

void tst_ProfilerPages::hostCorrects()
{
    QFETCH(QByteArray, label);
    QFETCH(bool, changes);
    QFETCH(QByteArray, log);
    open([](CuratedPanel &panel) {
        panel.host.setNodeValue("cam", "SinData", "0");
        panel.camera.port.pokeDouble(panel.camera.address("ZCoorScale"), 1.25);
    });
    editor<QDoubleSpinBox>("TiltCorrection")->setValue(-2.5);
    m_panel->host.setCallHook([&](const QString &call) {
        this->log(call);
        if (changes && call.startsWith(QLatin1String("NotifyCorrection")))
            static_cast<QDoubleSpinBox *>(m_panel->host.correctionField)->setValue(0.5);
    });
    m_log.clear();
    click(label.constData());
    QCOMPARE(m_log.join(QLatin1Char(' ')), QString::fromLatin1(log));
}

void tst_ProfilerPages::automaticZRange_data()
{
    QTest::addColumn<bool>("hostThrows");
    QTest::newRow("started") << false;
    QTest::newRow("the host fails") << true;
}

/// The panel goes while the host is still starting.
void tst_ProfilerPages::automaticZRange()
{
    QFETCH(bool, hostThrows);
    QSemaphore panelIsGone;
    std::atomic<bool> done{false};
    m_panel->host.setCallHook([&](const QString &call) {
        if (call != QLatin1String("StartGrab(cam)"))
            return;
        const bool inTime = QThread::currentThread() != thread() && panelIsGone.tryAcquire(1, 10000);
        done = inTime;
        if (hostThrows)
            throw std::runtime_error("no acquisition");
    });
    m_panel->host.clearCalls();
    click("Z Range");
    m_panel->panel.reset();
    QCOMPARE(m_panel->host.callsTo(words("SetCameraInfo SetCameraImageMode")),
             words("SetCameraInfo(cam, 54, 1)|SetCameraImageMode(cam, 1, false)", '|'));
    QVERIFY(!done);
    panelIsGone.release();
    QTRY_VERIFY(done);
    QCOMPARE(m_panel->host.callsTo(QStringLiteral("StartGrab")).size(), 1);
}

void tst_ProfilerPages::areaScanFlagStopsSomeHandlers()
{
    m_panel->panel->setAreaScan(true);
    m_log.clear();
    choose("FrameTriggerMode", 1);
    choose("TriggerMode", 0);
    click("IntensityEnable");
    editor<QDoubleSpinBox>("ContourSpacer")->setValue(0.5);
    m_panel->panel->init3DParameters();
    m_panel->panel->measureRangeAreaUpdate();
    m_panel->panel->imageMaskWidgetUpdate();
    QCOMPARE(m_log, QStringList());
    choose("BatchTransmitMode", 1);
    QCOMPARE(m_log, words("Set(BatchNumber,400)"));
}

void tst_ProfilerPages::start_data()
{
    QTest::addColumn<Prepare>("prepare");
    QTest::addColumn<QString>("replaced"); // in the log of a device that knows nothing
    QTest::addColumn<QString>("with");
    QTest::addColumn<Action>("check");
    const auto row = [](const std::string &name, const Prepare &prepare, const char *replaced, const char *with,
                        const Action &check) {
        QTest::newRow(name.c_str()) << prepare << QString::fromLatin1(replaced) << QString::fromLatin1(with) << check;
    };
    const auto feature = [&](const char *name, const char *value, const char *replaced, const char *with,
                             const Action &check) {
        const Prepare prepare = [=](CuratedPanel &panel) { panel.host.setNodeValue("cam", name, value); };
        row(std::string(name) + " \"" + value + "\"", prepare, replaced, with, check);
    };
    row("nothing known", {}, "", "", [this] {
        QCOMPARE(chosen("FrameTriggerMode"), QStringLiteral("ExternalTrigger"));
        QCOMPARE(chosen("TriggerMode"), QStringLiteral("Encoder"));
        QCOMPARE(chosen("AcqDataSource"), QStringLiteral("3D"));
        QCOMPARE(chosen("Sampling Rate"), QStringLiteral("1"));
        QCOMPARE(value("ZUpSizeInfo"), 9.0);
        QCOMPARE(value("ZDownSizeInfo"), -9.0);
    });
    const std::pair<const char *, int> batches[] = {{"0", 0},   {"-1", 0},  {"1", 0},   {"100", 0},
                                                    {"101", 1}, {"250", 1}, {"400", 1}, {"401", 2},
                                                    {"800", 2}, {"abc", 0}, {"", 0}};
    for (const auto &[number, mode] : batches) {
        const char *const writes[] = {"", " Set(BatchNumber,400)", " Set(BatchNumber,800)"};
        feature("BatchNumber", number, "Get(BatchNumber)", (std::string("Get(BatchNumber)") + writes[mode]).c_str(),
                [this, mode = mode] { QCOMPARE(editor<QComboBox>("BatchTransmitMode")->currentIndex(), mode); });
    }
    const std::pair<const char *, double> sines[] = {{"0.5", 30}, {"-0.5", -30}, {"1", 44.427}, {"1.5", 0},
                                                     {"-2", 0},   {"nan", 0},    {"x", 0},      {"", 0}};
    for (const auto &[sine, tilt] : sines)
        feature("SinData", sine, "", "", [this, tilt = tilt] { QCOMPARE(value("TiltCorrection"), tilt); });
    feature("DepthDataType", "Uint32_t", "", "",
            [this] { QCOMPARE(chosen("AcqDataSource"), QStringLiteral("3D + 2D")); });
    feature("LaserAdjustMode", "Manual", "Mode,Auto", "Mode,Manual",
            [this] { QCOMPARE(chosen("LaserAdjustMode"), QStringLiteral("Manual")); });
    feature("LaserAdjustMode", "Else", "", "", [this] { QCOMPARE(chosen("LaserAdjustMode"), QStringLiteral("Auto")); });

    for (int off : {1, 2}) { // the selected trigger whose mode is Off
        const Prepare prepare = [this, off](CuratedPanel &panel) {
            panel.host.setCallHook([this, off, &panel](const QString &call) {
                log(call);
                const uint64_t selected = panel.camera.port.peek(panel.camera.address("TriggerSelector"));
                panel.host.setNodeValue("cam", "TriggerMode", selected == uint64_t(off) ? "Off" : "On");
            });
        };
        if (off == 1)
            row("free frames", prepare, "TriggerMode=1 Get(TriggerSource)", "TriggerMode=0",
                [this] { QCOMPARE(chosen("FrameTriggerMode"), QStringLiteral("ContinuousTrigger")); });
        else
            row("scan by time", prepare, "TriggerMode=1 TriggerSource=4 AcquisitionLineRateEnable=0",
                "TriggerMode=0 TriggerSource=4 AcquisitionLineRateEnable=1",
                [this] { QCOMPARE(chosen("TriggerMode"), QStringLiteral("Continuous")); });
    }

    const auto settings = [&](const char *name, const std::map<int, std::string> &items, const char *stored,
                              const Action &check) {
        const Prepare prepare = [=](CuratedPanel &panel) {
            for (const auto &[item, text] : items)
                panel.host.setCameraInfo("cam", item, text);
        };
        row(name, prepare, " Store(52,0.002000)", stored, check);
    };
    settings("stored settings", {{51, "0"}, {52, "0.25"}, {53, "1"}, {55, "4.5"}, {56, "-3.25"}}, "", [this] {
        QCOMPARE(chosen("Sampling Rate"), QStringLiteral("Auto"));
        QCOMPARE(value("ContourSpacer"), 0.25);
        QCOMPARE(isOn("IntensityEnable"), true);
        QCOMPARE(value("ZUpSizeInfo"), 4.5);
        QCOMPARE(value("ZDownSizeInfo"), -3.25);
    });
    settings("odd settings", {{51, "3"}, {52, "wide"}, {53, "yes"}, {54, "x"}, {55, "high"}, {56, "inf"}}, "", [this] {
        QCOMPARE(chosen("Sampling Rate"), QStringLiteral("1"));
        QCOMPARE(value("ContourSpacer"), 0.0);
        QCOMPARE(isOn("IntensityEnable"), false);
        QCOMPARE(value("ZUpSizeInfo"), 0.0);
    });
    row(
        "crossed bounds of Z",
        [](CuratedPanel &panel) {
            panel.host.setNodeValue("cam", "ZUpSizeInfo", "-4");
            panel.host.setNodeValue("cam", "ZDownSizeInfo", "4");
        },
        "", "",
        [this] {
            QCOMPARE(value("ZUpSizeInfo"), 4.0);
            QCOMPARE(value("ZDownSizeInfo"), -4.0);
        });

    const auto region = [&](const char *name, const char *height, const char *maximum, bool on) {
        const Prepare prepare = [=](CuratedPanel &panel) {
            panel.host.setNodeValue("cam", "Height", height);
            panel.host.setNodeValue("cam", "HeightMax", maximum);
        };
        row(name, prepare, "Get(HeightMax)",
            on ? "Get(HeightMax) Set(CenterImageY,Off) DrawROI(0,0,2048,1024,0,false,0,1)" : "Get(HeightMax)",
            [=] { QCOMPARE(isOn("GrabRangeCompression"), on); });
    };
    region("full height", "1024", "1024", false);
    region("less height", "512", "1024", true);
    region("odd height", "512 lines", "1024", false);
    region("odd maximum", "512", "", false);

    const auto masks = [&](const char *name, const char *enabled, bool refused, const char *replaced, const char *with,
                           bool third) {
        const Prepare prepare = [=](CuratedPanel &panel) {
            panel.host.setCallHook([=, &panel](const QString &call) {
                log(call);
                if (call.contains(QLatin1String("ImageMask)")))
                    panel.host.setNodeValue("cam", "ImageMask",
                                            panel.host.nodeValue("cam", "ImageMaskerSelector") == enabled ? "True"
                                                                                                          : "False");
            });
            panel.host.setWriteResult("cam", "ImageMaskerSelector", refused ? -1 : 0);
        };
        row(name, prepare, replaced, with, [=] {
            QCOMPARE(isOn("  Mask1") || isOn("  Mask2"), false);
            QCOMPARE(isOn("  Mask3"), third);
        });
    };
    masks("third mask", "ImageMasker2", false, "ImageMasker2) Get(ImageMask)",
          "ImageMasker2) Get(ImageMask) Set(ImageMaskerSelector,ImageMasker2) Set(ImageMask,1)"
          " DrawROI(0,0,0,0,3,false,1,0)",
          true);
    masks("masks refused", "", true, " Get(ImageMask)", "", false);
}

void tst_ProfilerPages::start()
{
    QFETCH(Prepare, prepare);
    QFETCH(QString, replaced);
    QFETCH(QString, with);
    QFETCH(Action, check);
    open(prepare);
    QString expected = QString::fromLatin1(firstSync);
    if (!replaced.isEmpty())
        QVERIFY(expected.contains(replaced));
    expected.replace(replaced.isEmpty() ? QStringLiteral("no such text") : replaced, with);
    const int first = m_log.indexOf(QStringLiteral("TriggerSelector=1"));
    QCOMPARE(m_log.mid(first).join(QLatin1Char(' ')), expected);
    check();
}

void tst_ProfilerPages::modeSwitchIsQuick()
{
    qint64 best = 1000; // ms, of a sequence with pauses of 20 ms
    for (int round = 0; round < 8; ++round) {
        QElapsedTimer timer;
        timer.start();
        choose("TriggerMode", round % 2);
        best = std::min(best, round > 0 ? timer.elapsed() : best);
    }
    QVERIFY2(best >= 20 && best < 35, qPrintable(QString::number(best)));
}

void tst_ProfilerPages::completeProfiler()
{
    const std::pair<const char *, int> rowsShown[] = {
        {"firstToolBox", 11}, {"secondToolBox", 12}, {"thirdToolBox", 15}, {"fourthToolBox", 10}};
    for (const auto &[toolBox, count] : rowsShown)
        QCOMPARE(std::pair(toolBox, m_panel->labels(toolBox).size()), std::pair(toolBox, count));
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
    QCOMPARE(m_log, words("RomoveROI(0) Set(OffsetY,0)"));
}

void tst_ProfilerPages::rowsFollowTheModes()
{
    const std::pair<Action, std::pair<QStringList, QStringList>> steps[] = {
        {[this] { choose("FrameTriggerMode", 1); }, {{}, words("TriggerSource TriggerSoftware")}},
        {[this] { choose("FrameTriggerMode", 0); }, {words("TriggerSource TriggerSoftware"), {}}},
        {[this] { choose("TriggerMode", 0); },
         {words("AcquisitionLineRate"), words("EncoderDivider EncoderOutputMode EncoderMode")}},
        {[this] { choose("TriggerMode", 1); },
         {words("EncoderDivider EncoderOutputMode EncoderMode"), words("AcquisitionLineRate")}},
        {[this] { choose("LaserAdjustMode", 0); }, {words("Lasersetting"), words("LowerBound UpperBound")}},
        {[this] { choose("LaserAdjustMode", 1); }, {words("LowerBound UpperBound"), words("Lasersetting")}},
    };
    for (const auto &[step, rows] : steps) {
        step();
        m_panel->panel->updateWidget(false);
        for (const QString &row : rows.first)
            QVERIFY2(isShown(row.toLatin1().constData()), qPrintable(row));
        for (const QString &row : rows.second)
            QVERIFY2(!isShown(row.toLatin1().constData()), qPrintable(row));
    }
    m_panel->camera.port.pokeDouble(m_panel->camera.address("AcquisitionLineRate"), 500);
    m_panel->camera.map->InvalidateNodes();
    choose("TriggerMode", 0);
    QCOMPARE(value("AcquisitionLineRate"), 500.0);
}

void tst_ProfilerPages::languages()
{
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
    for (const char *row : {"TriggerSoftware", "UserSetLoad", "UserSetSave"})
        QCOMPARE(editor<QPushButton>(row)->text(), QStringLiteral("[Execute]"));
    QCOMPARE(editor<QPushButton>("Z Range")->text(), QStringLiteral("[Auto]"));
    for (const char *row : {"TiltCorrection", "HighCorrection"})
        QCOMPARE(editor<QPushButton>(row)->text(), QStringLiteral("[Settings]"));
    QCOMPARE(
        m_panel->labels("fourthToolBox").join(QLatin1Char(' ')),
        QStringLiteral("X方向偏移(mm) Z方向偏移(mm) 倾斜矫正 高度矫正 参数选择 参数加载 参数保存 默认方案选择 激光 "
                       "自动激光控制"));
}

void tst_ProfilerPages::userSets()
{
    for (const char *feature : {"AcquisitionLineCount", "ReverseX", "Threshold", "LaserSwitch"})
        m_panel->camera.port.poke(m_panel->camera.address(feature), 1);
    m_panel->camera.map->InvalidateNodes();
    m_log.clear();
    click("UserSetLoad");
    QCOMPARE(m_log, words("Set(UserSetLoad,)"));
    QCOMPARE(editor<QSpinBox>("AcquisitionLineCount")->value(), 1);
    QCOMPARE(isOn("ReverseX"), true);
    QCOMPARE(editor<QSpinBox>("Threshold")->value(), 1);
    QCOMPARE(isOn("LaserSwitch"), false); // in the fourth tool box

    m_panel->panel->startAcquireOperation();
    QVERIFY(!editor<QPushButton>("UserSetLoad")->isEnabled());
    m_panel->panel->stopAcquireOperation();
    QVERIFY(editor<QPushButton>("UserSetLoad")->isEnabled());
}

/// The device goes while a tilt is being typed.
void tst_ProfilerPages::releasedPanel()
{
    type("TiltCorrection", "12", false);
    m_panel->panel->setParamterViewDisable();
    m_panel->host.setNodeMap(HostCore::FOCUS_CAMERA, "cam", nullptr);
    m_panel->camera.map->InvalidateNodes();
    m_panel->camera.port.resetCounters();
    m_panel->panel->startAcquireOperation();
    m_panel->panel->stopAcquireOperation();
    m_panel->panel->updateWidget(true);
    m_panel->panel->retranslate(1);
    for (int tab : {0, 1, 2, 3})
        m_panel->innerTabs()->setCurrentIndex(tab);
    for (QPushButton *button : m_panel->panel->findChildren<QPushButton *>()) {
        if (button->objectName() != QLatin1String("pushButtonFold"))
            button->click();
    }
    m_panel->panel->hide();
    QCOMPARE(m_log, QStringList());
    QCOMPARE(m_panel->camera.port.accesses.size(), size_t(0));
}

QTEST_MAIN(tst_ProfilerPages)
#include "tst_ProfilerPages.moc"
