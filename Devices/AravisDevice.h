// SPDX-License-Identifier: MIT
#pragma once

#include <atomic>
#include <memory>

#include "Devices/Device.h"
#include "Devices/DeviceDiscovery.h"
#include "Devices/FrameTally.h"

class AravisStream;

/// A camera that Aravis reaches: GigE Vision, USB3 Vision, or the fake camera of Aravis itself.
///
/// A camera that does not answer for 500 ms counts as silent until it answers again (FailFastPort); one whose
/// control is gone for good is reported by lost().
class AravisDevice : public Device
{
    Q_OBJECT

public:
    /// What a search tells about a camera.
    struct Identity
    {
        QString id; ///< Aravis' device id
        QString displayName;
        Transport transport = Transport::Other;
    };

    explicit AravisDevice(Identity identity, QObject *parent = nullptr);
    ~AravisDevice() override;

    QString id() const override { return m_identity.id; }
    QString displayName() const override { return m_identity.displayName; }
    Transport transport() const override { return m_identity.transport; }
    /// Takes some seconds for a camera that does not answer. Reads registers ahead.
    void reach(const std::atomic_bool &cancelled, const ReadProgress &progress) override;
    /// Without reach() before, nothing is read ahead: that would keep the caller waiting.
    bool open(QString *error) override;
    void close() override;
    bool isOpen() const override { return m_connection != nullptr; }
    GenApi::INodeMap *nodeMap() const override;
    QByteArray description() const override;
    PortLoad portLoad() const override;
    bool startAcquisition(QString *error) override;
    void stopAcquisition() override;
    bool isAcquiring() const override { return m_stream != nullptr; }
    FrameCounts frameCounts() const override { return m_tally.counts(); }
    /// GevHeartbeatTimeout, where the camera has it.
    std::chrono::milliseconds heartbeat() const override;

private:
    struct Reached;
    struct Connection;

    Reached reached();
    void startStream();
    /// Frames are not as they should be: they may have another size now, which needs another stream.
    /// `isCounted`: the one that shows it is in the tally already.
    void checkPayload(bool isCounted);
    void reportAnswering(bool answering);
    /// A line for the log that says which camera it tells of.
    QString named(const QString &line) const;

    const Identity m_identity;
    HandOver m_handOver;
    std::unique_ptr<Reached> m_reached; ///< by reach(), until open() takes it or close() drops it
    std::unique_ptr<Connection> m_connection;
    FrameTally m_tally;
    std::atomic_bool m_isDoubting{false}; ///< checkPayload() is due, or was just called
    std::unique_ptr<AravisStream> m_stream;
};

/// A finder of the cameras that Aravis sees on all interfaces. It takes about a second.
/// `withFakeCamera` adds Aravis' in-process fake camera.
DeviceFinder aravisFinder(bool withFakeCamera = false);
