// SPDX-License-Identifier: MIT
#include <algorithm>
#include <cmath>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include <QCoreApplication>
#include <QEventLoop>
#include <QLineEdit>
#include <QTabWidget>
#include <QThread>
#include <QTimer>

#include "BenchDevice.h"
#include "CuratedCamera.h"
#include "Devices/FailFastPort.h"
#include "FeatureTree/FeatureTreeView.h"
#include "FeatureTree/TreeItem.h"
#include "FeatureTree/TreeModel.h"
#include "ParamterWidget/ParamterWidget.h"
#include "Rows.h"
#include "SlowRows.h"
#include "Stopwatch.h"
#include "Viewer/MeteredApplication.h"
#include "support/FakeHostCore.h"

namespace {

using namespace std::chrono_literals;
using Clock = std::chrono::steady_clock;

const char *const DeviceKey = "bench";
constexpr double LongestEvent = 100; ///< ms
constexpr double LongestOpeningEvent = 500; ///< ms, of one trigger that is set up with all its writes
constexpr int Features = 1000;

/// Runs the event loop until `isDone`, at most that long; the time it took, in milliseconds.
double waitUntil(const std::function<bool()> &isDone, std::chrono::milliseconds atMost = 60s)
{
    const auto start = Clock::now();
    QEventLoop loop;
    QTimer check;
    QObject::connect(&check, &QTimer::timeout, &loop, [&] {
        if (isDone() || Clock::now() - start > atMost)
            loop.quit();
    });
    check.start(2);
    loop.exec();
    return std::chrono::duration<double, std::milli>(Clock::now() - start).count();
}

/// Does something in an event of its own, as a user would; what it and the events after it have taken longest.
class Deed
{
public:
    explicit Deed(const std::function<void()> &deed)
    {
        MeteredApplication::meter()->restart();
        QTimer::singleShot(0, qApp, [this, deed] {
            deed();
            m_isDone = true;
        });
        waitUntil([this] { return m_isDone; });
    }
    double longestEvent() const { return MeteredApplication::meter()->longest(); }

private:
    bool m_isDone = false;
};

bool isAllRead(const TreeItem &constItem)
{
    auto &item = const_cast<TreeItem &>(constItem);
    for (int row = 0; row < item.childCount(); ++row) {
        if (item.child(row)->isUnread() || !isAllRead(*item.child(row)))
            return false;
    }
    return true;
}

/// The panel of a camera, with the attribute tab in front.
class ShownPanel
{
public:
    explicit ShownPanel(GenApi::INodeMap *nodeMap) : m_panel(std::make_unique<ParamterWidget>())
    {
        FakeHostCore &host = FakeHostCore::instance();
        host.reset();
        host.setNodeMap(HostCore::FOCUS_CAMERA, DeviceKey, nodeMap);
        host.setParamterInfo(HostCore::PARAMETER_INFO_ATTRIBUTE_LEVEL, "2"); // Guru: every row
        m_panel->setAreaScan(true);
    }
    ~ShownPanel() { m_panel->setParamterViewDisable(); }

    void open()
    {
        m_panel->initUI(QString::fromLatin1(DeviceKey));
        auto *const tabs = m_panel->findChild<QTabWidget *>(QStringLiteral("tabMainWidget"));
        tabs->setCurrentIndex(tabs->count() - 1);
        m_panel->resize(600, 1600);
        m_panel->show();
    }
    void openWholly()
    {
        open();
        waitUntil([this] { return isRead(); });
    }
    bool isRead() const { return isAllRead(*model()->getItem({})); }
    bool isShown() const { return tree()->isVisible() && tree()->indexAt({0, 0}).isValid(); }
    QLineEdit *searchField() const { return m_panel->findChild<QLineEdit *>(QStringLiteral("edit_search")); }
    FeatureTreeView *tree() const { return m_panel->findChild<FeatureTreeView *>(); }
    const TreeModel *model() const { return qobject_cast<const TreeModel *>(tree()->model()); }
    /// Whether the first feature is shown as one that can be edited.
    bool isLive() const { return isLive(model()->index(0, 0)); }
    int matches() const { return matches(model()->index(0, 0)); }

private:
    bool isLive(const QModelIndex &category) const
    {
        const QModelIndex first = model()->index(0, 0, category);
        return model()->hasChildren(first) ? isLive(first) : model()->isEditable(model()->getItem(first));
    }
    int matches(const QModelIndex &parent) const
    {
        if (!model()->hasChildren(parent))
            return 1;
        int count = 0;
        for (int row = 0; row < model()->rowCount(parent); ++row)
            count += tree()->isRowHidden(row, parent) ? 0 : matches(model()->index(row, 0, parent));
        return count;
    }

