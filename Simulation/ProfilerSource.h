// SPDX-License-Identifier: MIT
#pragma once

#include <algorithm>

#include "Simulation/FrameSource.h"
#include "Simulation/ProfilerFilters.h"
#include "Simulation/ProfilerSensor.h"

/// Takes height maps line by line, by time or by the encoder, and hands them out in batches; or takes images of the
/// sensor. Frames follow each other, or wait for the frame trigger.
class ProfilerSource : public FrameSource
{
    Q_OBJECT

public:
    explicit ProfilerSource(Firmware &firmware);

    void setAcquiring(bool acquiring) override;
    void trigger(int kind) override;

protected:
    void ticked(std::chrono::milliseconds time) override;

private:
    void startFrame(double linesDue);
    void endFrame();
    /// Leaves out what the frame has no lines for.
    void cutFrame();
    void takeLines(double linesPerSecond);
    /// False when that was the last line of the frame.
    bool takeLine(double y);
    bool batchIsFull() const { return m_frame.lines % std::max<qint64>(1, setting("BatchNumber")) == 0; }
    void sendBatch(bool last);
    void takeSensorImage();
    double linesSinceSignal() const;
    qint64 setting(const char *name, int position = 0) const;
    double number(const char *name) const;

    ProfilerSensor m_sensor;
    ProfilerFilters::OverTime m_medianOverTime{ProfilerFilters::OverTime::Kind::Median};
    ProfilerFilters::OverTime m_averageOverTime{ProfilerFilters::OverTime::Kind::Average};
    ProfilerSettings m_settings; ///< of the running tick
    HeightFrame m_frame;
    QImage m_gray; ///< the heights of the frame as a picture
    double m_due = 0.0; ///< lines that should have been taken by now
    std::chrono::milliseconds m_sinceImage{0};
    bool m_acquiring = false;
    bool m_inFrame = false;
};
