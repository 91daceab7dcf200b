// SPDX-License-Identifier: MIT
#pragma once

#include <atomic>
#include <memory>
#include <vector>

#include "Devices/Device.h"
#include "Devices/DeviceDiscovery.h"
#include "Devices/FrameTally.h"
#include "Devices/gentl/GentlPlace.h"
#include "Devices/gentl/GentlStream.h"
#include "Features/HandOver.h"

class DeviceLine;

/// A camera that a GenTL producer reaches.
///
/// A camera that does not answer for 500 ms counts as silent until it answers again (FailFastPort); one that the
/// producer does not reach any more is reported by lost(), at the latest after a second. Without control it is open for
/// reading only, which reported() says.
class GentlCamera : public Device
{
    Q_OBJECT

public:
    explicit GentlCamera(GentlIdentity identity, QObject *parent = nullptr);
    ~GentlCamera() override;

    QString id() const override { return m_identity.place.key(); }
    QString displayName() const override { return m_identity.displayName; }
    Transport transport() const override { return transportOf(m_identity.transport); }
    /// Takes seconds when the producer does not come back, but not for ever.
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

    /// The producer's sides of the open camera and of its stream, as cards. They are lost when the camera is closed.
    /// Empty while it is closed.
    std::vector<FoundDevice> modules() const override;

Q_SIGNALS:
    void closing();

private:
    struct Reached;
    struct Connection;
    struct Arrivals;

    Reached reached();
    void startStream();
    /// On the stream's thread.
    void take(GentlStream::Arrival arrival, const std::shared_ptr<Arrivals> &arrivals);
    /// Frames are not as they should be: they may have another size now, which needs another stream.
    void checkPayload();
    void endStream();

    const GentlIdentity m_identity;
    HandOver m_handOver;
    std::unique_ptr<Reached> m_reached; ///< by reach(), until open() takes it or close() drops it
    std::shared_ptr<DeviceLine> m_line; ///< of what is reached or open
    std::unique_ptr<Connection> m_connection;
    FrameTally m_tally;
    std::atomic_bool m_isDoubting{false}; ///< checkPayload() is due, or was just called
    std::unique_ptr<GentlStream> m_stream;
};
