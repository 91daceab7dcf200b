// SPDX-License-Identifier: MIT
#include <malloc.h>

#include <algorithm>
#include <memory>

#include <QCoreApplication>
#include <QLineEdit>
#include <QTabWidget>

#include "BenchDevice.h"
#include "FeatureTree/FeatureTreeView.h"
#include "ParamterWidget/ParamterWidget.h"
#include "Rows.h"
#include "Stopwatch.h"
#include "support/FakeHostCore.h"

namespace {

using namespace std::chrono_literals;

const char *const deviceKey = "bench";
constexpr int repeats = 9;

// The panel of a made-up camera, as its manager makes it.
class OpenedPanel
{
public:
    explicit OpenedPanel(BenchDevice &device) : m_panel(std::make_unique<ParamterWidget>())
    {
        FakeHostCore::instance().reset();
        FakeHostCore::instance().setNodeMap(HostCore::FOCUS_CAMERA, deviceKey, device.nodeMap());
        m_panel->setAreaScan(true);
        m_openingTime = milliseconds([&] { m_panel->initUI(QString::fromLatin1(deviceKey)); });
    }
    ~OpenedPanel() { m_panel->setParamterViewDisable(); }

    double openingTime() const { return m_openingTime; }
    QLineEdit *searchField() const { return m_panel->findChild<QLineEdit *>(QStringLiteral("edit_search")); }
    FeatureTreeView *tree() const { return m_panel->findChild<FeatureTreeView *>(); }

    // Shows the unfolded tree with that many rows in view.
    void showRows(int rows)
    {
        auto *tabs = m_panel->findChild<QTabWidget *>(QStringLiteral("tabMainWidget"));
        tabs->setCurrentIndex(tabs->count() - 1);
        tree()->expandAll();
        m_panel->resize(600, 800);
        m_panel->show();
        const int rowHeight = tree()->visualRect(tree()->model()->index(0, 0)).height();
        tree()->setFixedHeight(rows * rowHeight + tree()->height() - tree()->viewport()->height());
        QCoreApplication::processEvents();
    }

private:
    std::unique_ptr<ParamterWidget> m_panel;
    double m_openingTime;
};

std::string named(const std::string &what, int features)
{
    return what + ", " + std::to_string(features) + " features";
}

double openingTime(int features, std::chrono::microseconds latency = {})
{
    BenchDevice device(features, latency);
    return OpenedPanel(device).openingTime();
}

double readingTime(int features)
{
    const BenchDevice device(features);
    return milliseconds([&] { device.readAllFeatures(); });
}

void addOpening(BenchReport &report)
{
    const double small = medianOf(repeats, [] { return openingTime(100); });
    const double usual = medianOf(repeats, [] { return openingTime(1000); });
    const double large = medianOf(3, [] { return openingTime(5000); });
    const double reading = medianOf(repeats, [] { return readingTime(1000); });
    report.add(named("opening a panel", 100), small, "ms");
    report.add(named("opening a panel", 1000), usual, "ms", 60);
    report.add(named("opening / reading every value once", 1000), usual / reading, "x", 2);
    report.add(named("opening a panel", 5000), large, "ms");
    report.add("opening with 5000 / with 1000 features", large / usual, "x", 6);
    for (int features : {100, 1000, 5000})
        report.add(named("opening a panel, port latency 1 ms", features), openingTime(features, 1ms), "ms");
}

void addOpeningReads(BenchReport &report)
{
    BenchDevice device(1000);
    const OpenedPanel panel(device);
    report.add(named("port reads while opening", 1000), device.port().reads, "reads");
    report.add(named("repeated reads of cachable registers while opening", 1000), device.repeatedReads(), "reads", 0);
    report.add(named("most reads of one availability register while opening", 1000), device.mostGateReads(), "reads");
}

void addSearching(BenchReport &report)
{
    BenchDevice device(1000);
    OpenedPanel panel(device);
    panel.showRows(30);
    std::vector<double> times;
    unsigned gateReads = 0;
    for (const char *text : {"f", "fr", "fra", "fram", "frame", "frameR", "frame", "fram", "fra", "fr", "f", ""}) {
        device.port().resetCounters();
        times.push_back(milliseconds([&] {
            panel.searchField()->setText(QString::fromLatin1(text));
            QCoreApplication::processEvents();
        }));
        gateReads = std::max(gateReads, device.mostGateReads());
    }
    report.add(named("one keystroke in the search field, with the repaint", 1000), median(times), "ms", 10);
    report.add(named("the slowest of 12 keystrokes", 1000), *std::max_element(times.begin(), times.end()), "ms", 10);
    report.add("most reads of one availability register per keystroke", gateReads, "reads", 1);
}

void addRepainting(BenchReport &report)
{
    BenchDevice device(1000);
    OpenedPanel panel(device);
    panel.showRows(30);
    QWidget *const viewport = panel.tree()->viewport();
    viewport->repaint();
    device.port().resetCounters();
    const double time = medianOf(repeats, [&] { return milliseconds([&] { viewport->repaint(); }); });
    report.add("one repaint of 30 rows", time, "ms");
    report.add("reads of what can be cached per repaint of 30 rows", double(device.cachableReads()) / repeats, "reads",
               0);
    report.add("reads of what cannot be cached per repaint of 30 rows",
               double(device.port().reads - device.cachableReads()) / repeats, "reads", 2);
}

double usedMegabytes()
{
    const struct mallinfo2 heap = mallinfo2();
    return double(heap.uordblks + heap.hblkhd) / 1e6;
}

void addMemory(BenchReport &report)
{
    BenchDevice device(1000);
    device.readAllFeatures();
    OpenedPanel(device).showRows(30);
    const double before = usedMegabytes();
    OpenedPanel panel(device);
    report.add(named("memory of an opened panel beyond the node map", 1000), usedMegabytes() - before, "MB", 6);
    panel.showRows(30);
    report.add(named("the same after it was shown", 1000), usedMegabytes() - before, "MB", 6);
}

} // namespace

void addPanelRows(BenchReport &report)
{
    addOpening(report);
    addOpeningReads(report);
    addSearching(report);
    addRepainting(report);
    addMemory(report);
}
