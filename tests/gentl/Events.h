// SPDX-License-Identifier: MIT
#pragma once

#include <deque>
#include <functional>
#include <optional>

#include "tests/gentl/Answer.h"
#include "tests/gentl/Module.h"

namespace TestProducer {

/// A kind of event that somebody waits for.
class Event : public Module
{
public:
    /// The events that wait, as the data that EventGetData() hands out; a stream's new buffers come from its output
    /// queue.
    struct Queue
    {
        std::function<std::size_t()> count;
        std::function<std::string()> take;
        std::function<void()> flush;
    };

    Event(std::shared_ptr<Module> source, GenTL::EVENT_TYPE type, std::optional<Queue> queue);

    GenTL::EVENT_TYPE type() const { return m_type; }
    void post(std::string data) { m_posted.push_back(std::move(data)); }
    std::size_t waiting() const { return m_queue.count(); }
    std::string take();
    void flush() { m_queue.flush(); }

    /// Ends the waiting of one thread, now or at its next call.
    void kill() { m_isKilled = true; }
    bool consumeKill() { return std::exchange(m_isKilled, false); }
    bool isKilled() const { return m_isKilled; }
    bool isClosed() const { return m_isClosed; }
    void closed() override { m_isClosed = true; }
    bool isToBeClosed() const override { return false; }

    std::optional<Fact> info(GenTL::EVENT_INFO_CMD command) const;

private:
    const GenTL::EVENT_TYPE m_type;
    std::deque<std::string> m_posted;
    Queue m_queue;
    std::uint64_t m_fired = 0;
    bool m_isKilled = false;
    bool m_isClosed = false;
};

/// What EventGetDataInfo() tells of data that EventGetData() handed out; nothing for commands that it does not know.
std::optional<Fact> eventDataInfo(GenTL::EVENT_TYPE type, const std::string &data, GenTL::EVENT_DATA_INFO_CMD command);
/// The data of an event of the remote device: its number, then its value.
std::string remoteEventData(std::uint64_t number, const std::string &value);

} // namespace TestProducer
