// SPDX-License-Identifier: MIT
#pragma once

#include <functional>
#include <memory>
#include <vector>

#include <QObject>
#include <QString>

#include "Devices/Device.h"
#include "Features/HandOver.h"
#include "Features/JobThread.h"

/// A way in which a camera can be reached.
struct DeviceRoute
{
    QString name; ///< for people
    QString id; ///< of the device that takes it
};

/// A device that a search has found, not opened yet.
struct FoundDevice
{
    QString id; ///< the key of the device, see Device::id()
    /// Makes the (closed) device. Called on the GUI thread, once per new id.
    std::function<std::unique_ptr<Device>()> create;
    /// What the search tells of it; empty for what it does not.
    Device::Transport transport = Device::Transport::Other;
    QString name{}; ///< see Device::displayName()
    QString vendor{};
    QString model{};
    QString serial{};
    QString address{}; ///< in the network
    QString hardwareAddress{}; ///< in the network, see normalHardwareAddress()
    bool isCard = false; ///< see Device::kind()
    QString card{}; ///< id of the card that it is connected to, or that a card is part of
    QString route{}; ///< how it is reached, for people: a producer and its interface; empty for the built-in way
    std::vector<DeviceRoute> routes{}; ///< all ways to a camera that was found more than once; see mergedFinder()
    QString camera{}; ///< the same for all routes; see cameraKey()

    /// Whether the device of that id takes one of the routes.
    bool isReachedBy(const QString &device) const;
};

/// A hardware address as twelve lower-case digits; empty for what is none.
QString normalHardwareAddress(const QString &text);

/// Searches the transports; may block for seconds. Called on the discovery thread, never concurrently.
using DeviceFinder = std::function<std::vector<FoundDevice>()>;

/// Looks for devices on a thread of its own.
class DeviceDiscovery : public QObject
{
    Q_OBJECT

public:
    /// The destructor waits for a running search, which must be able to end without the GUI thread.
    explicit DeviceDiscovery(DeviceFinder finder, QObject *parent = nullptr);

    /// Starts a search; does nothing while one is running.
    void search();
    bool isSearching() const { return m_searching; }

Q_SIGNALS:
    /// A search has ended. On the GUI thread.
    void found(const std::vector<FoundDevice> &devices);

private:
    DeviceFinder m_finder;
    bool m_searching = false;
    HandOver m_handOver;
    JobThread m_jobs;
};
