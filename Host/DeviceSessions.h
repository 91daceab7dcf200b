// SPDX-License-Identifier: MIT
#pragma once

#include <memory>
#include <optional>

#include <QHash>
#include <QObject>
#include <QString>
#include <QStringList>

#include "Host/DeviceAnnouncer.h"
#include "Host/Openings.h"

class HostFocus;
class HostListeners;
class HostLog;
class KnownDevices;

/// Opens and closes devices and starts and stops their acquisition, in step with the panels, which hear of it later.
/// GUI thread.
class DeviceSessions : public QObject
{
    Q_OBJECT

public:
    /// All four must outlive this.
    DeviceSessions(KnownDevices &devices, HostFocus &focus, HostListeners &listeners, HostLog &log);

    /// Opens a device and announces it to the panel, which shows it soon. False on failure, which is logged; a device
    /// that is still being closed cannot be opened.
    bool open(const QString &id);
    /// The same, without making the caller wait for the device to be reached. Its state changes when that begins and
    /// when it has ended, one way or the other.
    void openLater(const QString &id);
    /// Announces the device as closed and releases it when the event loop has removed its panel. A device that is
    /// still being opened is given up, without an error; one that is not open stays as it is.
    void close(const QString &id);
    /// False on failure, which is logged.
    bool startAcquisition(const QString &id);
    void stopAcquisition(const QString &id);
    /// Panels have still to adopt what became of devices; until then one may stand in for another.
    bool isAnnouncing() const { return m_announcer && !m_announcer->isIdle(); }

    /// For SessionHold: defers the loss and the closing of a device until each call has its release(). False, without
    /// effect, when the device is not ready.
    bool hold(const QString &id);
    void release(const QString &id);
    /// A loss or a closing is deferred.
    bool isEndAwaited(const QString &id) const;

    /// How far the devices are that are being opened.
    const Openings &openings() const { return m_openings; }

    /// For the end of the host. Waits for devices that are being reached, which takes seconds for a dead one, and for
    /// the panels.
    void end();

Q_SIGNALS:
    /// A device is being opened or could not be, was opened, closed or lost, or started or stopped acquiring.
    void stateChanged(const QString &id);
    /// A device that was in use is lost; it is closed right after this.
    void lost(const QString &id);
    /// The panels know that the device is closed; their end and then its own are due.
    void releasing(const QString &id);

private:
    /// What waits for the end of the holds of a device.
    struct Held
    {
        int holds = 0;
        bool isClosed = false;
        std::optional<QString> loss; ///< its reason

        bool isEndAwaited() const { return isClosed || loss; }
    };

    void finishOpening(const QString &id, bool cancelled);
    void adoptAcquiring(const QString &id);
    void adoptLoss(const QString &id, const QString &reason);
    void adoptAnnounced();
    void releaseAfterPanels(const QString &id);
    void finishClosing(const QString &id);
    /// Tells panels that the device was opened or closed, or its acquisition started or stopped. Nobody hears of
    /// devices that stay closed: a panel shows nothing for a moment for each camera that is listed as closed.
    void announce(const QString &id);

    KnownDevices &m_devices;
    HostFocus &m_focus;
    HostLog &m_log;
    std::unique_ptr<DeviceAnnouncer> m_announcer; ///< null in the end
    Openings m_openings;
    QHash<QString, Held> m_held;
    QStringList m_closings; ///< announced as closed, not seen by every panel yet
};
