// SPDX-License-Identifier: MIT
#include <ctime>
#include <dlfcn.h>
#include <functional>
#include <stdexcept>

#include <QEventLoop>
#include <QTimer>

#include "BenchMain.h"
#include "BenchReport.h"
#include "Devices/gentl/GentlCamera.h"
#include "Features/NodeText.h"
#include "Simulation/SimulatedDevices.h"
#include "Stopwatch.h"
#include "tests/gentl/TestScript.h"

// What it costs to reach a camera through a producer.

namespace {

constexpr int Repeats = 7;
constexpr int AcquisitionTime = 10'000; // ms
constexpr double FrameRate = 60.0; // per second
const QString Producer = QStringLiteral(TEST_PRODUCER);

void tell(const char *line)
{
    void *const library = dlopen(TEST_PRODUCER, RTLD_NOW | RTLD_LOCAL | RTLD_NODELETE);
    const auto script =
        library ? reinterpret_cast<decltype(&paramter_test_script)>(dlsym(library, "paramter_test_script")) : nullptr;
    if (!script || *script(line))
        throw std::runtime_error(std::string("the producer does not do this: ") + line);
}

void open(Device &device)
{
    const std::atomic_bool cancelled{false};
    QString error;
    device.reach(cancelled, {});
    if (!device.open(&error))
        throw std::runtime_error(error.toStdString());
}

double openingTime(const std::function<std::unique_ptr<Device>()> &make)
{
    return fastestOf(Repeats, [&make] {
        const std::unique_ptr<Device> device = make();
        return milliseconds([&device] { open(*device); });
    });
}

std::unique_ptr<Device> simulated()
{
    for (std::unique_ptr<Device> &device : makeSimulatedDevices()) {
        if (device->id() == QLatin1String("SIM-AREA-01"))
            return std::move(device);
    }
    throw std::runtime_error("there is no simulated camera");
}

std::unique_ptr<GentlCamera> throughProducer()
{
    return std::make_unique<GentlCamera>(
        GentlIdentity{{Producer, "GEV-IF", "GEV-AREA"}, QStringLiteral("camera"), QStringLiteral("GEV")});
}

void addOpening(BenchReport &report)
{
    report.add("open the simulated camera", openingTime(simulated), "ms");
    report.add("open it through a producer, registers read ahead", openingTime(throughProducer), "ms", 100);
}

void addFrames(BenchReport &report)
{
    tell("clear; power-up; rate GEV-AREA 60");
    const std::unique_ptr<GentlCamera> camera = throughProducer();
    open(*camera);
    writeNodeText(*camera->nodeMap(), QStringLiteral("Width"), QStringLiteral("1920"));
    writeNodeText(*camera->nodeMap(), QStringLiteral("Height"), QStringLiteral("1200"));
    int shown = 0;
    QObject::connect(camera.get(), &Device::frameReady, [&shown](const QImage &) { ++shown; });
    QString error;
    if (!camera->startAcquisition(&error))
        throw std::runtime_error(error.toStdString());
    QEventLoop loop;
    QTimer::singleShot(AcquisitionTime, Qt::PreciseTimer, &loop, &QEventLoop::quit);
    const std::clock_t before = std::clock();
    const double time = milliseconds([&loop] { loop.exec(); });
    const double busy = double(std::clock() - before) / CLOCKS_PER_SEC * 1000.0;
    const FrameCounts counts = camera->frameCounts();
    camera->stopAcquisition();
    report.add("frames of 1920 x 1200 at 60 a second, in ten seconds", double(counts.good), "frames");
    report.add("of them missing", FrameRate * time / 1000.0 - double(counts.good), "frames", 3);
    report.add("of them lost or incomplete", double(counts.lost + counts.incomplete + counts.tooLarge), "frames", 0);
    report.add("of them not shown", double(counts.good - shown), "frames", 3);
    report.add("both sides' work for them", busy / time * 100.0, "% of a core");
}

void measure(BenchReport &report)
{
    addOpening(report);
    addFrames(report);
}

} // namespace

int main(int argc, char *argv[])
{
    const QString description =
        QStringLiteral("Measures a camera that is reached through a GenTL producer, for about a "
                       "quarter of a minute. Exits with 1 if a figure misses its bound.");
    return benchMain(argc, argv, description, measure);
}
