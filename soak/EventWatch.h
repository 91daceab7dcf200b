// SPDX-License-Identifier: MIT
#pragma once

#include <QApplication>
#include <QElapsedTimer>

#include <functional>
#include <vector>

/// The application, which measures how long each event of the GUI thread takes, with all that it sends on the way. What
/// an event loop inside it handles, and its waiting for more, counts for itself.
class EventWatch : public QApplication
{
    Q_OBJECT

public:
    /// Told of an event that took longer than its bound, and how long this thread computed meanwhile, in ms.
    using Report = std::function<void(const QString &event, int taken, int computed)>;

    EventWatch(int &argc, char **argv);

    /// From now on, in ms. Events that may lead to a write of the panel, input and what was queued, may take `waits`
    /// more.
    void setBounds(int bound, int waits, Report report);
    /// Of any event, in ms.
    int longest() const { return m_longest; }
    /// Its events, and those of its children, are the driver's own and not measured; null: there is none.
    void setDriver(const QObject *driver) { m_driver = driver; }

    bool notify(QObject *receiver, QEvent *event) override;

private:
    struct Running
    {
        int loopLevel;
        QElapsedTimer clock;
        qint64 computed; ///< ns of the thread before
        qint64 foreign; ///< ns that loops inside have taken
    };

    bool isOfDriver(const QObject *receiver) const;
    void finish(const Running &event, const QString &name, QEvent::Type type);

    std::vector<Running> m_running;
    Report m_report;
    const QObject *m_driver = nullptr;
    QElapsedTimer m_idle;
    int m_bound = 0;
    int m_waits = 0;
    int m_longest = 0;
};
