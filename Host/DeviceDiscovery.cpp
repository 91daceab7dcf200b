// SPDX-License-Identifier: MIT
#include "Host/DeviceDiscovery.h"

#include <utility>

DeviceDiscovery::DeviceDiscovery(DeviceFinder deviceFinder, Announcer announce, QObject *parent)
    : QObject(parent), finder(std::move(deviceFinder)), announcer(std::move(announce)),
      worker(std::make_unique<QObject>()), stopped(std::make_shared<std::atomic_bool>(false))
{
    thread.setObjectName(QStringLiteral("DeviceDiscovery"));
    worker->moveToThread(&thread);
    thread.start();
}

DeviceDiscovery::~DeviceDiscovery()
{
    stop();
    thread.quit();
    thread.wait();
}

void DeviceDiscovery::search()
{
    if (searching || !finder)
        return;
    searching = true;
    runLater([this] {
        std::vector<FoundDevice> devices = finder();
        const auto report = [this, devices = std::move(devices)] {
            searching = false;
            Q_EMIT found(devices);
        };
        QMetaObject::invokeMethod(this, report, Qt::QueuedConnection);
    });
}

void DeviceDiscovery::announce(const QStringList &cards, const QStringList &cameras)
{
    runLater([this, cards, cameras] {
        announcer(cards, cameras);
        QMetaObject::invokeMethod(this, &DeviceDiscovery::announced, Qt::QueuedConnection);
    });
}

void DeviceDiscovery::stop()
{
    *stopped = true;
}

void DeviceDiscovery::runLater(std::function<void()> job)
{
    const auto run = [job = std::move(job), over = stopped] {
        if (!*over)
            job();
    };
    QMetaObject::invokeMethod(worker.get(), run, Qt::QueuedConnection);
}
