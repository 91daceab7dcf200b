// SPDX-License-Identifier: MIT
#include "Simulation/PictureSource.h"

#include <algorithm>
#include <chrono>
#include <limits>

#include "Simulation/Firmware.h"
#include "Simulation/ImageModel.h"

namespace {

constexpr int MostPending = 2; // triggers that are kept while an image is read out
constexpr qint64 Endless = std::numeric_limits<qint64>::max() / 2;

/// The places in TriggerSelector.
enum TriggerKind { FrameStart, AcquisitionStart, FrameBurstStart, triggerKinds };

/// How many images a trigger of that kind takes.
qint64 imagesOf(int kind, const RegisterMemory &memory)
{
    switch (kind) {
    case AcquisitionStart:
        return Endless;
    case FrameBurstStart:
        return std::max<qint64>(1, memory.integer("AcquisitionBurstFrameCount"));
    default:
        return 1;
    }
}

} // namespace

PictureSource::PictureSource(Firmware &device) : FrameSource(device), m_frameTimer(this)
{
    m_frameTimer.setSingleShot(true);
    m_frameTimer.setTimerType(Qt::PreciseTimer);
    connect(&m_frameTimer, &QTimer::timeout, this, &PictureSource::takeFrame);
}

void PictureSource::prepare()
{
    m_picture.prepare(pictureSettings()); // else the first triggers would wait for it
}

void PictureSource::ticked(std::chrono::milliseconds)
{
    const bool idle = m_acquiring && !m_frameTimer.isActive();
    if (idle && !waitsForTrigger()) // the trigger was switched off
        scheduleNext();
}

void PictureSource::setAcquiring(bool on)
{
    m_acquiring = on;
    m_delays = std::make_unique<QObject>();
    m_pending = 0;
    m_frameTimer.stop();
    m_nextFrame = m_clock.nsecsElapsed();
    if (m_acquiring && !waitsForTrigger())
        scheduleNext();
}

void PictureSource::trigger(int kind)
{
    if (!m_acquiring)
        return;
    const double delay =
        m_firmware.inspect([kind](const RegisterMemory &memory) { return memory.number("TriggerDelay", kind); });
    const int milliseconds = int(delay / 1000.0);
    if (milliseconds > 0)
        QTimer::singleShot(milliseconds, Qt::PreciseTimer, m_delays.get(), [this, kind] { startPending(kind); });
    else
        startPending(kind);
}

void PictureSource::startPending(int kind)
{
    if (m_pending >= MostPending) {
        countUp("MissedTriggerCount");
        return;
    }
    m_pending += m_firmware.inspect([kind](const RegisterMemory &memory) { return imagesOf(kind, memory); });
    if (!m_frameTimer.isActive())
        scheduleNext();
}

bool PictureSource::waitsForTrigger() const
{
    return m_firmware.inspect([](const RegisterMemory &memory) {
        for (int kind = 0; kind < triggerKinds; ++kind) {
            if (memory.integer("TriggerMode", kind) == 1)
                return true;
        }
        return false;
    });
}

PictureSettings PictureSource::pictureSettings() const
{
    return m_firmware.inspect([this](const RegisterMemory &memory) {
        return PictureSettings::fromRegisters(memory, m_firmware.timestamp());
    });
}

void PictureSource::scheduleNext()
{
    const qint64 now = m_clock.nsecsElapsed();
    m_nextFrame = std::max(m_nextFrame, now);
    m_frameTimer.start(int((m_nextFrame - now + 999999) / 1000000));
}

void PictureSource::takeFrame()
{
    const bool triggered = waitsForTrigger();
    if (!m_acquiring || (triggered && m_pending == 0))
        return;
    const double rate = m_firmware.inspect([](const RegisterMemory &memory) { return ImageModel::frameRate(memory); });
    m_pending = triggered ? m_pending - 1 : 0;
    m_nextFrame += qint64(1e9 / rate);
    deliver({m_picture.draw(pictureSettings()), nullptr});
    m_firmware.frameTaken();
    if (!triggered || m_pending > 0)
        scheduleNext();
}
