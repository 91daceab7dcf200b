// SPDX-License-Identifier: MIT
#pragma once

#include <QAbstractEventDispatcher>
#include <QApplication>
#include <QThread>

#include "Viewer/StallMeter.h"

/// An application that measures the events of its GUI thread.
class MeteredApplication : public QApplication
{
public:
    MeteredApplication(int &argc, char **argv) : QApplication(argc, argv)
    {
        auto *const dispatcher = QAbstractEventDispatcher::instance();
        connect(dispatcher, &QAbstractEventDispatcher::aboutToBlock, this, [this] { m_meter.pause(now()); });
        connect(dispatcher, &QAbstractEventDispatcher::awake, this, [this] { m_meter.resume(now()); });
    }

    ~MeteredApplication() override { QAbstractEventDispatcher::instance()->disconnect(this); }

    /// The application's meter; null where the application is another one.
    static StallMeter *meter()
    {
        auto *const metered = dynamic_cast<MeteredApplication *>(QCoreApplication::instance());
        return metered ? &metered->m_meter : nullptr;
    }

    bool notify(QObject *receiver, QEvent *event) override
    {
        const int level = QThread::currentThread()->loopLevel();
        if (QThread::currentThread() != thread() || m_meter.isInner(level))
            return QApplication::notify(receiver, event);
        const Event measured(m_meter, level);
        return QApplication::notify(receiver, event);
    }

private:
    /// Nothing that is thrown leaves an event open.
    class Event
    {
    public:
        Event(StallMeter &meter, int level) : m_meter(meter) { m_meter.begin(level, now()); }
        ~Event() { m_meter.end(now()); }
        Event(const Event &) = delete;
        Event &operator=(const Event &) = delete;

    private:
        StallMeter &m_meter;
    };

    static StallMeter::Clock::time_point now() { return StallMeter::Clock::now(); }

    StallMeter m_meter;
};
