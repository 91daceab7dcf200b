// SPDX-License-Identifier: MIT
#include <malloc.h>

#include <algorithm>
#include <memory>
#include <numeric>
#include <stdexcept>
#include <vector>

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

const char *const DeviceKey = "bench";
constexpr int Repeats = 15;
constexpr int RowsInView = 30;

// The panel of a made-up camera, as its manager makes it.
class OpenedPanel
{
public:
    explicit OpenedPanel(BenchDevice &device) : m_panel(std::make_unique<ParamterWidget>())
    {
        FakeHostCore::instance().reset();
        FakeHostCore::instance().setNodeMap(HostCore::FOCUS_CAMERA, DeviceKey, device.nodeMap());
        FakeHostCore::instance().setParamterInfo(HostCore::PARAMETER_INFO_ATTRIBUTE_LEVEL, "2"); // Guru: every row
        m_panel->setAreaScan(true);
        m_openingTime = milliseconds([&] { m_panel->initUI(QString::fromLatin1(DeviceKey)); });
    }
    ~OpenedPanel() { m_panel->setParamterViewDisable(); }

    double openingTime() const { return m_openingTime; }
    QLineEdit *searchField() const { return m_panel->findChild<QLineEdit *>(QStringLiteral("edit_search")); }
    FeatureTreeView *tree() const { return m_panel->findChild<FeatureTreeView *>(); }

    // Shows the unfolded tree with rowsInView rows in view.
    void showTree()
    {
        auto *tabs = m_panel->findChild<QTabWidget *>(QStringLiteral("tabMainWidget"));
        tabs->setCurrentIndex(tabs->count() - 1);
        tree()->expandAll();
        m_panel->resize(600, 1600);
        m_panel->show();
        const int rowHeight = tree()->visualRect(tree()->model()->index(0, 0)).height();
        tree()->setFixedHeight(RowsInView * rowHeight + tree()->height() - tree()->viewport()->height());
        QCoreApplication::processEvents();
        if (shownRows() != RowsInView)
            throw std::runtime_error(std::to_string(shownRows()) + " rows are in view");
    }

    int shownRows() const
    {
        int rows = 0;
        for (QModelIndex index = tree()->indexAt({0, 0}); index.isValid(); index = tree()->indexBelow(index))
            rows += tree()->visualRect(index).bottom() < tree()->viewport()->height() ? 1 : 0;
        return rows;
    }

private:
    std::unique_ptr<ParamterWidget> m_panel;
    double m_openingTime;
};

std::string named(const std::string &what, int features)
{
    return what + ", " + std::to_string(features) + " features";
}

double openingTime(int features)
{
    BenchDevice device(features);
    return OpenedPanel(device).openingTime();
}

void addOpening(BenchReport &report)
{
    const double small = fastestOf(Repeats, [] { return openingTime(100); });
    const double usual = fastestOf(Repeats, [] { return openingTime(1000); });
    const double large = fastestOf(Repeats, [] { return openingTime(5000); });
    report.add(named("opening a panel", 100), small, "ms");
    report.add(named("opening a panel", 1000), usual, "ms", 15);
    report.add(named("opening a panel", 5000), large, "ms");
    report.add("opening with 5000 / with 1000 features", large / usual, "x", 6);
}

void addOpeningReads(BenchReport &report)
{
    BenchDevice device(1000);
    const OpenedPanel panel(device);
    report.add(named("port reads while opening", 1000), device.port().reads, "reads");
    report.add(named("repeated reads of cachable registers while opening", 1000), device.repeatedReads(), "reads", 0);
    report.add(named("most reads of one availability register while opening", 1000), device.mostGateReads(), "reads");
}

constexpr const char *Typed[] = {"f", "fr", "fra", "fram", "frame", "frameR", "frame", "fram", "fra", "fr", "f", ""};

// The time that each of the keystrokes takes in a panel that has just been opened, with the repaint.
std::vector<double> typingTimes(BenchDevice &device, unsigned &gateReads)
{
    OpenedPanel panel(device);
    panel.showTree();
    std::vector<double> times;
    for (const char *text : Typed) {
        device.port().resetCounters();
        const double pass = milliseconds([&] { panel.searchField()->setText(QString::fromLatin1(text)); });
        gateReads = std::max(gateReads, device.mostGateReads());
        times.push_back(pass + milliseconds([] { QCoreApplication::processEvents(); }));
    }
    return times;
}

void addSearching(BenchReport &report)
{
    BenchDevice device(1000);
    unsigned gateReads = 0;
    std::vector<double> times = typingTimes(device, gateReads);
    for (int i = 1; i < Repeats; ++i) {
        const std::vector<double> more = typingTimes(device, gateReads);
        std::transform(times.begin(), times.end(), more.begin(), times.begin(),
                       [](double one, double other) { return std::min(one, other); });
    }
    const std::string what = named("one keystroke in the search field, with the repaint", 1000);
    report.add(what, std::accumulate(times.begin(), times.end(), 0.0) / double(times.size()), "ms", 10);
    report.add("the slowest of these", *std::max_element(times.begin(), times.end()), "ms", 10);
    report.add("most reads of one availability register per keystroke", gateReads, "reads");
}

void addFiltering(BenchReport &report)
{
    BenchDevice device(1000);
    OpenedPanel panel(device);
    panel.showTree();
    device.port().resetCounters();
    panel.tree()->SetFilter(GenApi::Guru, QStringLiteral("frame"));
    report.add("most reads of one availability register per pass of the filter", device.mostGateReads(), "reads", 1);
}

void addRepainting(BenchReport &report)
{
    BenchDevice device(1000);
    OpenedPanel panel(device);
    panel.showTree();
    QWidget *const viewport = panel.tree()->viewport();
    viewport->repaint();
    device.port().resetCounters();
    const double time = fastestOf(Repeats, [&] { return milliseconds([&] { viewport->repaint(); }); });
    // Among the 30 rows is one whose register is not cachable, a temperature.
    const double cachable = double(device.cachableReads()) / Repeats;
    report.add("one repaint of 30 rows", time, "ms");
    report.add("reads of what can be cached per repaint of 30 rows", cachable, "reads", 0);
    report.add("other reads per repaint of 30 rows", double(device.port().reads) / Repeats - cachable, "reads", 1);
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
    OpenedPanel(device).showTree();
    const double before = usedMegabytes();
    OpenedPanel panel(device);
    report.add(named("memory of an opened panel beyond the node map", 1000), usedMegabytes() - before, "MB", 6);
    panel.showTree();
    report.add(named("the same after it was shown", 1000), usedMegabytes() - before, "MB", 6);
}

} // namespace

void addPanelRows(BenchReport &report)
{
    addOpening(report);
    addOpeningReads(report);
    addSearching(report);
    addFiltering(report);
    addRepainting(report);
    addMemory(report);
}
