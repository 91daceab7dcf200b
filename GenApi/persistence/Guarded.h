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

/// Counts the accesses in a row that a device has not answered.
class Silence
{
public:
    void note(const Outcome &outcome) { m_inARow = outcome.result == Result::TimedOut ? m_inARow + 1 : 0; }
    /// Nothing more is to be tried.
    bool isLasting() const { return m_inARow >= Most; }

private:
    static constexpr int Most = 3;
    int m_inARow = 0;
};

} // namespace Persistence
