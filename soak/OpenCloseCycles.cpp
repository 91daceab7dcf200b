// SPDX-License-Identifier: MIT
#include "soak/OpenCloseCycles.h"

#include "Host/HostContext.h"
#include "Simulation/SimulatedDevice.h"
#include "Viewer/ViewerCommands.h"
#include "soak/Heap.h"
#include "soak/SoakRecord.h"
#include "soak/SoakStage.h"

namespace {

constexpr int FirstCycles = 50; ///< fill what is kept once: caches, fonts, styles
constexpr int CyclesPerLine = 100;
constexpr qint64 MostGrowth = 1 << 20;

bool openAndCloseOne(SoakStage &stage, const Device &device)
{
    stage.clickDevice(device, true);
    stage.settle();
    const bool opened = device.isOpen();
    stage.order(Command::CloseDevice);
    stage.settle();
    if (!opened || device.isOpen())
        stage.record().fail(device.id() + QStringLiteral(" does not open or close"));
    return opened && !device.isOpen();
}

} // namespace

bool openAndClose(SoakStage &stage, int cycles)
{
    const QList<SimulatedDevice *> devices = stage.simulated();
    qint64 before = 0;
    for (int cycle = 0; cycle < FirstCycles + cycles; ++cycle) {
        stage.record().begin(cycle);
        if (!openAndCloseOne(stage, *devices[cycle % devices.size()]))
            return false;
        if (cycle + 1 == FirstCycles)
            before = heapInUse(stage.window());
        if (cycle >= FirstCycles && cycle % CyclesPerLine == 0)
            SoakRecord::print(
                QStringLiteral("%1 cycles, heap grown by %2 bytes").arg(cycle).arg(heapInUse(stage.window()) - before));
    }
    const qint64 growth = heapInUse(stage.window()) - before;
    SoakRecord::print(QStringLiteral("%1 cycles, heap grown by %2 bytes").arg(cycles).arg(growth));
    if (growth > MostGrowth)
        stage.record().fail(QStringLiteral("the heap has grown by %1 bytes").arg(growth));
    return growth <= MostGrowth;
}
