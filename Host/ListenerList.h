// SPDX-License-Identifier: MIT
#pragma once

#include <algorithm>
#include <vector>

#include <QCoreApplication>
#include <QMutex>
#include <QMutexLocker>
#include <QThread>
#include <QWaitCondition>

/// The registered listeners of one kind of host event. Listeners are not owned.
///
/// Calls may run on any thread. No lock is held while a listener runs, so a listener may wait for the GUI
/// thread, register and unregister.
template <class Listener>
class ListenerList
{
public:
    void add(Listener *listener)
    {
        const QMutexLocker lock(&mutex);
        if (listener && !contains(listener))
            listeners.push_back(listener);
    }

    /// After the return no call to `listener` is running on another thread and none will follow. A call that
    /// waits for the GUI thread is served from here when this is the GUI thread.
    void remove(Listener *listener)
    {
        QMutexLocker lock(&mutex);
        listeners.erase(std::remove(listeners.begin(), listeners.end(), listener), listeners.end());
        while (runningElsewhere(listener)) {
            lock.unlock();
            QCoreApplication::sendPostedEvents(nullptr, QEvent::MetaCall);
            lock.relock();
            if (runningElsewhere(listener))
                callEnded.wait(&mutex, 5);
        }
    }

    /// Calls `call(listener)` for every listener that is still registered when its turn comes.
    template <class Call>
    void forEach(Call call)
    {
        for (Listener *listener : snapshot()) {
            if (!begin(listener))
                continue;
            call(listener);
            end(listener);
        }
    }

private:
    struct Running
    {
        Listener *listener;
        QThread *thread;
        bool operator==(const Running &other) const { return listener == other.listener && thread == other.thread; }
    };

    bool contains(Listener *listener) const
    {
        return std::find(listeners.begin(), listeners.end(), listener) != listeners.end();
    }

    bool runningElsewhere(Listener *listener) const
    {
        return std::any_of(running.begin(), running.end(), [listener](const Running &one) {
            return one.listener == listener && one.thread != QThread::currentThread();
        });
    }

    std::vector<Listener *> snapshot()
    {
        const QMutexLocker lock(&mutex);
        return listeners;
    }

    bool begin(Listener *listener)
    {
        const QMutexLocker lock(&mutex);
        if (!contains(listener))
            return false;
        running.push_back({listener, QThread::currentThread()});
        return true;
    }

    void end(Listener *listener)
    {
        const QMutexLocker lock(&mutex);
        running.erase(std::find(running.begin(), running.end(), Running{listener, QThread::currentThread()}));
        callEnded.wakeAll();
    }

    QMutex mutex;
    QWaitCondition callEnded;
    std::vector<Listener *> listeners;
    std::vector<Running> running;
};
