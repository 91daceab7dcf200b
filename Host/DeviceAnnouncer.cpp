// SPDX-License-Identifier: MIT
#include "Host/DeviceAnnouncer.h"

#include <utility>

#include <QCoreApplication>

namespace {

constexpr unsigned long ServingPause = 5; // ms

}

DeviceAnnouncer::DeviceAnnouncer(Raise raiseList, QObject *parent) : QObject(parent), m_raise(std::move(raiseList)) { }

DeviceAnnouncer::~DeviceAnnouncer()
{
    m_jobs.stop();
    while (!m_jobs.hasEnded(ServingPause))
        QCoreApplication::sendPostedEvents(nullptr, QEvent::MetaCall);
}

void DeviceAnnouncer::announce(const QStringList &cards, const QStringList &cameras)
{
    ++m_pending;
    m_jobs.add([this, cards, cameras] {
        m_raise(cards, cameras);
        QMetaObject::invokeMethod(this, &DeviceAnnouncer::finish, Qt::QueuedConnection);
    });
}

void DeviceAnnouncer::finish()
{
    --m_pending;
    Q_EMIT announced();
}
