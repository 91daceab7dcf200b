// SPDX-License-Identifier: MIT
#pragma once

#include <chrono>

#include <QMap>
#include <QObject>
#include <QSettings>
#include <QStringList>

#include "Devices/OncePerMinute.h"

class DeviceSessions;
class KnownDevices;

/// The devices that were lost, and their coming back: as soon as a search sees one it is opened again, and acquires if
/// it did. A device that is opened again by a person is back, too, but does not acquire by itself. GUI thread.
class DeviceReturn : public QObject
{
    Q_OBJECT

public:
    using Clock = OncePerMinute::Clock;

    /// All three must outlive this.
    DeviceReturn(KnownDevices &devices, DeviceSessions &sessions, QSettings &settings, Clock clock);

    /// Lost, and not open again yet.
    bool isLost(const QString &id) const { return m_losses.contains(id); }
    /// The device is not lost any more but closed.
    void giveUp(const QString &id);
    /// The devices that are lost and expected back, or are back since. A device that a person closes is none of them.
    QStringList returning() const { return m_returning; }

    /// Whether lost devices are opened again; on at first. This and the next are kept in the settings.
    void setEnabled(bool enabled);
    bool isEnabled() const;
    /// Whether they acquire again, too; on at first.
    void setAcquiringAgain(bool acquiring);
    bool isAcquiringAgain() const;

Q_SIGNALS:
    /// The device was lost, is back, or was given up.
    void changed(const QString &id);
    void returningChanged(const QStringList &ids);
    /// A device was lost a short while ago and is expected back, or no longer.
    void awaitingChanged(bool awaiting);

private:
    struct Loss
    {
        bool wasAcquiring = false;
        bool isTried = false; ///< is being opened by this
        int failures = 0;
        std::chrono::milliseconds since{0};
        std::chrono::milliseconds nextTry{0};
    };

    void adoptLoss(const QString &id);
    void adoptState(const QString &id);
    void adoptReturn(const QString &id);
    void tryPresent(const QStringList &present);
    void setReturning(const QString &id, bool returning);
    void updateAwaiting();

    KnownDevices &m_devices;
    DeviceSessions &m_sessions;
    QSettings &m_settings;
    Clock m_clock;
    QMap<QString, Loss> m_losses;
    QStringList m_returning;
    bool m_isAwaiting = false;
};
