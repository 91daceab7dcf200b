// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

#include "Tools/WriteLog.h"

class KnownDevices;

/// Keeps the log of what panel and host write to devices, with what the log wants to know beside it. GUI thread.
class DeviceWrites
{
public:
    /// `devices` must outlive this.
    explicit DeviceWrites(const KnownDevices &devices) : m_devices(devices) { }

    /// To be called right after the write, while the selectors still stand. Reads no selector from the device: if the
    /// node map does not know them all by itself they are left out.
    void add(const QString &device, const QString &feature, const QString &value, const QString &refusal);

    WriteLog &log() { return m_log; }

private:
    const KnownDevices &m_devices;
    WriteLog m_log;
};
