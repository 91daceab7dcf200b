// SPDX-License-Identifier: MIT
#include "soak/OpenCloseCycles.h"

#include <QApplication>
#include <QByteArray>
#include <QPixmapCache>

#include <malloc.h>

#include <cstdio>
#include <cstdlib>

#include "Host/HostContext.h"
#include "Simulation/SimulatedDevice.h"
#include "Viewer/LogModel.h"
#include "Viewer/ViewerCommands.h"
#include "Viewer/ViewerWindow.h"
#include "soak/SoakRecord.h"
#include "soak/SoakStage.h"

namespace {

constexpr int FirstCycles = 50; ///< fill what is kept once: caches, fonts, styles
constexpr int CyclesPerLine = 100;
constexpr qint64 MostGrowth = 1 << 20;

/// The number behind the last mention of what `element` begins, of an attribute called size.
qint64 lastSize(const QByteArray &text, const QByteArray &element)
{
    const int begin = text.lastIndexOf(element);
    const int size = begin < 0 ? -1 : text.indexOf("size=\"", begin);
    return size < 0 ? 0 : std::strtoll(text.constData() + size + 6, nullptr, 10);
}

/// Bytes that are in use, in all arenas.
qint64 heapInUse()
{
    malloc_trim(0);
    char *text = nullptr;
    std::size_t size = 0;
    std::FILE *stream = open_memstream(&text, &size);
    malloc_info(0, stream);
    std::fclose(stream);
    const QByteArray info(text, int(size));
    std::free(text);
    return lastSize(info, "<system type=\"current\"") + lastSize(info, "<total type=\"mmap\"")
        - lastSize(info, "<total type=\"fast\"") - lastSize(info, "<total type=\"rest\"");
}

/// Without what fills up to a bound in any case, the log and Qt's cache of images, and without what Qt's style sheets
/// keep of widgets that are gone (the line of a spin box, the frame of a drop-down list), until they are set again.
qint64 heapInUse(SoakStage &stage)
{
    qApp->setStyleSheet(qApp->styleSheet());
    stage.window().findChild<LogModel *>()->clear();
    QPixmapCache::clear();
    return heapInUse();
}

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
            before = heapInUse(stage);
        if (cycle >= FirstCycles && cycle % CyclesPerLine == 0)
            SoakRecord::print(
                QStringLiteral("%1 cycles, heap grown by %2 bytes").arg(cycle).arg(heapInUse(stage) - before));
    }
    const qint64 growth = heapInUse(stage) - before;
    SoakRecord::print(QStringLiteral("%1 cycles, heap grown by %2 bytes").arg(cycles).arg(growth));
    if (growth > MostGrowth)
        stage.record().fail(QStringLiteral("the heap has grown by %1 bytes").arg(growth));
    return growth <= MostGrowth;
}
