// SPDX-License-Identifier: MIT
#include "Host/SessionHold.h"

SessionHold::SessionHold(DeviceSessions &sessions, const QString &id)
    : m_sessions(&sessions), m_id(id), m_isHolding(sessions.hold(id))
{ }

SessionHold::~SessionHold()
{
    if (m_sessions && m_isHolding)
        m_sessions->release(m_id);
}

bool SessionHold::isEnding() const
{
    return m_sessions && m_isHolding && m_sessions->isEndAwaited(m_id);
}
