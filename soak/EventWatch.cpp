// SPDX-License-Identifier: MIT
#include "soak/EventWatch.h"

#include <QThread>

#include <QEvent>
#include <QFile>
#include <QMetaEnum>

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

/// That this thread could run but had to leave the processors to others, in ns. 0 where the kernel does not tell.
qint64 runDelay()
{
    static QFile file(QStringLiteral("/proc/thread-self/schedstat"));
    if (!file.isOpen() && !file.open(QIODevice::ReadOnly | QIODevice::Unbuffered))
        return 0;
    file.seek(0);
    const QList<QByteArray> fields = file.readAll().split(' '); // time on a processor, time waited for one, turns
    return fields.size() > 1 ? fields[1].toLongLong() : 0;
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

void EventWatch::setBounds(int bound, int waits, Report report)
{
    m_bound = bound;
    m_waits = waits;
    m_report = std::move(report);
}

bool EventWatch::notify(QObject *receiver, QEvent *event)
{
    const bool isOfDriver =
        QThread::currentThread() == thread() && m_driver && (receiver == m_driver || receiver->parent() == m_driver);
    return isOfDriver ? QApplication::notify(receiver, event) : MeteredApplication::notify(receiver, event);
}

/// The event, and who gets it, may be gone when it ends.
void EventWatch::eventBegins(const QObject &receiver, const QEvent &event)
{
    m_running.push_back({nameOf(receiver, event.type()), mayWait(event.type()), computedTime(), runDelay()});
}

void EventWatch::eventEnds(double longest)
{
    const Running event = m_running.back();
    m_running.pop_back();
    if (longest <= m_bound || !m_report)
        return;
    const int taken = int(longest) - int((runDelay() - event.delayed) / NanosecondsPerMillisecond);
    if (taken > m_bound + (event.mayWait ? m_waits : 0))
        m_report(event.name, taken, int((computedTime() - event.computed) / NanosecondsPerMillisecond));
}
