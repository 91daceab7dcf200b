// SPDX-License-Identifier: MIT
#pragma once

#include <chrono>
#include <condition_variable>
#include <functional>
#include <map>
#include <memory>
#include <mutex>
#include <stdexcept>

/// Hands out one object for each key, for as long as somebody holds it. Whoever asks while it is being made or
/// destroyed waits for that, but not for ever. Thread-safe; the objects may outlive this.
template <class Key, class Object>
class SharedObjects
{
public:
    using Make = std::function<std::unique_ptr<Object>()>;
    static constexpr std::chrono::seconds BusyLimit{5};

    /// Throws what `make` throws, and a runtime_error when the object is neither ready nor gone within the limit.
    std::shared_ptr<Object> get(const Key &key, const Make &make)
    {
        std::unique_lock<std::mutex> lock(m_state->mutex);
        std::shared_ptr<Object> object;
        const auto isSettled = [&] {
            const auto entry = m_state->entries.find(key);
            const bool isFree = entry == m_state->entries.end();
            object = isFree ? nullptr : entry->second.object.lock();
            return isFree || object;
        };
        if (!m_state->changed.wait_for(lock, BusyLimit, isSettled))
            throw std::runtime_error("it is still being opened or closed in this program");
        if (object)
            return object;
        const int number = ++m_state->lastNumber;
        m_state->entries[key].number = number;
        lock.unlock();
        try {
            object = std::shared_ptr<Object>(make().release(), Retire{m_state, key, number});
        } catch (...) {
            m_state->remove(key, number);
            throw;
        }
        m_state->settle(key, number, object);
        return object;
    }

    /// The object if somebody holds it, else null.
    std::shared_ptr<Object> held(const Key &key) const
    {
        const std::lock_guard<std::mutex> lock(m_state->mutex);
        const auto entry = m_state->entries.find(key);
        return entry == m_state->entries.end() ? nullptr : entry->second.object.lock();
    }

    /// Who asks next gets a new object, whoever holds the old one.
    void forget(const Key &key)
    {
        const std::lock_guard<std::mutex> lock(m_state->mutex);
        m_state->entries.erase(key);
        m_state->changed.notify_all();
    }

private:
    struct Entry
    {
        int number = 0; ///< tells an object from its successor
        std::weak_ptr<Object> object;
    };

    struct State
    {
        std::mutex mutex; ///< guards what follows
        std::condition_variable changed;
        std::map<Key, Entry> entries;
        int lastNumber = 0;

        void settle(const Key &key, int number, const std::shared_ptr<Object> &object)
        {
            const std::lock_guard<std::mutex> lock(mutex);
            const auto entry = entries.find(key);
            if (entry != entries.end() && entry->second.number == number)
                entry->second.object = object;
            changed.notify_all();
        }

        void remove(const Key &key, int number)
        {
            const std::lock_guard<std::mutex> lock(mutex);
            const auto entry = entries.find(key);
            if (entry != entries.end() && entry->second.number == number)
                entries.erase(entry);
            changed.notify_all();
        }
    };

    /// Keeps the key taken until the object is destroyed.
    struct Retire
    {
        std::shared_ptr<State> state;
        Key key;
        int number;

        void operator()(Object *object) const
        {
            delete object;
            state->remove(key, number);
        }
    };

    std::shared_ptr<State> m_state = std::make_shared<State>();
};
