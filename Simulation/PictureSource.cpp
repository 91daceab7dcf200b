// SPDX-License-Identifier: MIT
#include "Simulation/PictureSource.h"

#include <algorithm>
#include <chrono>
#include <limits>

#include "Simulation/Firmware.h"
#include "Simulation/ImageModel.h"

namespace {

constexpr int mostPending = 2; // triggers that are kept while an image is read out
constexpr qint64 endless = std::numeric_limits<qint64>::max() / 2;

/// The places in TriggerSelector.
enum TriggerKind { FrameStart, AcquisitionStart, FrameBurstStart, triggerKinds };

/// How many images a trigger of that kind takes.
qint64 imagesOf(int kind, const RegisterMemory &memory)
{
    switch (kind) {
    case AcquisitionStart:
        return endless;
    case FrameBurstStart:
        return std::max<qint64>(1, memory.integer("AcquisitionBurstFrameCount"));
    default:
        return 1;
    }
}

} // namespace

PictureSource::PictureSource(Firmware &device) : FrameSource(device), frameTimer(this)
{
    frameTimer.setSingleShot(true);
    frameTimer.setTimerType(Qt::PreciseTimer);
    connect(&frameTimer, &QTimer::timeout, this, &PictureSource::takeFrame);
}

void PictureSource::prepare()
{
    picture.prepare(pictureSettings()); // else the first triggers would wait for it
}

void PictureSource::ticked(std::chrono::milliseconds)
{
    const bool idle = acquiring && !frameTimer.isActive();
    if (idle && !waitsForTrigger()) // the trigger was switched off
        scheduleNext();
}

void PictureSource::setAcquiring(bool on)
{
    acquiring = on;
    delays = std::make_unique<QObject>();
    pending = 0;
    frameTimer.stop();
    nextFrame = clock.nsecsElapsed();
    if (acquiring && !waitsForTrigger())
        scheduleNext();
}

void PictureSource::trigger(int kind)
{
    if (!acquiring)
        return;
    const double delay =
        firmware.inspect([kind](const RegisterMemory &memory) { return memory.number("TriggerDelay", kind); });
    const int milliseconds = int(delay / 1000.0);
    if (milliseconds > 0)
        QTimer::singleShot(milliseconds, Qt::PreciseTimer, delays.get(), [this, kind] { startPending(kind); });
    else
        startPending(kind);
}

void PictureSource::startPending(int kind)
{
    if (pending >= mostPending) {
        countUp("MissedTriggerCount");
        return;
    }
    pending += firmware.inspect([kind](const RegisterMemory &memory) { return imagesOf(kind, memory); });
    if (!frameTimer.isActive())
        scheduleNext();
}

bool PictureSource::waitsForTrigger() const
{
    return firmware.inspect([](const RegisterMemory &memory) {
        for (int kind = 0; kind < triggerKinds; ++kind) {
            if (memory.integer("TriggerMode", kind) == 1)
                return true;
        }
        return false;
    });
}

PictureSettings PictureSource::pictureSettings() const
{
    return firmware.inspect(
        [this](const RegisterMemory &memory) { return PictureSettings::fromRegisters(memory, firmware.timestamp()); });
}

void PictureSource::scheduleNext()
{
    const qint64 now = clock.nsecsElapsed();
    nextFrame = std::max(nextFrame, now);
    frameTimer.start(int((nextFrame - now + 999999) / 1000000));
}

void PictureSource::takeFrame()
{
    const bool triggered = waitsForTrigger();
    if (!acquiring || (triggered && pending == 0))
        return;
    const double rate = firmware.inspect([](const RegisterMemory &memory) { return ImageModel::frameRate(memory); });
    pending = triggered ? pending - 1 : 0;
    nextFrame += qint64(1e9 / rate);
    deliver({picture.draw(pictureSettings()), nullptr});
    firmware.frameTaken();
    if (!triggered || pending > 0)
        scheduleNext();
}
