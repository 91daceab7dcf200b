// SPDX-License-Identifier: MIT
#include "Host/DeviceReturn.h"

#include <algorithm>
#include <utility>

#include "Host/DeviceSessions.h"
#include "Host/KnownDevices.h"

namespace {

const QString EnabledKey = QStringLiteral("openLostDevicesAgain");
const QString AcquiringKey = QStringLiteral("acquireAgain");
constexpr std::chrono::seconds FirstDelay(1); // between two tries that fail, doubled with each
constexpr std::chrono::seconds LongestDelay(30);
constexpr int MostDoublings = 5;
constexpr std::chrono::seconds ShortWhile(60);

} // namespace

DeviceReturn::DeviceReturn(KnownDevices &devices, DeviceSessions &sessions, QSettings &settings, Clock clock)
    : m_devices(devices), m_sessions(sessions), m_settings(settings), m_clock(std::move(clock))
{
    connect(&m_sessions, &DeviceSessions::lost, this, &DeviceReturn::adoptLoss);
    connect(&m_sessions, &DeviceSessions::stateChanged, this, &DeviceReturn::adoptState);
    connect(&m_devices, &KnownDevices::searched, this, &DeviceReturn::tryPresent);
}

void DeviceReturn::adoptLoss(const QString &id)
{
    Loss loss;
    loss.wasAcquiring = m_devices.device(id)->isAcquiring();
    loss.since = m_clock();
    m_losses.insert(id, loss);
    m_devices.keep(id, true);
    setReturning(id, isEnabled());
    updateAwaiting();
    Q_EMIT changed(id);
}

void DeviceReturn::giveUp(const QString &id)
{
    if (m_losses.remove(id) == 0)
        return;
    m_devices.keep(id, false);
    setReturning(id, false);
    updateAwaiting();
    Q_EMIT changed(id);
}

void DeviceReturn::adoptState(const QString &id)
{
    const KnownDevices::State state = m_devices.state(id);
    const auto loss = m_losses.find(id);
    if (loss == m_losses.end()) {
        if (state == KnownDevices::State::Closing)
            setReturning(id, false);
        return;
    }
    if (state == KnownDevices::State::Ready)
        return adoptReturn(id);
    if (state != KnownDevices::State::Closed || !std::exchange(loss->isTried, false))
        return;
    const auto delay = FirstDelay * (1 << std::min(loss->failures++, MostDoublings));
    loss->nextTry = m_clock() + std::min(std::chrono::seconds(delay), LongestDelay);
}

void DeviceReturn::adoptReturn(const QString &id)
{
    const Loss loss = m_losses.take(id);
    m_devices.keep(id, false);
    updateAwaiting();
    Q_EMIT changed(id);
    if (loss.isTried && loss.wasAcquiring && isAcquiringAgain())
        m_sessions.startAcquisition(id);
}

void DeviceReturn::tryPresent(const QStringList &present)
{
    updateAwaiting();
    if (!isEnabled())
        return;
    const std::chrono::milliseconds now = m_clock();
    const QStringList lost = m_losses.keys();
    for (const QString &id : lost) {
        const auto loss = m_losses.find(id);
        const bool isDue = loss != m_losses.end() && now >= loss->nextTry && present.contains(id);
        if (!isDue || m_devices.state(id) != KnownDevices::State::Closed)
            continue;
        loss->isTried = true;
        m_sessions.openLater(id);
    }
}

void DeviceReturn::setReturning(const QString &id, bool returning)
{
    if (m_returning.contains(id) == returning)
        return;
    if (returning)
        m_returning += id;
    else
        m_returning.removeAll(id);
    Q_EMIT returningChanged(m_returning);
}

void DeviceReturn::updateAwaiting()
{
    const std::chrono::milliseconds now = m_clock();
    const bool isAwaiting = isEnabled() && std::any_of(m_losses.begin(), m_losses.end(), [now](const Loss &loss) {
                                return now - loss.since < ShortWhile;
                            });
    if (std::exchange(m_isAwaiting, isAwaiting) != isAwaiting)
        Q_EMIT awaitingChanged(isAwaiting);
}

void DeviceReturn::setEnabled(bool enabled)
{
    m_settings.setValue(EnabledKey, enabled);
    updateAwaiting();
}

bool DeviceReturn::isEnabled() const
{
    return m_settings.value(EnabledKey, true).toBool();
}

void DeviceReturn::setAcquiringAgain(bool acquiring)
{
    m_settings.setValue(AcquiringKey, acquiring);
}

bool DeviceReturn::isAcquiringAgain() const
{
    return m_settings.value(AcquiringKey, true).toBool();
}
