// SPDX-License-Identifier: MIT
#include "Host/DeviceAnnouncer.h"

#include <utility>

#include <QCoreApplication>

namespace {

constexpr unsigned long servingPause = 5; // ms

}

DeviceAnnouncer::DeviceAnnouncer(Raise raiseList, QObject *parent) : QObject(parent), raise(std::move(raiseList)) { }

DeviceAnnouncer::~DeviceAnnouncer()
{
    jobs.stop();
    while (!jobs.hasEnded(servingPause))
        QCoreApplication::sendPostedEvents(nullptr, QEvent::MetaCall);
}

void DeviceAnnouncer::announce(const QStringList &cards, const QStringList &cameras)
{
    ++pending;
    jobs.add([this, cards, cameras] {
        raise(cards, cameras);
        QMetaObject::invokeMethod(this, &DeviceAnnouncer::finish, Qt::QueuedConnection);
    });
}

void DeviceAnnouncer::finish()
{
    --pending;
    Q_EMIT announced();
}
