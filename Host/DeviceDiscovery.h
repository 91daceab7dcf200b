// SPDX-License-Identifier: MIT
#pragma once

#include <atomic>
#include <functional>
#include <memory>
#include <vector>

#include <QObject>
#include <QString>
#include <QStringList>
#include <QThread>

#include "Host/Device.h"

/// A device that a search has found, not opened yet.
struct FoundDevice
{
    QString id; ///< the key of the device, see Device::id()
    /// Makes the (closed) device. Called on the GUI thread, once per new id.
    std::function<std::unique_ptr<Device>()> create;
};

/// Searches the transports; may block for seconds. Called on the discovery thread, never concurrently.
using DeviceFinder = std::function<std::vector<FoundDevice>()>;

/// Looks for devices and announces device lists on a thread of its own.
class DeviceDiscovery : public QObject
{
    Q_OBJECT

public:
    using Announcer = std::function<void(const QStringList &cards, const QStringList &cameras)>;

    /// `announce` is called on the discovery thread and may block.
    DeviceDiscovery(DeviceFinder finder, Announcer announce, QObject *parent = nullptr);
    /// Waits for a running search and a running announcement; both must be able to end without the GUI thread.
    ~DeviceDiscovery() override;

    /// Starts a search; does nothing while one is running.
    void search();
    bool isSearching() const { return searching; }
    /// Hands the lists to the announcer, after the announcements that are already waiting.
    void announce(const QStringList &cards, const QStringList &cameras);
    /// Drops what is still waiting: no further search or announcement begins.
    void stop();

Q_SIGNALS:
    /// A search has ended. On the GUI thread.
    void found(const std::vector<FoundDevice> &devices);
    /// An announcement has returned. On the GUI thread.
    void announced();

private:
    void runLater(std::function<void()> job);

    DeviceFinder finder;
    Announcer announcer;
    QThread thread;
    std::unique_ptr<QObject> worker;
    std::shared_ptr<std::atomic_bool> stopped;
    bool searching = false;
};
