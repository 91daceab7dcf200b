// SPDX-License-Identifier: MIT
#include "Host/SilentDevices.h"

#include "Host/DeviceSessions.h"
#include "Host/KnownDevices.h"

SilentDevices::SilentDevices(KnownDevices &devices, const DeviceSessions &sessions) : m_devices(devices)
{
    connect(&m_devices, &KnownDevices::answeringChanged, this, &SilentDevices::adoptAnswering);
    connect(&sessions, &DeviceSessions::stateChanged, this, [this](const QString &id) {
        if (!m_devices.isReady(id))
            adoptAnswering(id, true); // that it did not is of no interest any more
    });
}

void SilentDevices::adoptAnswering(const QString &id, bool answering)
{
    if (contains(id) != answering)
        return;
    if (answering) {
        m_timers.erase(id);
    } else {
        auto timer = std::make_unique<QTimer>();
        timer->setSingleShot(true);
        connect(
            timer.get(), &QTimer::timeout, this, [this, id] { giveUp(id); },
            Qt::QueuedConnection); // which deletes the timer
        timer->start(m_devices.device(id)->heartbeat());
        m_timers[id] = std::move(timer);
    }
    Q_EMIT changed(id);
}

void SilentDevices::giveUp(const QString &id)
{
    Device *const device = m_devices.device(id);
    if (device && contains(id))
        Q_EMIT device->lost(QStringLiteral("it has not answered for %1 ms").arg(device->heartbeat().count()));
}
