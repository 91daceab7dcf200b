// SPDX-License-Identifier: MIT
#pragma once

#include <functional>

#include <QObject>
#include <QStringList>

#include "Features/HandOver.h"
#include "Features/JobThread.h"

/// Raises device-list events on a thread of its own, in their order: whoever hears of one may wait for the GUI thread.
class DeviceAnnouncer : public QObject
{
    Q_OBJECT

public:
    using Raise = std::function<void(const QStringList &cards, const QStringList &cameras)>;

    /// `raise` is called on the announcing thread and may block until the GUI thread has handled the event.
    explicit DeviceAnnouncer(Raise raise, QObject *parent = nullptr);
    /// Drops what waits. The call that is under way is served: what it has queued for the GUI thread is handled here.
    ~DeviceAnnouncer() override;

    void announce(const QStringList &cards, const QStringList &cameras);
    /// True when every event has been handled and announced() was emitted, or is being emitted, for the last one.
    bool isIdle() const { return m_pending == 0; }

Q_SIGNALS:
    /// An event has been handled: what its listeners have queued for the GUI thread ran before. On the GUI thread.
    void announced();

private:
    void finish();

    Raise m_raise;
    int m_pending = 0;
    HandOver m_handOver;
    JobThread m_jobs;
};
