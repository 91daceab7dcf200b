// SPDX-License-Identifier: MIT
#pragma once

#include <atomic>
#include <map>
#include <memory>
#include <thread>

#include <QObject>
#include <QSemaphore>
#include <QString>

#include "Features/HandOver.h"

class Device;

/// Devices that are being reached on other threads, how far each of them is, and which were given up. GUI thread.
class Openings : public QObject
{
    Q_OBJECT

public:
    Openings();
    ~Openings() override;

    /// Reaches a device, which must not be on its way yet and must stay until ended().
    void start(const QString &id, Device &device);
    /// Gives up: the device is left alone after the access that it is at, which takes seconds for a dead one.
    void cancel(const QString &id);
    bool isCancelled(const QString &id) const;
    /// How much of its registers has been read, in percent; 0 while nothing is known of them.
    int percent(const QString &id) const;
    /// For the end of the host. Gives all up and waits for them.
    void end();

Q_SIGNALS:
    /// The percentage of a device changed, or it was given up.
    void progressed(const QString &id);
    /// A device was reached, or could not be.
    void ended(const QString &id, bool cancelled);

private:
    struct Opening
    {
        std::atomic_bool cancelled{false};
        std::atomic_int percent{0};
        std::thread thread;
    };

    void reach(const QString &id, Device &device, Opening &opening);
    void tell(const QString &id, Opening &opening, int percent);
    void finish(const QString &id);
    const Opening *find(const QString &id) const;

    HandOver m_handOver;
    QSemaphore m_places;
    std::map<QString, std::shared_ptr<Opening>> m_running;
};
