// SPDX-License-Identifier: MIT
#include <cmath>
#include <iterator>
#include <map>

#include <QThread>

#include "Simulation/Behaviour.h"
#include "Simulation/Firmware.h"

using std::chrono::milliseconds;

namespace {

constexpr double TwoPi = 6.283185307179586;

/// A register that goes from one value to another by itself some time after the host has written the first.
struct Completion
{
    const char *name;
    qint64 busy;
    qint64 done;
    milliseconds time;
};

const Completion Completions[] = {
    {"DeviceRegistersCheck", 1, 0, milliseconds(200)}, {"DeviceFirmwareCheck", 1, 0, milliseconds(2000)},
    {"AcquisitionArm", 1, 0, milliseconds(100)},       {"ShadingCorrectionCapture", 1, 0, milliseconds(3000)},
    {"UserSetSave", 1, 0, milliseconds(300)},          {"FileOperationExecute", 1, 0, milliseconds(200)},
    {"TestSlowCommand", 1, 0, milliseconds(3000)},     {"MemoryTest", 1, 0, milliseconds(3000)},
    {"BlackLevelAuto", 1, 0, milliseconds(500)},       {"GevSCPSFireTestPacket", 1, 0, milliseconds(50)},
};

/// Busy commands and self-clearing values.
class SelfClearing : public Behaviour
{
public:
    void powerUp(Firmware &) override { m_remaining.clear(); }

    void written(Firmware &, const RegisterWrite &write) override
    {
        for (const Completion &entry : Completions) {
            if (write.is(entry.name) && qint64(write.value) == entry.busy)
                m_remaining[&entry] = entry.time;
        }
    }

    void elapsed(Firmware &firmware, milliseconds time) override
    {
        for (auto entry = m_remaining.begin(); entry != m_remaining.end();) {
            entry->second -= time;
            if (entry->second.count() > 0) {
                ++entry;
                continue;
            }
            firmware.memory().setInteger(entry->first->name, entry->first->done);
            entry = m_remaining.erase(entry);
        }
    }

private:
    std::map<const Completion *, milliseconds> m_remaining;
};

/// A measured value that swings around its power-up value.
struct Swing
{
    const char *name;
    int position;
    double amplitude;
    double periodSeconds;
};

const Swing Swings[] = {
    {"DeviceTemperature", 0, 1.5, 40.0},
    {"DeviceTemperature", 1, 1.0, 70.0},
    {"DeviceTemperature", 2, 2.5, 55.0},
    {"DeviceSupplyVoltage", 0, 0.08, 11.0},
    {"DevicePowerConsumption", 0, 0.4, 23.0},
    {"FanSpeed", 0, 60.0, 17.0},
    {"InputPowerCurrent", 0, 0.02, 9.0},
    {"InputPowerCurrent", 1, 0.015, 13.0},
    {"MemoryUsed", 0, 6.0, 19.0},
};

class Measurements : public Behaviour
{
public:
    void powerUp(Firmware &firmware) override
    {
        m_uptime = milliseconds(0);
        for (size_t i = 0; i < std::size(Swings); ++i)
            m_base[i] = firmware.memory().number(Swings[i].name, Swings[i].position);
    }

