// SPDX-License-Identifier: MIT
#include "Host/AutomaticSearch.h"

#include "Host/KnownDevices.h"

namespace {

const QString EnabledKey = QStringLiteral("searchAutomatically");

} // namespace

AutomaticSearch::AutomaticSearch(KnownDevices &devices, QSettings &settings)
    : m_devices(devices), m_settings(settings), m_timer(this)
{
    m_timer.setSingleShot(true);
    m_timer.setObjectName(QStringLiteral("searchTimer"));
    connect(&m_timer, &QTimer::timeout, this, &AutomaticSearch::search);
    connect(&m_devices, &KnownDevices::searched, this, &AutomaticSearch::schedule);
}

void AutomaticSearch::start()
{
    m_isStarted = true;
    schedule();
}

void AutomaticSearch::setEnabled(bool enabled)
{
    m_settings.setValue(EnabledKey, enabled);
    schedule();
}

bool AutomaticSearch::isEnabled() const
{
    return m_settings.value(EnabledKey, true).toBool();
}

void AutomaticSearch::setPaused(bool paused)
{
    if (m_isPaused == paused)
        return;
    m_isPaused = paused;
    schedule();
    if (m_timer.isActive())
        m_timer.start(HurriedInterval); // much may have changed meanwhile
}

void AutomaticSearch::setHurried(bool hurried)
{
    if (m_isHurried == hurried)
        return;
    m_isHurried = hurried;
    schedule();
}

void AutomaticSearch::schedule()
{
    if (m_isStarted && !m_isPaused && isEnabled())
        m_timer.start(m_isHurried ? HurriedInterval : Interval);
    else
        m_timer.stop();
}

void AutomaticSearch::search()
{
    if (m_devices.isAnyOpening())
        schedule();
    else
        m_devices.searchQuietly();
}
