// SPDX-License-Identifier: MIT
#include <algorithm>
#include <cmath>
#include <stdexcept>

#include <QCoreApplication>
#include <QEventLoop>
#include <QMouseEvent>
#include <QPushButton>
#include <QSpinBox>
#include <QTabWidget>
#include <QTemporaryDir>
#include <QTimer>

#include "BenchMain.h"
#include "BenchReport.h"
#include "Host/HostContext.h"
#include "ParamterWnd/ParamterWnd.h"
#include "ReadAheadRows.h"
#include "Simulation/Firmware.h"
#include "Simulation/SimulatedDevice.h"
#include "Simulation/SimulatedDevices.h"
#include "Stopwatch.h"
#include "Viewer/DeviceTree.h"
#include "Viewer/HeightColours.h"
#include "Viewer/ImageView.h"
#include "Viewer/ViewerWindow.h"

// What needs a whole host: the viewer with its panel on the simulated area-scan camera.

namespace {

const QString CameraId = QStringLiteral("SIM-AREA-01");
constexpr int TriggerPeriod = 10; // ms
constexpr int TriggerTime = 10000; // ms
constexpr int Repeats = 15;
constexpr int Moves = 200;

void handleEvents(int milliseconds)
{
    QEventLoop loop;
    QTimer::singleShot(milliseconds, Qt::PreciseTimer, &loop, &QEventLoop::quit);
    loop.exec();
}

/// The viewer with the open camera.
class Viewer
{
public:
    explicit Viewer(const QString &settings) : context({settings, {}}), window(addSimulatedDevices(context))
    {
        window.resize(1280, 900);
        window.show();
        window.devices().select(CameraId);
        if (!context.sessions().open(CameraId))
            throw std::runtime_error("the simulated camera does not open");
        while (!panel()->findChild<QWidget *>(QStringLiteral("DrawRoi"))) // until the panel has followed
            handleEvents(10);
    }

    void write(const char *feature, const char *value)
    {
        if (!context.values().write(CameraId, QString::fromLatin1(feature), QString::fromLatin1(value)))
            throw std::runtime_error(std::string(feature) + " cannot be written");
    }

    /// The panel that is shown.
    QWidget *panel() const
    {
        for (QWidget *panel : m_panels.findChildren<QWidget *>(QStringLiteral("ParamterWidget"))) {
            if (panel->isVisible())
                return panel;
        }
        throw std::runtime_error("no panel is shown");
    }

    void stop()
    {
        context.sessions().stopAcquisition(CameraId);
        handleEvents(200); // the panel unlocks what acquisitions lock
    }

    void openTab(int tab) { panel()->findChild<QTabWidget *>(QStringLiteral("tabWidget"))->setCurrentIndex(tab); }

    /// The editor of a row.
    template <class Editor>
    Editor *editor(const char *label) const
    {
        const auto *const row = panel()->findChild<QWidget *>(QString::fromLatin1(label));
        if (!row)
            throw std::runtime_error(std::string("there is no row ") + label);
        return row->findChild<Editor *>();
    }

    SimulatedDevice &camera() { return dynamic_cast<SimulatedDevice &>(*context.devices().device(CameraId)); }

    HostContext context;
    ViewerWindow window;

private:
    static HostContext &addSimulatedDevices(HostContext &context)
    {
        for (std::unique_ptr<Device> &device : makeSimulatedDevices())
            context.devices().add(std::move(device));
        return context;
    }

