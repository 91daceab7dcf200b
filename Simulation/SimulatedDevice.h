// SPDX-License-Identifier: MIT
#pragma once

#include <chrono>
#include <memory>
#include <optional>
#include <thread>

#include <QStringList>

#include "Devices/Device.h"
#include "Devices/FrameTally.h"
#include "Devices/LoadedNodeMap.h"
#include "Simulation/Behaviour.h"
#include "Simulation/FrameFaults.h"
#include "Simulation/SimulatedPort.h"

class Firmware;
class FrameSource;

/// What makes one simulated device different from another.
struct SimulatedModel
{
    QString id;
    QString name;
    Device::Kind kind = Device::Kind::Camera;
    QString typeCode;
    QString description; ///< resource with the GenICam description
    QStringList powerUpTables; ///< resources with register contents, the last one wins
    Behaviours (*behaviours)() = nullptr;
    std::unique_ptr<FrameSource> (*source)(Firmware &) = nullptr; ///< what takes its frames
};

/// A device without hardware: a description, a register memory and behaviours that change it as a device would.
/// It keeps its user sets while it is closed.
class SimulatedDevice : public Device
{
    Q_OBJECT

public:
    using Fault = SimulatedPort::Fault;

    explicit SimulatedDevice(const SimulatedModel &model, QObject *parent = nullptr);
    ~SimulatedDevice() override;

    QString id() const override { return m_model.id; }
    QString displayName() const override { return m_model.name; }
    Kind kind() const override { return m_model.kind; }
    Transport transport() const override { return Transport::Simulated; }
    QString typeCode() const override { return m_model.typeCode; }

    bool open(QString *error) override;
    void close() override;
    bool isOpen() const override { return m_nodes.has_value(); }
    GenApi::INodeMap *nodeMap() const override;
    QByteArray description() const override { return m_description; }
    PortLoad portLoad() const override { return m_nodes ? m_nodes->load() : PortLoad(); }

    bool startAcquisition(QString *error) override;
    void stopAcquisition() override;
    bool isAcquiring() const override;
    FrameCounts frameCounts() const override { return m_tally.counts(); }
    bool isPresent() const override;

    /// Makes the link fail from now on, for tests and demonstrations. Drop raises lost(),
    /// Timeout and its end answeringChanged().
    void setFault(Fault fault);
    Fault fault() const { return m_port.fault(); }
    /// How bad the way of its frames is.
    FrameFaults &frameFaults() { return m_frameFaults; }
    /// Time that every access to a register takes.
    void setLatency(std::chrono::milliseconds time);
    /// The device's inside, for tests. It lives as long as the device.
    Firmware &inside() const { return *m_firmware; }

private:
    void startRunning();
    void deliver(SimulatedFrame frame);
    void onAcquisitionChanged(bool acquiring);
    /// Ends the lock that the device's own end of an acquisition leaves behind.
    void unlockParameters();

    const SimulatedModel m_model;
    const QByteArray m_description;
    std::unique_ptr<Firmware> m_firmware;
    SimulatedPort m_port;
    FrameFaults m_frameFaults;
    FrameTally m_tally;
    std::optional<LoadedNodeMap> m_nodes;
    std::unique_ptr<FrameSource> m_source; ///< lives on the thread while the device is open
    std::thread m_thread;
};
