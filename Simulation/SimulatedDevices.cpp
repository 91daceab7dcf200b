// SPDX-License-Identifier: MIT
#include "Simulation/SimulatedDevices.h"

#include "Simulation/PictureSource.h"
#include "Simulation/ProfilerSource.h"
#include "Simulation/SimulatedDevice.h"
#include "Simulation/StructuredLightSource.h"

namespace {

QString file(const char *name)
{
    return QStringLiteral(":/simulation/") + QLatin1String(name);
}

template <class Source>
std::unique_ptr<FrameSource> makeSource(Firmware &firmware)
{
    return std::make_unique<Source>(firmware);
}

std::vector<SimulatedModel> models()
{
    const QString areaScan = QStringLiteral("0");
    return {
        {QStringLiteral("SIM-AREA-01"),
         QStringLiteral("Simulated area-scan camera"),
         Device::Kind::Camera,
         areaScan,
         file("area_scan.xml"),
         {file("area_scan.values")},
         areaScanBehaviours,
         makeSource<PictureSource>},
        {QStringLiteral("SIM-AREA-02"),
         QStringLiteral("Simulated small camera"),
         Device::Kind::Camera,
         areaScan,
         file("area_scan.xml"),
         {file("area_scan.values"), file("area_scan_small.values")},
         areaScanBehaviours,
         makeSource<PictureSource>},
        {QStringLiteral("SIM-PROFILER-01"),
         QStringLiteral("Simulated laser profiler"),
         Device::Kind::Camera,
         QStringLiteral("5"),
         file("profiler.xml"),
         {file("profiler.values")},
         profilerBehaviours,
         makeSource<ProfilerSource>},
        {QStringLiteral("SIM-SL-01"),
         QStringLiteral("Simulated structured-light camera"),
         Device::Kind::Camera,
         QStringLiteral("1"),
         file("structured_light.xml"),
         {file("structured_light.values")},
         structuredLightBehaviours,
         makeSource<StructuredLightSource>},
        {QStringLiteral("SIM-CARD-01"),
         QStringLiteral("Simulated input card"),
         Device::Kind::Card,
         QString(),
         file("card.xml"),
         {file("card.values")},
         cardBehaviours,
         makeSource<FrameSource>},
    };
}

} // namespace

std::vector<std::unique_ptr<Device>> makeSimulatedDevices()
{
    Q_INIT_RESOURCE(simulation);
    std::vector<std::unique_ptr<Device>> devices;
    for (const SimulatedModel &model : models())
        devices.push_back(std::make_unique<SimulatedDevice>(model));
    return devices;
}
