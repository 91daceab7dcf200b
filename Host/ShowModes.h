// SPDX-License-Identifier: MIT
#pragma once

#include <QHash>
#include <QObject>
#include <QString>

class DeviceSessions;
class HostLog;
class KnownDevices;

/// Which image of its shots each open structured-light camera shows. GUI thread.
class ShowModes : public QObject
{
    Q_OBJECT

public:
    static constexpr int DepthMap = 0;
    /// Modes 1 to 8 name the 2D images, in the order of HeightFrame::outputs.
    static constexpr int Last = 8;

    /// All three must outlive this.
    ShowModes(const KnownDevices &devices, const DeviceSessions &sessions, HostLog &log);

    /// DepthMap from the opening of the device on.
    int of(const QString &device) const { return m_modes.value(device, DepthMap); }
    /// A mode that does not exist is logged and shows the depth map; a device that is not open is logged.
    void set(const QString &device, int mode);

Q_SIGNALS:
    void changed(const QString &device);

private:
    const KnownDevices &m_devices;
    HostLog &m_log;
    QHash<QString, int> m_modes;
};
