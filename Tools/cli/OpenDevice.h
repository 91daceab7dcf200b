// SPDX-License-Identifier: MIT
#pragma once

#include <memory>

#include <QElapsedTimer>

#include "Devices/Device.h"

/// A device of the command line, open as long as this lives.
class OpenDevice
{
public:
    /// Null, with a sentence in `error`, when the device cannot be opened.
    static std::unique_ptr<OpenDevice> open(std::unique_ptr<Device> device, QString *error);
    ~OpenDevice();
    OpenDevice(const OpenDevice &) = delete;
    OpenDevice &operator=(const OpenDevice &) = delete;

    QString id() const { return m_device->id(); }
    const Device &device() const { return *m_device; }
    GenApi::INodeMap &map() const { return *m_device->nodeMap(); }

    /// False when the user has interrupted the program or the device is lost. Called between two accesses, as often as
    /// one likes.
    bool goesOn();
    /// The same, with everything that was reported until now: for the end of a task.
    bool endsWell();
    /// It does not answer any more.
    bool isLost() const { return !m_lossReason.isEmpty(); }
    /// "DEVICE is lost: ..."
    QString lossText() const;

private:
    explicit OpenDevice(std::unique_ptr<Device> device);

    std::unique_ptr<Device> m_device;
    QString m_lossReason;
    QElapsedTimer m_sinceEvents;
};
