// SPDX-License-Identifier: MIT
#include "Simulation/Behaviour.h"
#include "Simulation/Firmware.h"
#include "Simulation/ImageModel.h"

using std::chrono::milliseconds;

namespace {

constexpr int TriggerKinds = 3;
/// They count from the start of an acquisition.
constexpr const char *Counters[] = {"AcquiredFrameCount", "DroppedFrameCount", "MissedTriggerCount",
                                    "DroppedLineCount"};

void addToNumber(RegisterMemory &memory, const char *name, double step, int position = 0)
{
    memory.setNumber(name, memory.number(name, position) + step, position);
}

/// Starts and stops acquisitions and ends those that take a fixed number of images.
class Acquisition : public Behaviour
{
public:
    void written(Firmware &firmware, const RegisterWrite &write) override
    {
        if (write.is("AcquisitionStart") && firmware.memory().integer("Acquiring") == 0) {
            for (const char *counter : Counters)
                firmware.memory().setInteger(counter, 0);
            firmware.setAcquiring(true);
        } else if (write.is("AcquisitionStop") || write.is("AcquisitionAbort")) {
            firmware.setAcquiring(false);
        }
    }

    void frameTaken(Firmware &firmware) override
    {
        addToNumber(firmware.memory(), "AcquiredFrameCount", 1);
        const qint64 wanted = imageCount(firmware.memory());
        if (wanted > 0 && firmware.memory().integer("AcquiredFrameCount") >= wanted)
            firmware.setAcquiring(false);
    }

private:
    /// 0: no end.
    static qint64 imageCount(const RegisterMemory &memory)
    {
        switch (memory.integer("AcquisitionMode")) {
        case 0:
            return 1;
        case 1:
            return memory.integer("AcquisitionFrameCount");
        default:
            return 0;
        }
    }
};

/// Lets active triggers fire by software and by a signal at line 0: a square wave of two periods a second.
class Triggers : public Behaviour
{
public:
    void powerUp(Firmware &) override { m_sinceEdge = milliseconds(0); }

    void written(Firmware &firmware, const RegisterWrite &write) override
    {
        const int kind = int(firmware.memory().integer("TriggerSelector"));
        if (write.is("TriggerSoftware") && waitsFor(firmware.memory(), kind, software))
            Q_EMIT firmware.triggered(kind);
    }

    void elapsed(Firmware &firmware, milliseconds time) override
    {
        m_sinceEdge += time;
        if (m_sinceEdge < PulseWidth)
            return;
        m_sinceEdge -= PulseWidth;
        const qint64 levels = firmware.memory().integer("LineStatusAll") ^ 1;
        firmware.memory().setInteger("LineStatusAll", levels);
        if (debounced(firmware.memory()))
            edge(firmware, (levels & 1) != firmware.memory().integer("LineInverter", 0));
    }

private:
    enum Source { software, line0 };
    enum Activation { RisingEdge, FallingEdge, AnyEdge, LevelHigh, LevelLow };
    static constexpr milliseconds PulseWidth{250};

    static bool waitsFor(const RegisterMemory &memory, int kind, Source source)
    {
        return memory.integer("Acquiring") == 1 && memory.integer("TriggerMode", kind) == 1
            && memory.integer("TriggerSource", kind) == source;
    }

    static bool debounced(const RegisterMemory &memory)
    {
        return memory.number("LineDebouncerTime", 0) < std::chrono::microseconds(PulseWidth).count();
    }

    static void edge(Firmware &firmware, bool rising)
    {
        for (int kind = 0; kind < TriggerKinds; ++kind) {
            const qint64 activation = firmware.memory().integer("TriggerActivation", kind);
            const bool wanted =
                activation == AnyEdge || (activation == RisingEdge || activation == LevelHigh) == rising;
            if (wanted && waitsFor(firmware.memory(), kind, line0))
                Q_EMIT firmware.triggered(kind);
        }
    }

    milliseconds m_sinceEdge{0};
};

/// The state of the acquisition, and the output lines that carry it or other signals.
class Signals : public Behaviour
{
public:
    void powerUp(Firmware &) override { m_exposureStart = Never; }
    void frameTaken(Firmware &firmware) override { m_exposureStart = firmware.timestamp(); }

