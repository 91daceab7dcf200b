// SPDX-License-Identifier: MIT
#pragma once

#include <GenApi/PersistenceDevice.h>

#include <exception>

namespace Persistence {

/// Calls a function of a node map. Ports throw what they like: everything becomes an outcome.
template <class Function>
Outcome guarded(Function function)
{
    try {
        function();
        return {Result::Done};
    } catch (const GenICam::TimeoutException &error) {
        return {Result::TimedOut, error.GetDescription()};
    } catch (const GenICam::GenericException &error) {
        return {Result::Refused, error.GetDescription()};
    } catch (const std::exception &error) {
        return {Result::Refused, error.what()};
    } catch (...) {
        return {Result::Refused, "an exception of an unknown kind"};
    }
}

} // namespace Persistence
