// SPDX-License-Identifier: MIT
#include "Host/DeviceAnnouncer.h"

#include <utility>

#include <QCoreApplication>

namespace {

constexpr std::chrono::milliseconds ServingPause(5);

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
        m_handOver.post([this] { finish(); });
    });
}

void DeviceAnnouncer::finish()
{
    --m_pending;
    Q_EMIT announced();
}
