// SPDX-License-Identifier: MIT
#pragma once

#include <chrono>
#include <memory>

#include "Devices/gentl/ProducerEvent.h"

/// Takes events on a thread of its own from construction to destruction. Whatever the producer does, neither takes
/// long: a thread that does not come back is left alone, with all that it needs.
class EventPump
{
public:
    /// What is done, all of it on the thread. It lives until both the pump and the thread have let go of it.
    class Work
    {
    public:
        virtual ~Work() = default;
        /// Prepares everything. What it throws arrives where the pump is made.
        virtual ProducerEvent &begin() = 0;
        virtual void take(const QByteArray &data) = 0;
        /// Waiting fails again and again; told once.
        virtual void fail(GenTL::GC_ERROR code) { Q_UNUSED(code) }
        /// Ends what begin() has begun, however far it came. No one waits in the event any more.
        virtual void end() = 0;
    };

    /// Waits for begin(). Throws what that throws, and a TimeoutException when it takes longer than the limit.
    explicit EventPump(std::shared_ptr<Work> work, std::chrono::milliseconds startLimit = std::chrono::seconds(3));
    /// Waits for end(), half a second at most.
    ~EventPump();

    EventPump(const EventPump &) = delete;
    EventPump &operator=(const EventPump &) = delete;

private:
    class Runner;
    std::shared_ptr<Runner> m_runner;
};
