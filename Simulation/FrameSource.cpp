// SPDX-License-Identifier: MIT
#include "Simulation/FrameSource.h"

#include <utility>

#include "Simulation/Firmware.h"

namespace {

constexpr int tickInterval = 20; // milliseconds

} // namespace

FrameSource::FrameSource(Firmware &device) : firmware(device), tickTimer(this)
{
    connect(&tickTimer, &QTimer::timeout, this, &FrameSource::tick);
}

void FrameSource::run()
{
    prepare();
    clock.start();
    lastTick = 0;
    tickTimer.start(tickInterval);
}

void FrameSource::tick()
{
    const qint64 now = clock.nsecsElapsed();
    const qint64 milliseconds = (now - lastTick) / 1000000;
    firmware.elapse(std::chrono::milliseconds(milliseconds));
    lastTick += milliseconds * 1000000;
    ticked(std::chrono::milliseconds(milliseconds));
}

void FrameSource::deliver(SimulatedFrame frame)
{
    if (mailbox.put(std::move(frame)))
        Q_EMIT frameReady();
    else
        countUp("DroppedFrameCount");
}

void FrameSource::countUp(const char *counter, qint64 by)
{
    firmware.change([=](RegisterMemory &memory) { memory.setInteger(counter, memory.integer(counter) + by); });
}
