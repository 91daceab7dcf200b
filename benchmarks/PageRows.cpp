// SPDX-License-Identifier: MIT
#include <algorithm>
#include <map>
#include <stdexcept>
#include <string>

#include <QCoreApplication>
#include <QDoubleSpinBox>
#include <QPushButton>
#include <QTabWidget>

#include "CuratedCamera.h"
#include "ParamterWidget/ParamterWidget.h"
#include "Rows.h"
#include "Stopwatch.h"
#include "ToolPage/ToolPageWidgetItem.h"
#include "support/FakeHostCore.h"

namespace {

const char *const deviceKey = "bench";
constexpr int repeats = 15;
constexpr int moves = 200;
constexpr int firstTab = 0;
constexpr int lastTab = 2;

/// The panel of a camera with every feature of the curated pages.
class CuratedPages
{
public:
    CuratedPages()
    {
        host.reset();
        host.setNodeMap(HostCore::FOCUS_CAMERA, deviceKey, camera.map);
        for (const auto &[feature, text] : {std::pair("Width", "1280"), std::pair("Height", "1024"),
                                            std::pair("ExposureAuto", "Off"), std::pair("ExposureTime", "5000")})
            host.setNodeValue(deviceKey, feature, text);
        camera.port.resetCounters();
        panel.setAreaScan(true);
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
        panel.initUI(QString::fromLatin1(deviceKey));
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
    const double building = fastestOf(repeats, [] {
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
    report.add("repeated reads of cachable registers while building the pages", repeated, "reads", 0);
}

void addWriting(BenchReport &report)
{
    CuratedPages pages;
    pages.show(firstTab);
    auto *const gain = pages.editor<QDoubleSpinBox>("Gain");
    gain->setFocus();
    const auto write = [&] {
        pages.camera.port.resetCounters();
        return shownTime([&] {
            gain->setValue(gain->value() + 1);
            Q_EMIT gain->editingFinished();
        });
    };
    report.add("one write in a row, with the refresh of its group and the repaint", fastestOf(repeats, write), "ms");
    report.add("port writes of one write in a row", pages.camera.port.writes, "writes", 1);
    report.add("port reads of one write in a row", pages.camera.port.reads, "reads", 1);
}

void addLiveRefresh(BenchReport &report)
{
    CuratedPages pages;
    pages.show(firstTab);
    int exposureTime = 5000;
    const auto tick = [&] {
        pages.host.setNodeValue(deviceKey, "ExposureTime", std::to_string(++exposureTime));
        pages.host.clearCalls();
        return shownTime([&] { pages.panel.onRealUpdateTimerTimeout(); });
    };
    const double time = fastestOf(repeats, tick);
    report.add("one tick of the live refresh, with the repaint", time, "ms", 2);
    report.add("reads by name of one tick", pages.calls("GetCameraNodeValue"), "reads", 2);
}

void addDrawing(BenchReport &report)
{
    CuratedPages pages;
    pages.show(lastTab);
    pages.editor<QPushButton>("DrawRoi")->click();
    QCoreApplication::processEvents();
    pages.host.clearCalls();
    pages.camera.port.resetCounters();
    double slowest = 0;
    for (int i = 1; i <= moves; ++i) {
        slowest = std::max(slowest, shownTime([&] { pages.panel.setDrawRoiPos(i, i, i + 640, i + 480); }));
    }
    report.add("the slowest of " + std::to_string(moves) + " moves of the drawn region, with the repaint", slowest,
               "ms", 4);
    report.add("calls to the host of these moves", double(pages.host.calls().size()), "calls", 0);
    report.add("port accesses of these moves", double(pages.camera.port.accesses.size()), "accesses", 0);
}

} // namespace

void addPageRows(BenchReport &report)
{
    addBuilding(report);
    addWriting(report);
    addLiveRefresh(report);
    addDrawing(report);
}
