// SPDX-License-Identifier: MIT
#pragma once

#include <map>
#include <memory>

#include <QObject>
#include <QString>
#include <QTimer>

class DeviceSessions;
class KnownDevices;

/// The open devices that do not answer. One that is silent for longer than its heartbeat is lost. GUI thread.
class SilentDevices : public QObject
{
    Q_OBJECT

public:
    /// Both must outlive this.
    SilentDevices(KnownDevices &devices, const DeviceSessions &sessions);

    bool contains(const QString &id) const { return m_timers.count(id) > 0; }

Q_SIGNALS:
    /// The device has fallen silent, or it is no longer.
    void changed(const QString &id);

private:
    void adoptAnswering(const QString &id, bool answering);
    void giveUp(const QString &id);

    KnownDevices &m_devices;
    std::map<QString, std::unique_ptr<QTimer>> m_timers; ///< each runs for one heartbeat
};
