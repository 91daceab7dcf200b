// SPDX-License-Identifier: MIT
#pragma once

#include <memory>

#include <QTimer>

#include "Simulation/FrameSource.h"
#include "Simulation/Picture.h"

/// Takes images at the frame rate or on triggers.
class PictureSource : public FrameSource
{
    Q_OBJECT

public:
    explicit PictureSource(Firmware &firmware);

    void setAcquiring(bool acquiring) override;
    void trigger(int kind) override;

protected:
    void prepare() override;
    void ticked(std::chrono::milliseconds time) override;

private:
    void startPending(int kind);
    void scheduleNext();
    void takeFrame();
    PictureSettings pictureSettings() const;
    bool waitsForTrigger() const;

    Picture m_picture;
    QTimer m_frameTimer;
    qint64 m_nextFrame = 0; ///< nanoseconds of the clock: earliest time of the next image
    qint64 m_pending = 0; ///< images that triggers have asked for
    bool m_acquiring = false;
    std::unique_ptr<QObject> m_delays; ///< context of the delayed triggers of one acquisition
};
