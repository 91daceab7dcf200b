// SPDX-License-Identifier: MIT
#pragma once

#include <QObject>
#include <QString>
#include <QTimer>

class HostListeners;
class HostLog;
class KnownDevices;

/// Which device the panels show. What it reads is kept fresh: its nodes are polled once a second. GUI thread.
class HostFocus : public QObject
{
    Q_OBJECT

public:
    /// All three must outlive this.
    HostFocus(const KnownDevices &devices, HostListeners &listeners, HostLog &log);

    /// Empty when nothing has the focus.
    QString id() const { return m_id; }
    /// Gives it to a device, open or not; an unknown or empty id takes it away from all.
    void set(const QString &id);
    /// Tells the panels who has it.
    void announce();

Q_SIGNALS:
    /// The id is empty when nothing has the focus.
    void changed(const QString &id);

private:
    void poll();

    const KnownDevices &m_devices;
    HostListeners &m_listeners;
    HostLog &m_log;
    QString m_id;
    QTimer m_pollTimer;
};
