// SPDX-License-Identifier: MIT
#pragma once

#include <optional>

#include "Devices/Device.h"
#include "Devices/LoadedNodeMap.h"
#include "Devices/SparseMemoryPort.h"

/// A camera description file, opened offline: its features work on a memory of zeros.
class DescriptionDevice : public Device
{
    Q_OBJECT

public:
    /// `file`: GenICam XML, plain or zipped. It is read by open().
    explicit DescriptionDevice(const QString &file, QObject *parent = nullptr);
    ~DescriptionDevice() override;

    QString id() const override;
    QString displayName() const override;
    Transport transport() const override { return Transport::DescriptionFile; }
    bool open(QString *error) override;
    void close() override;
    bool isOpen() const override { return m_nodes.has_value(); }
    GenApi::INodeMap *nodeMap() const override;
    /// Reads the file again.
    QByteArray description() const override;
    PortLoad portLoad() const override { return m_nodes ? m_nodes->load() : PortLoad(); }
    bool canAcquire() const override { return false; }
    bool startAcquisition(QString *error) override;
    void stopAcquisition() override { }
    bool isAcquiring() const override { return false; }

private:
    const QString m_path;
    SparseMemoryPort m_port;
    std::optional<LoadedNodeMap> m_nodes;
};
