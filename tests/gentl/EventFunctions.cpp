// SPDX-License-Identifier: MIT
// The functions of events.
#include <chrono>
#include <cstring>

#include "tests/gentl/Call.h"

using namespace TestProducer;

namespace {

bool canRaise(const Module &source, GenTL::EVENT_TYPE type)
{
    switch (type) {
    case GenTL::EVENT_NEW_BUFFER:
        return dynamic_cast<const Stream *>(&source) != nullptr;
    case GenTL::EVENT_FEATURE_INVALIDATE:
    case GenTL::EVENT_FEATURE_CHANGE:
        return dynamic_cast<const Port *>(&source) != nullptr;
    case GenTL::EVENT_REMOTE_DEVICE:
        return dynamic_cast<const LocalDevice *>(&source) != nullptr;
    default:
        return false;
    }
}

/// Until there is an event, or the waiting is over.
void await(World &world, Lock &lock, Event &event, std::uint64_t timeout)
{
    const auto isOver = [&event] { return event.isClosed() || event.isKilled() || event.waiting() > 0; };
    if (timeout == GenTL::GENTL_INFINITE)
        world.changed.wait(lock, isOver);
    else
        world.changed.wait_for(lock, std::chrono::milliseconds(timeout), isOver);
    require(!event.isClosed() && !event.consumeKill(), GenTL::GC_ERR_ABORT, "the waiting was ended");
    require(event.waiting() > 0, GenTL::GC_ERR_TIMEOUT, "there was no event");
}

} // namespace

GenTL::GC_ERROR GenTL::GCRegisterEvent(EVENTSRC_HANDLE hEventSrc, EVENT_TYPE iEventID, EVENT_HANDLE *phEvent)
{
    return call("GCRegisterEvent", std::uint64_t(iEventID), [&](World &world) {
        const auto source = world.handles.get<Module>(hEventSrc);
        require(canRaise(*source, iEventID), GC_ERR_NOT_IMPLEMENTED, "the module has no such events");
        require(!world.event(source.get(), iEventID), GC_ERR_RESOURCE_IN_USE, "the event is registered already");
        std::optional<Event::Queue> queue;
        if (const auto stream = std::dynamic_pointer_cast<Stream>(source); stream && iEventID == EVENT_NEW_BUFFER)
            queue = stream->newBuffers();
        answerHandle(phEvent, world.handles.add(std::make_shared<Event>(source, iEventID, queue)));
    });
}

GenTL::GC_ERROR GenTL::GCUnregisterEvent(EVENTSRC_HANDLE hEventSrc, EVENT_TYPE iEventID)
{
    return call("GCUnregisterEvent", std::uint64_t(iEventID), [&](World &world, Lock &lock) {
        const auto event = world.event(world.handles.get<Module>(hEventSrc).get(), iEventID);
        require(event != nullptr, GC_ERR_NOT_AVAILABLE, "the event is not registered");
        world.close(event, lock);
    });
}

GenTL::GC_ERROR GenTL::EventGetData(EVENT_HANDLE hEvent, void *pBuffer, std::size_t *piSize, std::uint64_t iTimeout)
{
    return call("EventGetData", [&](World &world, Lock &lock) {
        const auto event = world.handles.get<Event>(hEvent);
        require(pBuffer && piSize, GC_ERR_INVALID_PARAMETER, "there is no place for the data");
        require(event->type() != EVENT_NEW_BUFFER || *piSize >= sizeof(EVENT_NEW_BUFFER_DATA), GC_ERR_BUFFER_TOO_SMALL,
                "the buffer is too small");
        await(world, lock, *event, iTimeout);
        const std::string data = event->take();
        require(*piSize >= data.size(), GC_ERR_BUFFER_TOO_SMALL, "the buffer is too small");
        std::memcpy(pBuffer, data.data(), data.size());
        *piSize = data.size();
    });
}

GenTL::GC_ERROR GenTL::EventGetDataInfo(EVENT_HANDLE hEvent, const void *pInBuffer, std::size_t iInSize,
                                        EVENT_DATA_INFO_CMD iInfoCmd, INFO_DATATYPE *piType, void *pOutBuffer,
                                        std::size_t *piOutSize)
{
    return call("EventGetDataInfo", std::uint64_t(iInfoCmd), [&](World &world) {
        const auto event = world.handles.get<Event>(hEvent);
        require(pInBuffer, GC_ERR_INVALID_PARAMETER, "there are no data");
        const std::string data(static_cast<const char *>(pInBuffer), iInSize);
        answer({piType, pOutBuffer, piOutSize}, known(eventDataInfo(event->type(), data, iInfoCmd)));
    });
}

GenTL::GC_ERROR GenTL::EventGetInfo(EVENT_HANDLE hEvent, EVENT_INFO_CMD iInfoCmd, INFO_DATATYPE *piType, void *pBuffer,
                                    std::size_t *piSize)
{
    return call("EventGetInfo", std::uint64_t(iInfoCmd), [&](World &world) {
        answer({piType, pBuffer, piSize}, known(world.handles.get<Event>(hEvent)->info(iInfoCmd)));
    });
}

GenTL::GC_ERROR GenTL::EventFlush(EVENT_HANDLE hEvent)
{
    return call("EventFlush", [&](World &world) { world.handles.get<Event>(hEvent)->flush(); });
}

GenTL::GC_ERROR GenTL::EventKill(EVENT_HANDLE hEvent)
{
    return call("EventKill", [&](World &world) {
        world.handles.get<Event>(hEvent)->kill();
        world.changed.notify_all();
    });
}
