// SPDX-License-Identifier: MIT
#include "Host/HostFocus.h"

#include "Features/NodeGuard.h"
#include "Host/FocusType.h"
#include "Host/HostListeners.h"
#include "Host/HostLog.h"
#include "Host/KnownDevices.h"

namespace {

constexpr int PollInterval = 1000; // ms

} // namespace

HostFocus::HostFocus(const KnownDevices &devices, HostListeners &listeners, HostLog &log)
    : m_devices(devices), m_listeners(listeners), m_log(log)
{
    connect(&m_pollTimer, &QTimer::timeout, this, &HostFocus::poll);
    m_pollTimer.start(PollInterval);
}

void HostFocus::set(const QString &id)
{
    m_id = m_devices.device(id) ? id : QString();
    announce();
    Q_EMIT changed(m_id);
}

void HostFocus::announce()
{
    m_listeners.raiseFocus(focusType(m_devices.device(m_id)), m_id);
}

void HostFocus::poll()
{
    if (!m_devices.isReady(m_id))
        return;
    QString error;
    if (!guarded(&error, [this] { m_devices.device(m_id)->nodeMap()->Poll(PollInterval); }))
        m_log.add(HostModule, QStringLiteral("Polling %1 failed: %2").arg(m_id, error));
}
