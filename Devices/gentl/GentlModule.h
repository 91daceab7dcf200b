// SPDX-License-Identifier: MIT
#pragma once

#include <atomic>
#include <memory>

#include "Devices/Device.h"
#include "Devices/gentl/GentlPlace.h"
#include "Features/HandOver.h"

class DeviceLine;
class ModuleConnection;

/// A module of a GenTL producer as a card: the system, an interface and, while its camera is open, the producer's side
/// of a camera and its stream. Which of them follows from how far its place goes.
class GentlModule : public Device
{
    Q_OBJECT

public:
    explicit GentlModule(GentlIdentity identity, QObject *parent = nullptr);
    ~GentlModule() override;

    QString id() const override;
    QString displayName() const override { return m_identity.displayName; }
    Kind kind() const override { return Kind::Card; }
    QString typeCode() const override { return {}; }
    /// Takes seconds when the producer does not come back, but not for ever.
    void reach(const std::atomic_bool &cancelled, const ReadProgress &progress) override;
    bool open(QString *error) override;
    void close() override;
    bool isOpen() const override { return m_connection != nullptr; }
    GenApi::INodeMap *nodeMap() const override;
    QByteArray description() const override;
    PortLoad portLoad() const override;
    bool startAcquisition(QString *error) override;
    void stopAcquisition() override { }
    bool isAcquiring() const override { return false; }

    /// It is lost with its camera, which could not be opened by others otherwise.
    void cameraCloses();

private:
    struct Reached;

    Reached reached();

    const GentlIdentity m_identity;
    HandOver m_handOver;
    std::unique_ptr<Reached> m_reached; ///< by reach(), until open() takes it or close() drops it
    std::shared_ptr<DeviceLine> m_line; ///< of what is reached or open
    std::unique_ptr<ModuleConnection> m_connection;
};
