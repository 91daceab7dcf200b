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
        const Measured measured(*this, *receiver, *event, level);
        return QApplication::notify(receiver, event);
    }

protected:
    /// An event that is no inner one begins.
    virtual void eventBegins(const QObject &, const QEvent &) { }
    /// The one that began last ends; `longest` of its stretches, in milliseconds.
    virtual void eventEnds(double) { }

private:
    /// Nothing that is thrown leaves an event open.
    class Measured
    {
    public:
        Measured(MeteredApplication &application, const QObject &receiver, const QEvent &event, int level)
            : m_application(application)
        {
            m_application.eventBegins(receiver, event);
            m_application.m_meter.begin(level, now());
        }
        ~Measured() { m_application.eventEnds(m_application.m_meter.end(now())); }
        Measured(const Measured &) = delete;
        Measured &operator=(const Measured &) = delete;

    private:
        MeteredApplication &m_application;
    };

    static StallMeter::Clock::time_point now() { return StallMeter::Clock::now(); }

    StallMeter m_meter;
};