    void elapsed(Firmware &firmware, milliseconds) override
    {
        RegisterMemory &memory = firmware.memory();
        memory.setInteger("AcquisitionStatus", isHigh(firmware, FrameTriggerWait), frameTriggerWait);
        memory.setInteger("AcquisitionStatus", isHigh(firmware, ExposureActive), frameActive);
        qint64 levels = memory.integer("LineStatusAll");
        for (int line = 0; line < Lines; ++line) {
            const qint64 bit = qint64(1) << line;
            if (memory.integer("LineMode", line) == Output)
                levels = isHigh(firmware, memory.integer("LineSource", line)) ? levels | bit : levels & ~bit;
        }
        memory.setInteger("LineStatusAll", levels);
    }

private:
    /// As in LineSource.
    enum Signal { Off, ExposureActive, FrameTriggerWait, AcquisitionActive, UserOutput0, UserOutput1, Timer0Active };
    enum Status { frameTriggerWait = 1, frameActive = 2 }; ///< places in AcquisitionStatusSelector
    static constexpr int Lines = 4;
    static constexpr qint64 Output = 1;
    static constexpr qint64 TimerActive = 2;
    static constexpr qint64 Never = -1;

    bool isExposing(const Firmware &firmware) const
    {
        const qint64 since = firmware.timestamp() - m_exposureStart;
        return m_exposureStart != Never && since >= 0 && double(since) < firmware.memory().number("ExposureTime") * 1e3;
    }

    bool isHigh(const Firmware &firmware, qint64 signal) const
    {
        const RegisterMemory &memory = firmware.memory();
        const bool acquiring = memory.integer("Acquiring") == 1;
        switch (signal) {
        case ExposureActive:
            return acquiring && isExposing(firmware);
        case FrameTriggerWait:
            return acquiring && memory.integer("TriggerMode", 0) == 1 && !isExposing(firmware);
        case AcquisitionActive:
            return acquiring;
        case UserOutput0:
        case UserOutput1:
            return memory.integer("UserOutputValue", int(signal - UserOutput0)) == 1;
        case Timer0Active:
            return memory.integer("TimerStatus", 0) == TimerActive;
        default:
            return false;
        }
    }

    qint64 m_exposureStart = Never; ///< time stamp of the last image
};

/// Registers that describe the last image, and where they get their values from.
struct FrameField
{
    const char *field;
    const char *source;
};

const FrameField FrameFields[] = {
    {"ChunkWidth", "Width"},
    {"ChunkHeight", "Height"},
    {"ChunkOffsetX", "OffsetX"},
    {"ChunkOffsetY", "OffsetY"},
    {"ChunkFrameID", "AcquiredFrameCount"},
    {"ChunkExposureTime", "ExposureTime"},
    {"ChunkGain", "Gain"},
    {"ChunkLineStatusAll", "LineStatusAll"},
    {"EventExposureEndFrameID", "AcquiredFrameCount"},
    {"EventFrameStartFrameID", "AcquiredFrameCount"},
};

/// Chunk and event data of the last image, and counters that count images.
class FrameData : public Behaviour
{
public:
    void frameTaken(Firmware &firmware) override
    {
        RegisterMemory &memory = firmware.memory();
        for (const FrameField &entry : FrameFields)
            memory.setNumber(entry.field, memory.number(entry.source));
        for (const char *time : {"ChunkTimestamp", "EventExposureEndTimestamp", "EventFrameStartTimestamp"})
            memory.setInteger(time, firmware.timestamp());
        for (int counter = 0; counter < 2; ++counter) {
            if (memory.integer("CounterEventSource", counter) == FrameStart)
                addToNumber(memory, "CounterValue", 1, counter);
        }
    }

    void written(Firmware &firmware, const RegisterWrite &write) override
    {
        if (write.is("CounterReset")) {
            const int counter = int(firmware.memory().integer("CounterSelector"));
            firmware.memory().setNumber("CounterValueAtReset", firmware.memory().number("CounterValue", counter),
                                        counter);
            firmware.memory().setInteger("CounterValue", 0, counter);
        } else if (write.is("EncoderReset")) {
            firmware.memory().setInteger("EncoderValue", 0);
        }
    }

private:
    static constexpr qint64 FrameStart = 1;
};

} // namespace

void addAcquisitionControl(Behaviours &behaviours)
{
    behaviours.push_back(std::make_unique<Acquisition>());
}

void addAcquisitionBehaviours(Behaviours &behaviours)
{
    addAcquisitionControl(behaviours);
    behaviours.push_back(std::make_unique<Triggers>());
    behaviours.push_back(std::make_unique<Signals>());
    behaviours.push_back(std::make_unique<FrameData>());
}
