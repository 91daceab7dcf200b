// SPDX-License-Identifier: MIT
#include "Host/DeviceSessions.h"

#include <utility>

#include "Host/HostFocus.h"
#include "Host/HostListeners.h"
#include "Host/HostLog.h"
#include "Host/KnownDevices.h"

namespace {

/// Why a device cannot be opened now; empty when it can.
QString obstacle(const KnownDevices &devices, const Openings &openings, const QString &id)
{
    if (!devices.device(id))
        return QStringLiteral("it is not known");
    if (openings.isCancelled(id))
        return QStringLiteral("it is still being given up, try again");
    if (devices.isOpening(id))
        return QStringLiteral("it is already being opened");
    if (devices.state(id) == KnownDevices::State::Closing)
        return QStringLiteral("it is still being closed, try again");
    return {};
}

} // namespace

DeviceSessions::DeviceSessions(KnownDevices &devices, HostFocus &focus, HostListeners &listeners, HostLog &log)
    : m_devices(devices), m_focus(focus), m_log(log)
{
    m_announcer = std::make_unique<DeviceAnnouncer>([&listeners](const QStringList &cards, const QStringList &cameras) {
        listeners.raiseDeviceList(cards, cameras);
    });
    connect(&m_openings, &Openings::ended, this, &DeviceSessions::finishOpening);
    connect(m_announcer.get(), &DeviceAnnouncer::announced, this, &DeviceSessions::adoptAnnounced);
    connect(&m_devices, &KnownDevices::acquiringChanged, this, &DeviceSessions::adoptAcquiring);
    connect(&m_devices, &KnownDevices::lost, this, &DeviceSessions::adoptLoss);
}

bool DeviceSessions::open(const QString &id)
{
    if (m_devices.isReady(id))
        return true;
    QString error = obstacle(m_devices, m_openings, id);
    const bool isTried = error.isEmpty();
    const bool isOpen = isTried && m_devices.device(id)->open(&error);
    if (!isOpen)
        m_log.add(HostModule, QStringLiteral("Opening %1 failed: %2").arg(id, error));
    if (!isTried)
        return false;
    m_devices.setState(id, isOpen ? KnownDevices::State::Ready : KnownDevices::State::Closed);
    m_devices.setOpeningError(id, isOpen ? QString() : error);
    if (isOpen)
        announce(id);
    Q_EMIT stateChanged(id);
    return isOpen;
}

void DeviceSessions::openLater(const QString &id)
{
    if (m_devices.isReady(id) || !obstacle(m_devices, m_openings, id).isEmpty()) {
        open(id); // which says what is wrong
        return;
    }
    m_devices.setState(id, KnownDevices::State::Opening);
    m_openings.start(id, *m_devices.device(id));
    Q_EMIT stateChanged(id);
}

void DeviceSessions::finishOpening(const QString &id, bool cancelled)
{
    if (!m_announcer) // the end, which still handles events
        return;
    m_devices.setState(id, KnownDevices::State::Closed);
    if (!cancelled) {
        open(id);
        return;
    }
    m_devices.device(id)->close();
    Q_EMIT stateChanged(id);
}

void DeviceSessions::close(const QString &id)
{
    m_openings.cancel(id);
    if (!m_devices.isReady(id))
        return;
    if (const auto held = m_held.find(id); held != m_held.end()) {
        held->isClosed = true;
        return;
    }
    m_devices.setState(id, KnownDevices::State::Closing);
    m_closings += id;
    announce(id);
    Q_EMIT stateChanged(id);
}

void DeviceSessions::adoptLoss(const QString &id, const QString &reason)
{
    if (!m_devices.isReady(id))
        return;
    if (const auto held = m_held.find(id); held != m_held.end()) {
        held->loss = held->loss.value_or(reason);
        return;
    }
    m_log.add(HostModule, QStringLiteral("Device %1 is lost: %2").arg(id, reason));
    Q_EMIT lost(id);
    close(id);
}

bool DeviceSessions::hold(const QString &id)
{
    if (!m_devices.isReady(id))
        return false;
    ++m_held[id].holds;
    return true;
}

void DeviceSessions::release(const QString &id)
{
    const auto held = m_held.find(id);
    if (held == m_held.end() || --held->holds > 0)
        return;
    const Held due = *held;
    m_held.erase(held);
    if (due.loss)
        adoptLoss(id, *due.loss);
    else if (due.isClosed)
        close(id);
}

bool DeviceSessions::isEndAwaited(const QString &id) const
{
    const auto held = m_held.find(id);
    return held != m_held.end() && held->isEndAwaited();
}

bool DeviceSessions::startAcquisition(const QString &id)
{
    Device *const wanted = m_devices.isReady(id) ? m_devices.device(id) : nullptr;
    QString error = QStringLiteral("the device is not open");
    if (wanted && wanted->startAcquisition(&error))
        return true;
    m_log.add(HostModule, QStringLiteral("Starting acquisition of %1 failed: %2").arg(id, error));
    return false;
}

void DeviceSessions::stopAcquisition(const QString &id)
{
    if (m_devices.isReady(id))
        m_devices.device(id)->stopAcquisition();
}

void DeviceSessions::adoptAcquiring(const QString &id)
{
    if (m_devices.isReady(id))
        announce(id);
    Q_EMIT stateChanged(id);
}

/// A panel looks at the first card only, and where that one is new to it at no camera of the event.
void DeviceSessions::announce(const QString &id)
{
    if (!m_announcer) // the end
        return;
    const Device::Kind kind = m_devices.device(id)->kind();
    if (kind == Device::Kind::Card)
        m_announcer->announce(m_devices.inUse(kind, id), {});
    else
        m_announcer->announce({}, m_devices.inUse(kind, id));
}

void DeviceSessions::adoptAnnounced()
{
    // A camera that is listed as closed makes the panel show nothing, whoever has the focus.
    m_focus.announce();
    // The events of devices that were closed meanwhile may still be on their way.
    if (!m_announcer->isIdle())
        return;
    const QStringList seen = std::exchange(m_closings, {});
    for (const QString &id : seen)
        releaseAfterPanels(id);
}

void DeviceSessions::releaseAfterPanels(const QString &id)
{
    Q_EMIT releasing(id);
    // The event has left the device's panels to deferred deletion. Deferred deletions run in their order, so the
    // node map goes when the last user of it has gone.
    auto *afterPanels = new QObject(this);
    connect(afterPanels, &QObject::destroyed, this, [this, id] { finishClosing(id); });
    afterPanels->deleteLater();
}

void DeviceSessions::finishClosing(const QString &id)
{
    if (!m_devices.device(id))
        return;
    m_devices.device(id)->close();
    m_devices.setState(id, KnownDevices::State::Closed);
    Q_EMIT stateChanged(id);
}

void DeviceSessions::end()
{
    m_openings.end();
    m_announcer->disconnect(this); // what it still serves must find nothing to announce
    m_devices.silence();
    m_announcer.reset();
}
