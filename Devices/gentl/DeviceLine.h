// SPDX-License-Identifier: MIT
#pragma once

#include <mutex>

#include <QString>

#include "Devices/Device.h"
#include "Features/HandOver.h"

/// Where threads leave what they have to tell about a device; the device may go at any time.
class DeviceLine
{
public:
    /// `handOver` is the receiver's.
    DeviceLine(Device *receiver, HandOver *handOver, QString name);

    /// The device is told nothing from now on. On the GUI thread.
    void hangUp();

    // Any thread:

    /// It arrives as Device::lost(). Told once.
    void lost(const QString &reason);
    bool isLost() const;
    /// It arrives as Device::answeringChanged(), and in the log.
    void answering(bool answers);
    /// It arrives as Device::reported(), with the device's name, at once.
    void report(const QString &line);
    /// Runs a function on the GUI thread, unless the device has gone until then.
    void post(HandOver::Function function);

private:
    const QString m_name;
    mutable std::mutex m_mutex; ///< guards what follows
    Device *m_receiver;
    HandOver *m_handOver;
    bool m_isLost = false;
};