    const QWidget &m_panels = window.panel();
};

void addColouring(BenchReport &report)
{
    HeightFrame frame;
    frame.width = 2048;
    frame.height = frame.lines = 1000;
    for (int i = 0; i < frame.width * frame.height; ++i)
        frame.heights.push_back(i % 50 == 0 ? std::nanf("") : float(i % 1800) / 100.0f - 9.0f);
    const auto colour = [&frame] { return milliseconds([&frame] { heightColours(frame, -9.0, 9.0); }); };
    report.add("a height map of 2048 x 1000 points as a picture", fastestOf(Repeats, colour), "ms", 20);
}

void addTriggering(BenchReport &report, Viewer &viewer, const char *width, const char *height)
{
    viewer.write("Width", width);
    viewer.write("Height", height);
    viewer.write("TriggerMode", "On");
    viewer.write("TriggerSource", "Software");
    viewer.context.sessions().startAcquisition(CameraId);
    viewer.openTab(1);
    viewer.editor<QSpinBox>("Software Trigger Auto Time(ms)")->setValue(TriggerPeriod);

    int triggers = 0;
    int frames = 0;
    QObject counter;
    QObject::connect(&viewer.camera().inside(), &Firmware::triggered, &counter, [&] { ++triggers; });
    QObject::connect(&viewer.context.devices(), &KnownDevices::frameReady, &counter, [&] { ++frames; });
    auto *const toggle = viewer.editor<QPushButton>("Software Trigger Auto Enable");
    toggle->click();
    handleEvents(TriggerTime);
    toggle->click();
    viewer.stop();
    viewer.write("TriggerMode", "Off");

    const double perSecond = triggers * 1000.0 / TriggerTime;
    const std::string what = std::string(" at 10 ms over 10 s, image of ") + width + " x " + height;
    report.add("automatic software triggers a second" + what, perSecond, "1/s");
    report.add("off 100 a second", std::abs(perSecond - 100), "1/s", 2);
    report.add("images shown a second meanwhile", frames * 1000.0 / TriggerTime, "1/s");
}

void addLiveRefresh(BenchReport &report, Viewer &viewer)
{
    viewer.openTab(0);
    viewer.write("ExposureAuto", "Continuous");
    viewer.context.sessions().startAcquisition(CameraId);
    const double slowest = -fastestOf(Repeats, [&] {
        handleEvents(100);
        return -milliseconds([&] { QMetaObject::invokeMethod(viewer.panel(), "onRealUpdateTimerTimeout"); });
    });
    viewer.stop();
    viewer.write("ExposureAuto", "Off");
    report.add("the slowest of 15 ticks of the live refresh, automatic exposure at work", slowest, "ms", 2);
}

void send(QWidget &view, QEvent::Type type, const QPointF &position)
{
    const Qt::MouseButtons held = type == QEvent::MouseButtonRelease ? Qt::NoButton : Qt::LeftButton;
    const Qt::MouseButton changed = type == QEvent::MouseMove ? Qt::NoButton : Qt::LeftButton;
    QMouseEvent event(type, position, view.mapToGlobal(position.toPoint()), changed, held, Qt::NoModifier);
    QCoreApplication::sendEvent(&view, &event);
}

/// Draws the lower right corner of a region with the mouse.
void addDrawing(BenchReport &report, Viewer &viewer)
{
    viewer.openTab(2);
    ImageView &view = viewer.window.image();
    viewer.editor<QPushButton>("DrawRoi")->click();
    handleEvents(50);
    auto *const width = viewer.editor<QSpinBox>("Draw-Width");
    const int before = width->value();
    const QPointF corner = view.imageRect().bottomRight() - QPointF(1, 1);
    send(view, QEvent::MouseButtonPress, corner);
    double slowest = 0;
    for (int i = 1; i <= Moves; ++i) {
        slowest = std::max(slowest, milliseconds([&] {
                               send(view, QEvent::MouseMove, corner - QPointF(i, i) / 2);
                               QCoreApplication::processEvents();
                           }));
    }
    send(view, QEvent::MouseButtonRelease, corner - QPointF(Moves, Moves) / 2);
    if (width->value() >= before)
        throw std::runtime_error("the mouse does not drag the region");
    viewer.editor<QPushButton>("DrawRoi")->click();
    report.add("the slowest of 200 mouse moves that drag a region, image view and panel", slowest, "ms");
}

void measure(BenchReport &report)
{
    const QTemporaryDir scratch;
    Viewer viewer(scratch.filePath(QStringLiteral("bench.ini")));
    addColouring(report);
    addTriggering(report, viewer, "640", "480");
    addTriggering(report, viewer, "2448", "2048");
    addLiveRefresh(report, viewer);
    addDrawing(report, viewer);
    addReadAheadRows(report);
}

} // namespace

int main(int argc, char *argv[])
{
    const QString description = QStringLiteral("Measures the viewer with its panel on the simulated area-scan camera. "
                                               "Exits with 1 if a figure misses its bound.");
    return benchMain(argc, argv, description, measure);
}
