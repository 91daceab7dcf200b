// SPDX-License-Identifier: MIT
#pragma once

#include <functional>
#include <optional>

#include <QString>
#include <QStringList>

#include "Devices/Device.h"
#include "Devices/LoadedNodeMap.h"
#include "support/MemoryPort.h"

/// A device whose description has one feature of each kind; it does what a test tells it.
class TestDevice : public Device
{
    Q_OBJECT

public:
    explicit TestDevice(const QString &deviceId, Kind deviceKind = Kind::Camera) : key(deviceId), type(deviceKind) { }

    QString id() const override { return key; }
    QString displayName() const override { return key; }
    Kind kind() const override { return type; }
    QString typeCode() const override { return QStringLiteral("1"); }
    void reach() override
    {
        if (onReach)
            onReach();
    }
    bool open(QString *error) override;
    void close() override;
    bool isOpen() const override { return nodes.has_value(); }
    GenApi::INodeMap *nodeMap() const override { return nodes ? nodes->get() : nullptr; }
    bool startAcquisition(QString *error) override;
    void stopAcquisition() override;
    bool isAcquiring() const override { return acquiring; }

    std::function<void()> onReach;
    /// Not empty: open() and startAcquisition() fail with this reason.
    QString refusal;
    MemoryPort port;

    static constexpr int64_t widthAddress = 0x10; ///< 32 bits, polled every 500 ms
    static constexpr int64_t commandAddress = 0x20; ///< gets 7 on execution

Q_SIGNALS:
    void closed();

private:
    void setAcquiring(bool acquires);

    const QString key;
    const Kind type;
    std::optional<LoadedNodeMap> nodes;
    bool acquiring = false;
};
