// SPDX-License-Identifier: MIT
#pragma once

#include <atomic>

#include <QElapsedTimer>
#include <QObject>
#include <QTimer>

#include "Host/simulation/Picture.h"

class Firmware;

/// The running part of a simulated device: lets time pass in its firmware and takes images at the frame rate or on
/// triggers. Lives on a thread of its own; only release() may be called on another one.
class FrameSource : public QObject
{
    Q_OBJECT

public:
    /// `firmware` must outlive this object.
    explicit FrameSource(Firmware &firmware);

    /// Lets time pass in the firmware from now on.
    void run();
    void setAcquiring(bool acquiring);
    /// A trigger of that kind (its place in TriggerSelector) has fired.
    void trigger(int kind);
    /// The receiver of frameReady() is done with one image.
    void release() { --inFlight; }

Q_SIGNALS:
    /// An image. No more than a few are on their way: further ones are dropped until release().
    void frameReady(const QImage &frame);

private:
    void tick();
    void startPending(int kind);
    void scheduleNext();
    void takeFrame();
    bool waitsForTrigger() const;

    Firmware &firmware;
    Picture picture;
    QTimer tickTimer;
    QTimer frameTimer;
    QElapsedTimer clock;
    qint64 lastTick = 0; ///< milliseconds of the clock
    qint64 nextFrame = 0; ///< nanoseconds of the clock: earliest time of the next image
    qint64 pending = 0; ///< images that triggers have asked for
    bool acquiring = false;
    std::atomic<int> inFlight{0};
};
