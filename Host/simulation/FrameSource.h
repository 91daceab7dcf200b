// SPDX-License-Identifier: MIT
#pragma once

#include <memory>

#include <QElapsedTimer>
#include <QObject>
#include <QTimer>

#include "Host/FrameMailbox.h"
#include "Host/simulation/Picture.h"

class Firmware;

/// The running part of a simulated device: lets time pass in its firmware and takes images at the frame rate or on
/// triggers. Lives on a thread of its own; only take() may be called on another one.
class FrameSource : public QObject
{
    Q_OBJECT

public:
    /// `firmware` must outlive this object.
    explicit FrameSource(Firmware &firmware);

    /// Gets ready to take images and lets time pass in the firmware from now on.
    void run();
    void setAcquiring(bool acquiring);
    /// A trigger of that kind (its place in TriggerSelector) has fired.
    void trigger(int kind);
    /// The image that a frameReady() announced.
    QImage take() { return mailbox.take(); }

Q_SIGNALS:
    /// An image waits: call take(). While more than a few wait, each new one costs the oldest.
    void frameReady();

private:
    void tick();
    void startPending(int kind);
    void scheduleNext();
    void takeFrame();
    PictureSettings pictureSettings() const;
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
    std::unique_ptr<QObject> delays; ///< context of the delayed triggers of one acquisition
    FrameMailbox mailbox;
};
