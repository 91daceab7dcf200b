// SPDX-License-Identifier: MIT
#pragma once

#include <chrono>
#include <memory>

#include <QElapsedTimer>
#include <QObject>
#include <QThread>
#include <QTimer>

#include "Devices/FrameMailbox.h"
#include "Devices/HeightFrame.h"

class Firmware;

/// What a simulated device hands out at a time.
struct SimulatedFrame
{
    QImage image;
    std::shared_ptr<const HeightFrame> heights; ///< null unless the device measures heights
};

/// The running part of a simulated device: lets time pass in its firmware and, in subclasses, takes frames. Lives on a
/// thread of its own from live() to its end; only take() may be called on another one.
class FrameSource : public QObject
{
    Q_OBJECT

public:
    /// `firmware` must outlive this object.
    explicit FrameSource(Firmware &firmware);

    /// On the thread of its own, to which it goes: gets ready to take frames and lets time pass in the firmware, until
    /// ending(). Then it goes to the thread `home`. It must be on no thread before.
    void live(QThread &home);
    virtual void setAcquiring(bool) { }
    /// A trigger of that kind (its place in TriggerSelector) has fired.
    virtual void trigger(int) { }
    /// The frame that a frameReady() announced.
    SimulatedFrame take() { return m_mailbox.take(); }

Q_SIGNALS:
    /// A frame waits: call take(). While more than a few wait, each new one costs the oldest.
    void frameReady();
    /// To be raised on the thread of its own, by a queued call.
    void ending();

protected:
    /// Does in advance what would delay the first frame.
    virtual void prepare() { }
    /// That much time has passed in the firmware.
    virtual void ticked(std::chrono::milliseconds) { }
    void deliver(SimulatedFrame frame);
    void countUp(const char *counter, qint64 by = 1);

    Firmware &m_firmware;
    QElapsedTimer m_clock;

private:
    void run();
    void tick();

    QTimer m_tickTimer;
    qint64 m_lastTick = 0; ///< nanoseconds of the clock
    BasicFrameMailbox<SimulatedFrame> m_mailbox;
};
