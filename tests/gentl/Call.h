// SPDX-License-Identifier: MIT
#pragma once

#include <exception>
#include <optional>
#include <type_traits>

#include "tests/gentl/Faults.h"
#include "tests/gentl/World.h"

namespace TestProducer {

/// The last failure of a thread.
struct LastError
{
    GenTL::GC_ERROR code = GenTL::GC_ERR_SUCCESS;
    std::string words = "no error";
};
LastError &lastError();

/// Does what an exported function does: lets the script spoil it, turns failures into codes.
template <class Body>
GenTL::GC_ERROR guardedCall(const CalledFunction &function, Body body)
{
    try {
        Faults::instance().enter(function);
        body();
        return GenTL::GC_ERR_SUCCESS;
    } catch (const Failure &failure) {
        lastError() = {failure.code, function.name + ": " + failure.words};
    } catch (const std::exception &failure) { // of memory that there is not
        lastError() = {GenTL::GC_ERR_OUT_OF_MEMORY, function.name + ": " + failure.what()};
    }
    return lastError().code;
}

/// As guardedCall(), with the world locked, which must be initialised. `body` is called with the world, and with the
/// lock if it wants it.
template <class Body>
GenTL::GC_ERROR call(const char *name, std::uint64_t command, Body body)
{
    return guardedCall({name, command}, [&body] {
        World &all = world();
        Lock lock(all.mutex);
        require(all.isInitialised, GenTL::GC_ERR_NOT_INITIALIZED, "GCInitLib was not called");
        if constexpr (std::is_invocable_v<Body, World &, Lock &>)
            body(all, lock);
        else
            body(all);
    });
}

template <class Body>
GenTL::GC_ERROR call(const char *name, Body body)
{
    return call(name, 0, body);
}

/// A fact, or the failure for a command that nobody knows.
inline Fact known(std::optional<Fact> fact)
{
    require(fact.has_value(), GenTL::GC_ERR_NOT_IMPLEMENTED, "the info command is not known");
    return *fact;
}

/// Writes a handle.
inline void answerHandle(void **place, void *handle)
{
    require(place, GenTL::GC_ERR_INVALID_PARAMETER, "there is no place for the handle");
    *place = handle;
}

/// The element of a list with that index.
template <class List>
const auto &at(const List &list, std::uint32_t index)
{
    require(index < list.size(), GenTL::GC_ERR_INVALID_INDEX, "there is no such index");
    return list[index];
}

} // namespace TestProducer
