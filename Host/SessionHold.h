// SPDX-License-Identifier: MIT
#pragma once

#include <QPointer>
#include <QString>

#include "Host/DeviceSessions.h"

/// Keeps a device open while its node map is used in slices between events: a loss or a closing that comes meanwhile
/// takes place when the last hold of the device ends. Of a device that is not ready it holds nothing. GUI thread.
class SessionHold
{
public:
    SessionHold(DeviceSessions &sessions, const QString &id);
    ~SessionHold();
    SessionHold(const SessionHold &) = delete;
    SessionHold &operator=(const SessionHold &) = delete;

    /// The device is ready, and was when this began: its node map may be used.
    bool isOpen() const { return m_isHolding && !isEnding(); }
    /// A loss or a closing waits for the end of this.
    bool isEnding() const;

private:
    const QPointer<DeviceSessions> m_sessions;
    const QString m_id;
    const bool m_isHolding;
};
