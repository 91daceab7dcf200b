// SPDX-License-Identifier: MIT
#pragma once

#include <QProcess>

/// The transport library's program that is a GigE Vision camera, on the network that FAKE_CAMERA_ADDRESS and
/// FAKE_CAMERA_NETWORK name, else on the loopback device.
class FakeCamera
{
public:
    ~FakeCamera() { unplug(); }

    static bool isInstalled();
    static QString address();
    /// With that serial number, or the program's own. False when it does not start.
    bool plug(const QString &serial = QString());
    /// Without a word to the network. False when it does not end.
    bool unplug();
    bool isPlugged() const { return m_process.state() != QProcess::NotRunning; }
    /// What it has printed.
    QByteArray output() { return m_process.readAll(); }

private:
    QProcess m_process;
};
