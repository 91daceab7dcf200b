// SPDX-License-Identifier: MIT
#include "Simulation/FrameSource.h"

#include <utility>

#include <QEventLoop>

#include "Simulation/Firmware.h"

namespace {

constexpr int TickInterval = 20; // milliseconds

} // namespace

FrameSource::FrameSource(Firmware &device) : m_firmware(device), m_tickTimer(this)
{
    connect(&m_tickTimer, &QTimer::timeout, this, &FrameSource::tick);
}

void FrameSource::live(QThread &home)
{
    moveToThread(QThread::currentThread());
    QEventLoop events;
    connect(this, &FrameSource::ending, &events, &QEventLoop::quit);
    run();
    events.exec();
    m_tickTimer.stop();
    moveToThread(&home);
}

void FrameSource::run()
{
    prepare();
    m_clock.start();
    m_lastTick = 0;
    m_tickTimer.start(TickInterval);
}

void FrameSource::tick()
{
    const qint64 now = m_clock.nsecsElapsed();
    const qint64 milliseconds = (now - m_lastTick) / 1000000;
    m_firmware.elapse(std::chrono::milliseconds(milliseconds));
    m_lastTick += milliseconds * 1000000;
    ticked(std::chrono::milliseconds(milliseconds));
}

void FrameSource::deliver(SimulatedFrame frame)
{
    if (m_mailbox.put(std::move(frame)))
        Q_EMIT frameReady();
    else
        countUp("DroppedFrameCount");
}

void FrameSource::countUp(const char *counter, qint64 by)
{
    m_firmware.change([=](RegisterMemory &memory) { memory.setInteger(counter, memory.integer(counter) + by); });
}