    void elapsed(Firmware &firmware, milliseconds time) override
    {
        m_uptime += time;
        const double seconds = double(m_uptime.count()) / 1000.0;
        firmware.memory().setNumber("DeviceUptime", std::floor(seconds));
        for (size_t i = 0; i < std::size(Swings); ++i) {
            const Swing &swing = Swings[i];
            const double offset = swing.amplitude * std::sin(TwoPi * seconds / swing.periodSeconds);
            firmware.memory().setNumber(swing.name, m_base[i] + offset, swing.position);
        }
    }

private:
    milliseconds m_uptime{0};
    double m_base[std::size(Swings)] = {};
};

/// A command that copies the time stamp, and the one that sets it to zero.
struct Latch
{
    const char *latch;
    const char *reset;
    const char *value;
    int nanosecondsPerTick;
};

const Latch Latches[] = {
    {"TimestampLatch", "TimestampReset", "TimestampLatchValue", 1},
    {"GevTimestampControlLatch", "GevTimestampControlReset", "GevTimestampValue", 8},
};

class Timestamps : public Behaviour
{
public:
    void written(Firmware &firmware, const RegisterWrite &write) override
    {
        for (const Latch &entry : Latches) {
            if (write.is(entry.reset))
                firmware.resetTimestamp();
            if (write.is(entry.latch) || write.is(entry.reset))
                firmware.memory().setInteger(entry.value, firmware.timestamp() / entry.nanosecondsPerTick);
        }
    }
};

class Restart : public Behaviour
{
public:
    void written(Firmware &firmware, const RegisterWrite &write) override
    {
        if (!write.is("DeviceReset"))
            return;
        firmware.powerUp();
        Q_EMIT firmware.restarted();
    }
};

/// Makes the host wait for the acknowledgement of the write.
class PendingAcknowledge : public Behaviour
{
public:
    void written(Firmware &, const RegisterWrite &write) override
    {
        if (write.is("TestPendingAck"))
            QThread::msleep(static_cast<unsigned long>(std::max(0.0, write.value)));
    }
};

class EvenNumbers : public Behaviour
{
public:
    QString objection(const Firmware &, const RegisterWrite &write) const override
    {
        const bool odd = write.is("TestEvenNumber") && qint64(write.value) % 2 != 0;
        return odd ? QStringLiteral("%1 is odd; this register takes even numbers only").arg(write.value) : QString();
    }
};

class PersistentAddress : public Behaviour
{
public:
    QString objection(const Firmware &, const RegisterWrite &write) const override
    {
        const qint64 address = qint64(write.value);
        const bool unusable = address == 0 || address == 0xFFFFFFFF;
        return write.is("GevPersistentIPAddress") && unusable
            ? QStringLiteral("the address of a camera cannot be 0.0.0.0 or 255.255.255.255")
            : QString();
    }
};

/// The pulse generator of the card.
class PulseGenerator : public Behaviour
{
public:
    void written(Firmware &firmware, const RegisterWrite &write) override
    {
        if (write.is("TriggerSoftware") && isOn(firmware, Software))
            count(firmware, 1.0);
    }

    void elapsed(Firmware &firmware, milliseconds time) override
    {
        if (isOn(firmware, Generator))
            count(firmware, firmware.memory().number("TriggerRate") * double(time.count()) / 1000.0);
    }

private:
    static constexpr qint64 Software = 0;
    static constexpr qint64 Generator = 1;

    static bool isOn(const Firmware &firmware, qint64 source)
    {
        return firmware.memory().integer("TriggerMode") == 1 && firmware.memory().integer("TriggerSource") == source;
    }

    void count(Firmware &firmware, double signalCount)
    {
        m_started += signalCount;
        const double divider = std::max(1.0, firmware.memory().number("TriggerDivider"));
        const double pulses = std::floor(m_started / divider);
        m_started -= pulses * divider;
        firmware.memory().setNumber("TriggerCount", firmware.memory().number("TriggerCount") + pulses);
    }

    double m_started = 0.0;
};

} // namespace

void addDeviceBehaviours(Behaviours &behaviours)
{
    behaviours.push_back(std::make_unique<SelfClearing>());
    behaviours.push_back(std::make_unique<Measurements>());
    behaviours.push_back(std::make_unique<Timestamps>());
    behaviours.push_back(std::make_unique<PersistentAddress>());
    behaviours.push_back(std::make_unique<EvenNumbers>());
    behaviours.push_back(std::make_unique<PendingAcknowledge>());
    behaviours.push_back(std::make_unique<Restart>());
}

Behaviours cardBehaviours()
{
    Behaviours behaviours;
    addDeviceBehaviours(behaviours);
    behaviours.push_back(std::make_unique<PulseGenerator>());
    return behaviours;
}

Behaviours areaScanBehaviours()
{
    Behaviours behaviours;
    addDeviceBehaviours(behaviours);
    addUserSetBehaviours(behaviours, 0, 2);
    addImageBehaviours(behaviours);
    addAcquisitionBehaviours(behaviours);
    return behaviours;
}
