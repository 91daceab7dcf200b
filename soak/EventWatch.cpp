// SPDX-License-Identifier: MIT
#include "soak/EventWatch.h"

#include <QAbstractEventDispatcher>
#include <QEvent>
#include <QMetaEnum>
#include <QThread>

#include <ctime>

namespace {

constexpr qint64 NanosecondsPerMillisecond = 1'000'000;

/// By this thread, in ns.
qint64 computedTime()
{
    constexpr qint64 NanosecondsPerSecond = 1'000'000'000;
    timespec time{};
    clock_gettime(CLOCK_THREAD_CPUTIME_ID, &time);
    return qint64(time.tv_sec) * NanosecondsPerSecond + time.tv_nsec;
}

bool mayWait(QEvent::Type type)
{
    switch (type) {
    case QEvent::Paint:
    case QEvent::UpdateRequest:
    case QEvent::Resize:
    case QEvent::LayoutRequest:
    case QEvent::MouseMove:
    case QEvent::Wheel:
        return false;
    default:
        return true;
    }
}

QString nameOf(const QObject &receiver, QEvent::Type type)
{
    return QStringLiteral("%1 of %2 \"%3\"")
        .arg(QLatin1String(QMetaEnum::fromType<QEvent::Type>().valueToKey(type)),
             QLatin1String(receiver.metaObject()->className()), receiver.objectName());
}

} // namespace

EventWatch::EventWatch(int &argc, char **argv) : QApplication(argc, argv)
{
    const QAbstractEventDispatcher *dispatcher = QAbstractEventDispatcher::instance();
    connect(dispatcher, &QAbstractEventDispatcher::aboutToBlock, this, [this] { m_idle.start(); });
    connect(dispatcher, &QAbstractEventDispatcher::awake, this, [this] {
        if (!m_running.empty() && m_idle.isValid())
            m_running.back().foreign += m_idle.nsecsElapsed();
        m_idle.invalidate();
    });
}

void EventWatch::setBounds(int bound, int waits, Report report)
{
    m_bound = bound;
    m_waits = waits;
    m_report = std::move(report);
}

bool EventWatch::isOfDriver(const QObject *receiver) const
{
    return m_driver && (receiver == m_driver || receiver->parent() == m_driver);
}

bool EventWatch::notify(QObject *receiver, QEvent *event)
{
    if (QThread::currentThread() != thread() || isOfDriver(receiver))
        return QApplication::notify(receiver, event);
    const int level = QThread::currentThread()->loopLevel();
    if (!m_running.empty() && m_running.back().loopLevel == level)
        return QApplication::notify(receiver, event);
    const QEvent::Type type = event->type(); // the event, or who gets it, may be gone afterwards
    const QString name = nameOf(*receiver, type);
    m_running.push_back({level, {}, computedTime(), 0});
    m_running.back().clock.start();
    const bool result = QApplication::notify(receiver, event);
    const Running finished = m_running.back();
    m_running.pop_back();
    if (!m_running.empty())
        m_running.back().foreign += finished.clock.nsecsElapsed();
    finish(finished, name, type);
    return result;
}

void EventWatch::finish(const Running &event, const QString &name, QEvent::Type type)
{
    const int taken = int((event.clock.nsecsElapsed() - event.foreign) / NanosecondsPerMillisecond);
    m_longest = qMax(m_longest, taken);
    if (m_report && taken > m_bound + (mayWait(type) ? m_waits : 0))
        m_report(name, taken, int((computedTime() - event.computed) / NanosecondsPerMillisecond));
}
