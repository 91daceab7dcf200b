// SPDX-License-Identifier: MIT
#pragma once

#include <QProcess>

/// The program that is a GigE Vision camera on the network that FAKE_CAMERA_ADDRESS and FAKE_CAMERA_NETWORK name, else
/// on the loopback device.
class FakeCamera
{
public:
    ~FakeCamera() { unplug(); }

    /// False when there is no such program.
    bool plug();
    void unplug();
    bool isPlugged() const { return m_process.state() != QProcess::NotRunning; }

private:
    QProcess m_process;
};