    std::unique_ptr<ParamterWidget> m_panel;
};

std::string at(const std::string &what, std::chrono::milliseconds latency)
{
    return what + ", " + std::to_string(latency.count()) + " ms an access";
}

void addOpening(BenchReport &report, std::chrono::milliseconds latency)
{
    BenchDevice device(Features, latency);
    ShownPanel panel(device.nodeMap());
    const auto start = Clock::now();
    const auto sinceStart = [start] { return std::chrono::duration<double, std::milli>(Clock::now() - start).count(); };
    const Deed opening([&panel] { panel.open(); });
    waitUntil([&panel] { return panel.isShown(); });
    const double shown = sinceStart();
    waitUntil([&panel] { return panel.isRead(); });
    const double accesses = double(device.port().reads) * double(latency.count());
    report.add(at("opening: first rows and a live window after", latency), shown, "ms", 150);
    report.add(at("opening: the longest event", latency), opening.longestEvent(), "ms", LongestEvent);
    report.add(at("opening: all values are there after", latency), sinceStart(), "ms");
    report.add(at("opening: that / the time of its accesses", latency), sinceStart() / accesses, "x", 1.5);
}

void addSearching(BenchReport &report, std::chrono::milliseconds latency)
{
    BenchDevice device(Features);
    ShownPanel panel(device.nodeMap());
    panel.openWholly();
    device.port().latency = latency;
    double longest = 0;
    for (const char *text : {"f", "fr", "fra", "fram", "frame", ""}) {
        const Deed typing([&] { panel.searchField()->setText(QString::fromLatin1(text)); });
        waitUntil([] { return false; }, 150ms);
        longest = std::max(longest, typing.longestEvent());
    }
    report.add(at("a keystroke in the search field: the longest event", latency), longest, "ms", LongestEvent);
}

/// How many rows fewer stand when the event of a keystroke returns than when all was read.
void addResultAtOnce(BenchReport &report)
{
    BenchDevice device(Features);
    ShownPanel panel(device.nodeMap());
    panel.openWholly();
    int atOnce = 0;
    const Deed typing([&] {
        panel.searchField()->setText(QStringLiteral("frame"));
        atOnce = panel.matches();
    });
    waitUntil([] { return false; }, 300ms);
    report.add("a keystroke at latency 0: rows that are wrong when the event returns",
               std::abs(atOnce - panel.matches()), "rows", 0);
}

void addExpanding(BenchReport &report)
{
    constexpr auto Latency = 20ms;
    BenchDevice device(Features);
    ShownPanel panel(device.nodeMap());
    panel.openWholly();
    device.nodeMap()->InvalidateNodes();
    device.port().latency = Latency;
    const Deed expanding([&panel] { panel.tree()->expandAll(); });
    waitUntil([] { return false; }, 5s);
    report.add(at("expanding all, nothing read yet: the longest event", Latency), expanding.longestEvent(), "ms",
               LongestEvent);
}

/// Accesses of the fourth to the thirteenth second, by beats of one second at most.
void addRepainting(BenchReport &report)
{
    constexpr auto Latency = 20ms;
    constexpr int Seconds = 10;
    SlowRows device;
    ShownPanel panel(device.nodeMap());
    panel.openWholly();
    panel.tree()->expandAll();
    device.port().latency = Latency;
    waitUntil([] { return false; }, 3s);
    device.port().resetCounters();
    const Deed watching([] {});
    waitUntil([] { return false; }, std::chrono::seconds(Seconds));
    report.add(at("32 rows that are not cachable: the longest event", Latency), watching.longestEvent(), "ms",
               LongestEvent);
    report.add("32 rows that are not cachable: accesses a second", double(device.port().reads) / Seconds, "accesses");
    report.add("32 rows that are not cachable: most reads of one value in ten seconds", device.mostValueReads(),
               "reads", Seconds + 1);
}

void addTimeouts(BenchReport &report)
{
    constexpr auto Deadline = 2500ms;
    SlowRows device;
    ShownPanel panel(device.nodeMap());
    panel.openWholly();
    panel.tree()->expandAll();
    waitUntil([] { return false; }, 1500ms);
    device.port().latency = Deadline;
    device.port().readFault = MemoryPort::Fault::Timeout;
    double blocked = 0;
    auto last = Clock::now();
    QTimer pulse;
    QObject::connect(&pulse, &QTimer::timeout, qApp, [&] {
        const double gap = std::chrono::duration<double, std::milli>(Clock::now() - last).count();
        blocked += gap > LongestEvent ? gap : 0;
        last = Clock::now();
    });
    pulse.start(10);
    const Deed watching([] {});
    device.port().resetCounters();
    waitUntil([] { return false; }, 60s);
    report.add("each access times out after 2.5 s: the longest event", watching.longestEvent(), "ms", 2600);
    report.add("each access times out after 2.5 s: blocked in the first minute", blocked, "ms", 5000);
    report.add("each access times out after 2.5 s: accesses in the first minute", device.port().reads, "accesses", 8);
    device.port().readFault = MemoryPort::Fault::None;
    device.port().latency = 0ms;
    report.add("it answers again: rows are live after", waitUntil([&panel] { return panel.isLive(); }), "ms", 12600);
}

/// The pages of a laser profiler, whose values are read and written by name as well; each takes as long as an access.
void addProfiler(BenchReport &report)
{
    static constexpr auto Latency = 20ms;
    CuratedCamera camera(profilerFeatures());
    FakeHostCore &host = FakeHostCore::instance();
    host.reset();
    host.setNodeMap(HostCore::FOCUS_CAMERA, DeviceKey, camera.map);
    camera.port.latency = Latency;
    host.setCallHook([](const QString &call) {
        if (call.contains(QLatin1String("CameraNodeValue")))
            QThread::msleep(Latency.count());
    });
    ParamterWidget panel;
    panel.setPageSet(PageSet::Profiler);
    const Deed opening([&panel] {
        panel.initUI(QString::fromLatin1(DeviceKey));
        panel.show();
    });
    waitUntil([] { return false; }, 8s);
    report.add(at("the pages of a profiler, opening: the longest event", Latency), opening.longestEvent(), "ms",
               LongestOpeningEvent);
    const Deed importing([&panel] { panel.updateWidget(true); });
    waitUntil([] { return false; }, 5s);
    report.add(at("the pages of a profiler, all read anew: the longest event", Latency), importing.longestEvent(), "ms",
               LongestEvent);
    panel.setParamterViewDisable();
    host.reset();
}

/// A port that fails fast in front of one that does not answer at all.
void addFailFast(BenchReport &report)
{
    SlowRows device;
    auto target = std::make_unique<ForwardingPort>(device.port());
    FailFastPort port(std::move(target), FailFastPort::Timing());
    device.nodeMap()->Connect(&port);
    ShownPanel panel(device.nodeMap());
    panel.openWholly();
    panel.tree()->expandAll();
    waitUntil([] { return false; }, 1500ms);
    device.port().latency = 2500ms;
    device.port().readFault = MemoryPort::Fault::Timeout;
    const Deed watching([] {});
    waitUntil([] { return false; }, 10s);
    report.add("the same behind a port that fails fast: the longest event", watching.longestEvent(), "ms", 600);
    device.port().readFault = MemoryPort::Fault::None;
    device.port().latency = 0ms;
    report.add("behind a port that fails fast: rows are live after", waitUntil([&panel] { return panel.isLive(); }),
               "ms", 3000 + 2500);
}

} // namespace

void addFaultRows(BenchReport &report)
{
    for (const auto latency : {1ms, 5ms, 20ms})
        addOpening(report, latency);
    for (const auto latency : {1ms, 5ms, 20ms})
        addSearching(report, latency);
    addResultAtOnce(report);
    addExpanding(report);
    addRepainting(report);
    addProfiler(report);
    addTimeouts(report);
    addFailFast(report);
}
