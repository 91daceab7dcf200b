// SPDX-License-Identifier: MIT
#pragma once

#include <functional>
#include <vector>

#include "Viewer/MeteredApplication.h"

/// The application, which tells of each event of the GUI thread that keeps it from its event loop for too long.
class EventWatch : public MeteredApplication
{
    Q_OBJECT

public:
    /// Told of an event that took longer than its bound, and how long this thread computed meanwhile, in ms.
    using Report = std::function<void(const QString &event, int taken, int computed)>;

    using MeteredApplication::MeteredApplication;

    /// From now on, in ms; time in which other programs had the processors does not count. Events that may lead to a
    /// write of the panel, input and what was queued, may take `waits` more.
    void setBounds(int bound, int waits, Report report);
    /// Its events, and those of its children, are the driver's own and not measured; null: there is none.
    void setDriver(const QObject *driver) { m_driver = driver; }

    bool notify(QObject *receiver, QEvent *event) override;

protected:
    void eventBegins(const QObject &receiver, const QEvent &event) override;
    void eventEnds(double longest) override;

private:
    struct Running
    {
        QString name;
        bool mayWait;
        qint64 computed; ///< ns of the thread before
        qint64 delayed; ///< the same, waiting for a processor
    };

    std::vector<Running> m_running;
    Report m_report;
    const QObject *m_driver = nullptr;
    int m_bound = 0;
    int m_waits = 0;
};
