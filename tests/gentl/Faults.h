// SPDX-License-Identifier: MIT
#pragma once

#include <condition_variable>
#include <cstdint>
#include <map>
#include <mutex>
#include <optional>
#include <string>
#include <vector>

namespace TestProducer {

/// A function that was called, and what for: an info command, a register's address ...
struct CalledFunction
{
    std::string name;
    std::uint64_t command = 0;
};

/// What is to go wrong in which function. `FUNCTION` stands for its name, or for NAME:COMMAND when it is to go wrong
/// for one info command, one address, one type of event or, with IFUpdateDeviceList, one interface (0: GEV-IF,
/// 1: CXP-IF) only. Each line may end in a number of times.
///     fail FUNCTION CODE      returns that code
///     lack FUNCTION           as fail FUNCTION -1003: not implemented
///     slow FUNCTION MS        takes that much longer
///     hang FUNCTION           does not return before "release"
///     crash FUNCTION          ends the process
///     short FUNCTION BYTES    transfers no more than that, and calls it a success
///     align FUNCTION BYTES    addresses and lengths must be multiples of that
///     size FUNCTION BYTES     tells this when it is asked for the size
///     grow FUNCTION           needs more room than it told when it was asked for the size
///     unterminated FUNCTION   texts come without their final zero
///     type FUNCTION TYPE      numbers come as that INFO_DATATYPE
///     value FUNCTION NUMBER   tells that number
///     text FUNCTION WORDS     tells that text; \xHH is a byte (no number of times)
/// Thread-safe.
class Faults
{
public:
    enum class Kind { Fail, Lack, Slow, Hang, Crash, Short, Align, Size, Grow, Unterminated, Type, Value, Text };

    static Faults &instance();

    /// False when the line is none of the above.
    bool add(const std::vector<std::string> &words);
    void clear();
    /// Ends all hanging, now and later.
    void release();
    /// How often a function was called.
    std::uint64_t calls(const std::string &function) const;

    /// The thread calls a function: whatever delays it or lets it fail happens here.
    void enter(const CalledFunction &function);
    /// Whether this is to go wrong in the function that the thread called last, with the fault's number.
    std::optional<std::uint64_t> number(Kind kind);
    std::optional<std::string> text();

private:
    struct Fault
    {
        Kind kind;
        std::string function;
        std::optional<std::uint64_t> command;
        std::uint64_t value = 0;
        std::string words;
        int times = -1; ///< that are left; negative: always
    };

    /// The fault that hits this call, which counts as one of its times.
    std::optional<Fault> hit(Kind kind, const CalledFunction &function);
    void hang();

    mutable std::mutex m_mutex;
    std::condition_variable m_released;
    std::uint64_t m_releases = 0;
    std::vector<Fault> m_faults;
    std::map<std::string, std::uint64_t> m_calls;
};

} // namespace TestProducer
