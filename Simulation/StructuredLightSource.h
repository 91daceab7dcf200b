// SPDX-License-Identifier: MIT
#pragma once

#include "Simulation/FrameSource.h"
#include "Simulation/StructuredLightSensor.h"

/// Takes shots one after the other, or one for each software trigger: a depth map with the 2D images that are wanted.
class StructuredLightSource : public FrameSource
{
    Q_OBJECT

public:
    explicit StructuredLightSource(Firmware &firmware);

    void setAcquiring(bool acquiring) override;
    void trigger(int kind) override;

protected:
    void ticked(std::chrono::milliseconds time) override;

private:
    void takeShot();

    StructuredLightSensor m_sensor;
    double m_due = 0.0; ///< shots that should have been taken by now
    int m_pending = 0; ///< shots that triggers have asked for
    bool m_acquiring = false;
};
