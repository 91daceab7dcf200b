// SPDX-License-Identifier: MIT
#include "tests/gentl/Faults.h"

#include <algorithm>
#include <chrono>
#include <cstdlib>
#include <thread>

#include "tests/gentl/Failure.h"

namespace TestProducer {

namespace {

thread_local CalledFunction currentCall;

struct KindName
{
    const char *name;
    Faults::Kind kind;
    bool hasValue;
};

constexpr KindName KindNames[] = {
    {"fail", Faults::Kind::Fail, true},    {"lack", Faults::Kind::Lack, false},
    {"slow", Faults::Kind::Slow, true},    {"hang", Faults::Kind::Hang, false},
    {"crash", Faults::Kind::Crash, false}, {"short", Faults::Kind::Short, true},
    {"align", Faults::Kind::Align, true},  {"size", Faults::Kind::Size, true},
    {"grow", Faults::Kind::Grow, false},   {"unterminated", Faults::Kind::Unterminated, false},
    {"type", Faults::Kind::Type, true},    {"value", Faults::Kind::Value, true},
    {"text", Faults::Kind::Text, false},
};

std::uint64_t toNumber(const std::string &text)
{
    return text.front() == '-' ? std::uint64_t(std::strtoll(text.c_str(), nullptr, 0))
                               : std::strtoull(text.c_str(), nullptr, 0);
}

/// The words from the third on, with their escapes.
std::string toText(const std::vector<std::string> &words)
{
    std::string text;
    for (size_t i = 2; i < words.size(); ++i)
        text += (i > 2 ? " " : "") + words[i];
    for (size_t at = 0; (at = text.find("\\x", at)) != std::string::npos; ++at)
        text.replace(at, 4, 1, char(std::stoi(text.substr(at + 2, 2), nullptr, 16)));
    return text;
}

} // namespace

Faults &Faults::instance()
{
    static Faults *const TheFaults = new Faults; // threads may hang in it when the process ends
    return *TheFaults;
}

bool Faults::add(const std::vector<std::string> &words)
{
    const auto known = std::find_if(std::begin(KindNames), std::end(KindNames),
                                    [&words](const KindName &entry) { return words[0] == entry.name; });
    if (known == std::end(KindNames) || words.size() < (known->hasValue ? 3 : 2))
        return false;
    Fault fault{known->kind, words[1], {}, 0, {}, -1};
    if (const size_t colon = fault.function.find(':'); colon != std::string::npos) {
        fault.command = toNumber(fault.function.substr(colon + 1));
        fault.function.resize(colon);
    }
    size_t next = 2;
    if (known->hasValue)
        fault.value = toNumber(words[next++]);
    if (known->kind == Kind::Text)
        fault.words = toText(words);
    else if (words.size() > next)
        fault.times = int(toNumber(words[next]));
    const std::lock_guard<std::mutex> hold(m_mutex);
    m_faults.push_back(fault);
    return true;
}

void Faults::clear()
{
    release();
    const std::lock_guard<std::mutex> hold(m_mutex);
    m_faults.clear();
    m_calls.clear();
}

void Faults::release()
{
    const std::lock_guard<std::mutex> hold(m_mutex);
    ++m_releases;
    m_faults.erase(
        std::remove_if(m_faults.begin(), m_faults.end(), [](const Fault &fault) { return fault.kind == Kind::Hang; }),
        m_faults.end());
    m_released.notify_all();
}

std::uint64_t Faults::calls(const std::string &function) const
{
    const std::lock_guard<std::mutex> hold(m_mutex);
    const auto found = m_calls.find(function);
    return found == m_calls.end() ? 0 : found->second;
}

std::optional<Faults::Fault> Faults::hit(Kind kind, const CalledFunction &function)
{
    const std::lock_guard<std::mutex> hold(m_mutex);
    for (Fault &fault : m_faults) {
        const bool matches = fault.kind == kind && fault.times != 0 && fault.function == function.name
            && fault.command.value_or(function.command) == function.command;
        if (!matches)
            continue;
        fault.times -= fault.times > 0 ? 1 : 0;
        return fault;
    }
    return {};
}

void Faults::hang()
{
    std::unique_lock<std::mutex> hold(m_mutex);
    m_released.wait(hold, [this, before = m_releases] { return m_releases != before; });
}

void Faults::enter(const CalledFunction &function)
{
    currentCall = function;
    {
        const std::lock_guard<std::mutex> hold(m_mutex);
        ++m_calls[function.name];
    }
    if (const auto slow = hit(Kind::Slow, function))
        std::this_thread::sleep_for(std::chrono::milliseconds(slow->value));
    if (hit(Kind::Hang, function))
        hang();
    if (hit(Kind::Crash, function))
        std::abort();
    if (hit(Kind::Lack, function))
        throw Failure{GenTL::GC_ERR_NOT_IMPLEMENTED, function.name + " is not implemented"};
    if (const auto failing = hit(Kind::Fail, function))
        throw Failure{GenTL::GC_ERROR(std::int64_t(failing->value)), function.name + " fails as the script says"};
}

std::optional<std::uint64_t> Faults::number(Kind kind)
{
    const auto fault = hit(kind, currentCall);
    return fault ? std::optional<std::uint64_t>(fault->value) : std::nullopt;
}

std::optional<std::string> Faults::text()
{
    const auto fault = hit(Kind::Text, currentCall);
    return fault ? std::optional<std::string>(fault->words) : std::nullopt;
}

} // namespace TestProducer
