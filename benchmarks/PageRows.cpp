// SPDX-License-Identifier: MIT
#include <algorithm>
#include <map>
#include <stdexcept>
#include <string>

#include <QComboBox>
#include <QCoreApplication>
#include <QDoubleSpinBox>
#include <QPushButton>
#include <QTabWidget>

#include "CuratedCamera.h"
#include "ParamterWidget/ParamterWidget.h"
#include "Rows.h"
#include "Stopwatch.h"
#include "ToolPage/CComboBox.h"
#include "ToolPage/ToolPageWidgetItem.h"
#include "support/FakeHostCore.h"

namespace {

const char *const DeviceKey = "bench";
constexpr int Repeats = 15;
constexpr int Moves = 200;
constexpr int FirstTab = 0;
constexpr int LastTab = 2;

/// The panel of a camera with every feature of the curated pages.
class CuratedPages
{
public:
    explicit CuratedPages(PageSet pageSet = PageSet::AreaScan, const CuratedFeatures &features = {}) : camera(features)
    {
        host.reset();
        host.setNodeMap(HostCore::FOCUS_CAMERA, DeviceKey, camera.map);
        for (const auto &[feature, text] : {std::pair("Width", "1280"), std::pair("Height", "1024"),
                                            std::pair("ExposureAuto", "Off"), std::pair("ExposureTime", "5000")})
            host.setNodeValue(DeviceKey, feature, text);
        camera.port.resetCounters();
        panel.setAreaScan(true);
        panel.setPageSet(pageSet);
    }
    ~CuratedPages() { panel.setParamterViewDisable(); }

    /// Only the pages, with their texts.
    void build()
    {
        panel.commonAttributeInit(camera.map);
        panel.triggerInit(camera.map);
        panel.advancedSettingsInit(camera.map);
        panel.retranslate(0);
    }

    /// Opens the panel with one of its inner tabs and forgets what that took.
    void show(int tab)
    {
        panel.initUI(QString::fromLatin1(DeviceKey));
        panel.retranslate(0);
        panel.resize(500, 800);
        panel.findChild<QTabWidget *>(QStringLiteral("tabWidget"))->setCurrentIndex(tab);
        panel.show();
        QCoreApplication::processEvents();
        camera.port.resetCounters();
        host.clearCalls();
    }

    template <class Editor>
    Editor *editor(const char *label) const
    {
        auto *const row = panel.findChild<ToolPageWidgetItem *>(QString::fromLatin1(label));
        if (!row)
            throw std::runtime_error(std::string("there is no row ") + label);
        return row->findChild<Editor *>();
    }

    int rows() const { return int(panel.findChildren<ToolPageWidgetItem *>().size()); }
    int calls(const char *function) const { return int(host.callsTo(QString::fromLatin1(function)).size()); }

