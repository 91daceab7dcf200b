// SPDX-License-Identifier: MIT
#include <algorithm>
#include <cmath>

#include "Simulation/Behaviour.h"
#include "Simulation/Firmware.h"
#include "Simulation/ProfilerScene.h"
#include "Simulation/ProfilerSettings.h"

using std::chrono::milliseconds;

namespace {

using ProfilerRates::FrameStart;
using ProfilerRates::LineStart;

/// The belt: moves the parts, turns the encoder and interrupts the light barriers.
class Belt : public Behaviour
{
public:
    void powerUp(Firmware &) override
    {
        m_sinceTimer = milliseconds(0);
        m_encoderZero = 0.0;
    }

    void written(Firmware &firmware, const RegisterWrite &write) override
    {
        RegisterMemory &memory = firmware.memory();
        if (write.is("EncoderReset"))
            m_encoderZero = memory.number("TestPartPosition");
        if (write.is("TriggerSoftware") && memory.integer("TriggerSelector") == FrameStart)
            fire(firmware, ProfilerRates::Software);
    }

    void elapsed(Firmware &firmware, milliseconds time) override
    {
        RegisterMemory &memory = firmware.memory();
        const double before = memory.number("TestPartPosition");
        const double after = before + memory.number("TestPartSpeed") * double(time.count()) / 1000.0;
        memory.setNumber("TestPartPosition", after);
        memory.setNumber("EncoderValue", std::floor((after - m_encoderZero) / memory.number("EncoderResolution")));
        memory.setNumber("ResultingLineRate", ProfilerRates::lineRate(memory));
        if (partsBefore(before, 0.0) != partsBefore(after, 0.0))
            fire(firmware, ProfilerRates::Line1);
        if (partsBefore(before, 0.5) != partsBefore(after, 0.5))
            fire(firmware, ProfilerRates::Line2);
        elapseTimer(firmware, time);
    }

private:
    /// Parts that have passed a light barrier; `place` counts in part spacings.
    static double partsBefore(double position, double place)
    {
        return std::floor(position / ProfilerScene::PartSpacing - place);
    }

    static void fire(Firmware &firmware, ProfilerRates::TriggerSource source)
    {
        if (firmware.memory().integer("Acquiring") == 0)
            return;
        for (const ProfilerRates::TriggerKind kind : {FrameStart, LineStart}) {
            if (ProfilerRates::listens(firmware.memory(), kind, source))
                Q_EMIT firmware.triggered(kind);
        }
    }

    void elapseTimer(Firmware &firmware, milliseconds time)
    {
        m_sinceTimer += time;
        if (double(m_sinceTimer.count()) * 1000.0 < firmware.memory().number("TimerDuration"))
            return;
        m_sinceTimer = milliseconds(0);
        fire(firmware, ProfilerRates::Timer);
    }

    milliseconds m_sinceTimer{0};
    double m_encoderZero = 0.0; ///< mm
};

/// Keeps the measure range in the middle of the sensor, when it is to be there.
class MeasureRange : public Behaviour
{
public:
    void written(Firmware &firmware, const RegisterWrite &write) override
    {
        RegisterMemory &memory = firmware.memory();
        if ((write.is("Height") || write.is("CenterImageY")) && memory.integer("CenterImageY") == 1)
            memory.setInteger("OffsetY", (memory.integer("SensorHeight") - memory.integer("Height")) / 2);
    }
};

/// Refuses line rates that exposure and measure range do not allow.
class LineRateLimit : public Behaviour
{
public:
    QString objection(const Firmware &firmware, const RegisterWrite &write) const override
    {
        const double highest = ProfilerRates::highestLineRate(firmware.memory());
        if (!write.is("AcquisitionLineRate") || write.value <= highest)
            return {};
        return QStringLiteral("%1 lines per second are too many: an exposure of %2 us and %3 rows allow %4")
            .arg(write.value, 0, 'f', 0)
            .arg(firmware.memory().number("ExposureTime"), 0, 'f', 1)
            .arg(firmware.memory().integer("Height"))
            .arg(highest, 0, 'f', 0);
    }
};

/// Automatic brightness: the laser power creeps until the line is as bright as the bounds say.
class LaserAdjustment : public Behaviour
{
public:
    void elapsed(Firmware &firmware, milliseconds time) override
    {
        m_sinceStep += time;
        if (m_sinceStep < milliseconds(50))
            return;
        m_sinceStep = milliseconds(0);
        RegisterMemory &memory = firmware.memory();
        const ProfilerSettings settings = ProfilerSettings::fromRegisters(memory);
        if (memory.integer("LaserAdjustMode") == 0 || settings.laser <= 0.0)
            return;
        const double brightness = settings.lineBrightness(1.0);
        const int step = int(brightness < memory.number("LowerBound")) - int(brightness > memory.number("UpperBound"));
        memory.setInteger("Lasersetting", std::clamp<qint64>(memory.integer("Lasersetting") + step, 1, 100));
    }

private:
    milliseconds m_sinceStep{0};
};

} // namespace

Behaviours profilerBehaviours()
{
    Behaviours behaviours;
    addDeviceBehaviours(behaviours);
    addUserSetBehaviours(behaviours, 1, 4);
    addAcquisitionControl(behaviours);
    behaviours.push_back(std::make_unique<Belt>());
    behaviours.push_back(std::make_unique<MeasureRange>());
    behaviours.push_back(std::make_unique<LineRateLimit>());
    behaviours.push_back(std::make_unique<LaserAdjustment>());
    return behaviours;
}
