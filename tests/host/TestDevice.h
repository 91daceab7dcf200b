// SPDX-License-Identifier: MIT
#pragma once

#include <functional>
#include <optional>

#include <QString>

#include "Devices/Device.h"
#include "Devices/LoadedNodeMap.h"
#include "support/MemoryPort.h"

/// A device whose description has one feature of each kind; it does what a test tells it.
class TestDevice : public Device
{
    Q_OBJECT

public:
    explicit TestDevice(const QString &deviceId, Kind deviceKind = Kind::Camera) : m_key(deviceId), m_type(deviceKind)
    { }

    QString id() const override { return m_key; }
    QString displayName() const override { return m_key; }
    Kind kind() const override { return m_type; }
    QString typeCode() const override { return QStringLiteral("1"); }
    void reach(const std::atomic_bool &cancelled, const ReadProgress &progress) override
    {
        if (onReach)
            onReach(cancelled, progress);
    }
    bool open(QString *error) override;
    void close() override;
    bool isOpen() const override { return m_nodes.has_value(); }
    GenApi::INodeMap *nodeMap() const override { return m_nodes ? m_nodes->get() : nullptr; }
    bool startAcquisition(QString *error) override;
    void stopAcquisition() override { setAcquiring(false); }
    bool isAcquiring() const override { return m_acquiring; }
    FrameCounts frameCounts() const override { return counts; }
    std::chrono::milliseconds heartbeat() const override { return silence; }

    std::function<void(const std::atomic_bool &cancelled, const ReadProgress &progress)> onReach;
    /// Not empty: open() and startAcquisition() fail with this reason.
    QString refusal;
    MemoryPort port;
    FrameCounts counts;
    std::chrono::milliseconds silence{3000};

    static constexpr int64_t WidthAddress = 0x10; ///< 32 bits, polled every 500 ms
    static constexpr int64_t CommandAddress = 0x20; ///< gets 7 on execution

Q_SIGNALS:
    void closed();

private:
    void setAcquiring(bool acquires);

    const QString m_key;
    const Kind m_type;
    std::optional<LoadedNodeMap> m_nodes;
    bool m_acquiring = false;
};
