// SPDX-License-Identifier: MIT
#include "tests/gentl/Events.h"

#include <cstring>
#include <utility>

using namespace GenTL;

namespace TestProducer {

Event::Event(std::shared_ptr<Module> source, EVENT_TYPE eventType, std::optional<Queue> queue)
    : Module(std::move(source), "an event"), m_type(eventType),
      m_queue(queue ? *queue
                    : Queue{[this] { return m_posted.size(); },
                            [this] {
                                std::string first = std::move(m_posted.front());
                                m_posted.pop_front();
                                return first;
                            },
                            [this] { m_posted.clear(); }})
{ }

std::string Event::take()
{
    ++m_fired;
    return m_queue.take();
}

std::optional<Fact> Event::info(EVENT_INFO_CMD command) const
{
    constexpr std::uint64_t Largest = 256;
    switch (command) {
    case EVENT_EVENT_TYPE:
        return word(m_type);
    case EVENT_NUM_IN_QUEUE:
        return size(waiting());
    case EVENT_NUM_FIRED:
        return longWord(m_fired + waiting());
    case EVENT_SIZE_MAX:
        return size(m_type == EVENT_NEW_BUFFER ? sizeof(EVENT_NEW_BUFFER_DATA) : Largest);
    case EVENT_INFO_DATA_SIZE_MAX:
        return size(Largest);
    default:
        return {};
    }
}

std::string remoteEventData(std::uint64_t number, const std::string &value)
{
    return std::string(reinterpret_cast<const char *>(&number), sizeof number) + value;
}

namespace {

/// Of an event of the remote device.
std::optional<Fact> remoteDataInfo(const std::string &data, EVENT_DATA_INFO_CMD command)
{
    std::uint64_t numberOfEvent = 0;
    require(data.size() >= sizeof numberOfEvent, GC_ERR_INVALID_PARAMETER, "these are no event data");
    std::memcpy(&numberOfEvent, data.data(), sizeof numberOfEvent);
    char hex[17];
    std::snprintf(hex, sizeof hex, "%llX", static_cast<unsigned long long>(numberOfEvent));
    switch (command) {
    case EVENT_DATA_ID:
        return text(hex);
    case EVENT_DATA_NUMID:
        return longWord(numberOfEvent);
    case EVENT_DATA_VALUE:
        return Fact{INFO_DATATYPE_BUFFER, 0, data.substr(sizeof numberOfEvent)};
    default:
        return {};
    }
}

/// Of a new buffer.
std::optional<Fact> bufferDataInfo(const std::string &data, EVENT_DATA_INFO_CMD command)
{
    EVENT_NEW_BUFFER_DATA buffer{};
    require(data.size() == sizeof buffer, GC_ERR_INVALID_PARAMETER, "these are no event data");
    std::memcpy(&buffer, data.data(), sizeof buffer);
    if (command == EVENT_DATA_ID)
        return address(buffer.BufferHandle);
    return command == EVENT_DATA_VALUE ? std::optional<Fact>(address(buffer.pUserPointer)) : std::nullopt;
}

} // namespace

std::optional<Fact> eventDataInfo(EVENT_TYPE type, const std::string &data, EVENT_DATA_INFO_CMD command)
{
    if (type == EVENT_NEW_BUFFER)
        return bufferDataInfo(data, command);
    if (type == EVENT_REMOTE_DEVICE)
        return remoteDataInfo(data, command);
    return command == EVENT_DATA_ID ? std::optional<Fact>(text(data.c_str())) : std::nullopt; // a feature's name
}

} // namespace TestProducer
