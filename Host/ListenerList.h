// SPDX-License-Identifier: MIT
#pragma once

#include <algorithm>
#include <chrono>
#include <condition_variable>
#include <mutex>
#include <thread>
#include <vector>

#include <QCoreApplication>

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
        const std::lock_guard<std::mutex> lock(m_mutex);
        if (listener && !contains(listener))
            m_listeners.push_back(listener);
    }

    /// After the return no call to `listener` is running on another thread and none will follow. A call that
    /// waits for the GUI thread is served from here when this is the GUI thread.
    void remove(Listener *listener)
    {
        std::unique_lock<std::mutex> lock(m_mutex);
        m_listeners.erase(std::remove(m_listeners.begin(), m_listeners.end(), listener), m_listeners.end());
        while (runningElsewhere(listener)) {
            lock.unlock();
            QCoreApplication::sendPostedEvents(nullptr, QEvent::MetaCall);
            lock.lock();
            if (runningElsewhere(listener))
                m_callEnded.wait_for(lock, ServingPause);
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
    static constexpr std::chrono::milliseconds ServingPause{5};

    struct Running
    {
        Listener *listener;
        std::thread::id thread;
        bool operator==(const Running &other) const { return listener == other.listener && thread == other.thread; }
    };

    bool contains(Listener *listener) const
    {
        return std::find(m_listeners.begin(), m_listeners.end(), listener) != m_listeners.end();
    }

    bool runningElsewhere(Listener *listener) const
    {
        return std::any_of(m_running.begin(), m_running.end(), [listener](const Running &one) {
            return one.listener == listener && one.thread != std::this_thread::get_id();
        });
    }

    std::vector<Listener *> snapshot()
    {
        const std::lock_guard<std::mutex> lock(m_mutex);
        return m_listeners;
    }

    bool begin(Listener *listener)
    {
        const std::lock_guard<std::mutex> lock(m_mutex);
        if (!contains(listener))
            return false;
        m_running.push_back({listener, std::this_thread::get_id()});
        return true;
    }

    void end(Listener *listener)
    {
        const std::lock_guard<std::mutex> lock(m_mutex);
        m_running.erase(std::find(m_running.begin(), m_running.end(), Running{listener, std::this_thread::get_id()}));
        m_callEnded.notify_all();
    }

    std::mutex m_mutex;
    std::condition_variable m_callEnded;
    std::vector<Listener *> m_listeners;
    std::vector<Running> m_running;
};