    FakeHostCore &host = FakeHostCore::instance();
    CuratedCamera camera;
    ParamterWidget panel;
};

/// A choice in a list of the laser profiler's pages.
struct ModeSwitch
{
    const char *row;
    int before;
    int entry;
    int pauses; ///< for the device to follow, ms
    int tab;
};

constexpr ModeSwitch ModeSwitches[] = {
    {"FrameTriggerMode", 1, 0, 20, 0}, {"FrameTriggerMode", 0, 1, 10, 0}, {"TriggerSource", 0, 1, 20, 0},
    {"TriggerMode", 1, 0, 20, 0},      {"TriggerMode", 0, 1, 20, 0},      {"AcqDataSource", 0, 1, 0, 0},
    {"BatchTransmitMode", 0, 2, 0, 0}, {"LaserAdjustMode", 1, 0, 0, 2},   {"LaserAdjustMode", 0, 1, 0, 2},
};

/// Of opening the profiler's pages for a device with external frame triggers and an encoder, ms.
constexpr int OpeningPauses = 60;

/// The time of an action and of the repaint that follows.
template <class Action>
double shownTime(const Action &action)
{
    return milliseconds([&] {
        action();
        QCoreApplication::processEvents();
    });
}

void addBuilding(BenchReport &report)
{
    const double building = fastestOf(Repeats, [] {
        CuratedPages pages;
        return milliseconds([&] { pages.build(); });
    });
    CuratedPages pages;
    pages.build();
    std::map<int64_t, int> reads;
    int repeated = 0;
    for (const MemoryPort::Access &access : pages.camera.port.accesses)
        repeated += ++reads[access.address] > 1 ? 1 : 0;
    report.add("building the three pages, " + std::to_string(pages.rows()) + " rows", building, "ms", 40);
    report.add("port reads while building the pages", pages.camera.port.reads, "reads");
    report.add("registers read while building the pages", double(reads.size()), "registers");
    // The first value of a row is read past the cache, and the offsets have been read as limits of the sizes.
    report.add("repeated reads of cachable registers while building the pages", repeated, "reads", 2);
}

void addWriting(BenchReport &report)
{
    CuratedPages pages;
    pages.show(FirstTab);
    auto *const gain = pages.editor<QDoubleSpinBox>("Gain");
    gain->setFocus();
    const auto write = [&] {
        pages.camera.port.resetCounters();
        return shownTime([&] {
            gain->setValue(gain->value() + 1);
            Q_EMIT gain->editingFinished();
        });
    };
    report.add("one write in a row, with the refresh of its group and the repaint", fastestOf(Repeats, write), "ms");
    report.add("port writes of one write in a row", pages.camera.port.writes, "writes", 1);
    report.add("port reads of one write in a row", pages.camera.port.reads, "reads", 1);
}

void addLiveRefresh(BenchReport &report)
{
    CuratedPages pages;
    pages.show(FirstTab);
    int exposureTime = 5000;
    const auto tick = [&] {
        pages.host.setNodeValue(DeviceKey, "ExposureTime", std::to_string(++exposureTime));
        pages.host.clearCalls();
        return shownTime([&] { pages.panel.onRealUpdateTimerTimeout(); });
    };
    const double time = fastestOf(Repeats, tick);
    report.add("one tick of the live refresh, with the repaint", time, "ms", 2);
    report.add("reads by name of one tick", pages.calls("GetCameraNodeValue"), "reads", 2);
}

void addDrawing(BenchReport &report)
{
    CuratedPages pages;
    pages.show(LastTab);
    pages.editor<QPushButton>("DrawRoi")->click();
    QCoreApplication::processEvents();
    pages.host.clearCalls();
    pages.camera.port.resetCounters();
    double slowest = 0;
    for (int i = 1; i <= Moves; ++i) {
        slowest = std::max(slowest, shownTime([&] { pages.panel.setDrawRoiPos(i, i, i + 640, i + 480); }));
    }
    report.add("the slowest of " + std::to_string(Moves) + " moves of the drawn region, with the repaint", slowest,
               "ms", 4);
    report.add("calls to the host of these moves", double(pages.host.calls().size()), "calls", 0);
    report.add("port accesses of these moves", double(pages.camera.port.accesses.size()), "accesses", 0);
}

void addProfiler(BenchReport &report)
{
    const double opening = fastestOf(Repeats, [] {
        CuratedPages pages(PageSet::Profiler, profilerFeatures());
        return milliseconds([&] { pages.panel.initUI(QString::fromLatin1(DeviceKey)); });
    });
    report.add("opening a laser profiler's panel, beyond its pauses of " + std::to_string(OpeningPauses) + " ms",
               opening - OpeningPauses, "ms", 80);
    for (const ModeSwitch &mode : ModeSwitches) {
        CuratedPages pages(PageSet::Profiler, profilerFeatures());
        pages.show(mode.tab);
        pages.panel.resize(500, 1400); // every row is in view
        auto *const list = pages.editor<QComboBox>(mode.row);
        const double time = fastestOf(Repeats, [&] {
            list->setCurrentIndex(mode.before);
            QCoreApplication::processEvents();
            return shownTime([&] { list->setCurrentIndex(mode.entry); });
        });
        const std::string entry = list->itemText(mode.entry).toStdString();
        report.add("choosing " + entry + " for " + mode.row + ", with the repaint, beyond its pauses of "
                       + std::to_string(mode.pauses) + " ms",
                   time - mode.pauses, "ms", 5);
    }
}

void addStructuredLight(BenchReport &report)
{
    const double opening = fastestOf(Repeats, [] {
        CuratedPages pages(PageSet::StructuredLight, structuredLightFeatures());
        return milliseconds([&] { pages.panel.initUI(QString::fromLatin1(DeviceKey)); });
    });
    report.add("opening a structured-light camera's panel", opening, "ms", 40);
    CuratedPages pages(PageSet::StructuredLight, structuredLightFeatures());
    pages.show(FirstTab);
    auto *const outputs = pages.editor<CComboBox>("2D Acquisition Output");
    const QModelIndex first = outputs->model()->index(1, 0);
    const double ticking = fastestOf(Repeats, [&] { return shownTime([&] { outputs->onListViewClicked(first); }); });
    report.add("ticking one of its images, with the repaint", ticking, "ms", 5);
    pages.host.clearCalls();
    const double reading = fastestOf(1, [&] { return shownTime([&] { pages.panel.updateWidget(true); }); });
    report.add("reading all of its panel again, with the repaint", reading, "ms", 10);
    report.add("reads by name of that", pages.calls("GetCameraNodeValue"), "reads", 8);
}

} // namespace

void addPageRows(BenchReport &report)
{
    addBuilding(report);
    addWriting(report);
    addLiveRefresh(report);
    addDrawing(report);
    addProfiler(report);
    addStructuredLight(report);
}
