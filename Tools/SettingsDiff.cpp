// SPDX-License-Identifier: MIT
#include "Tools/SettingsDiff.h"

#include <algorithm>
#include <charconv>
#include <cstdint>
#include <optional>
#include <string_view>
#include <unordered_map>
#include <unordered_set>

#include "Tools/BytesText.h"

namespace {

using Entries = std::vector<const Persistence::Entry *>;
using Ranks = std::unordered_map<std::string, std::size_t>; // of places

constexpr std::size_t LongestNumber = 64;

Ranks ranksOf(const Entries &entries)
{
    Ranks ranks;
    for (std::size_t i = 0; i < entries.size(); ++i)
        ranks.emplace(entries[i]->place(), i);
    return ranks;
}

SettingsDiff::State stateOf(const Persistence::Entry *left, const Persistence::Entry *right)
{
    if (!left)
        return SettingsDiff::State::OnlyRight;
    if (!right)
        return SettingsDiff::State::OnlyLeft;
    return isSameSettingText(left->value, right->value) ? SettingsDiff::State::Equal : SettingsDiff::State::Differs;
}

SettingsDiff::Row rowOf(const Persistence::Entry *left, const Persistence::Entry *right)
{
    const Persistence::Entry &any = left ? *left : *right;
    return {textOfBytes(any.feature),
            textOfBytes(displayText(any.selection)),
            left ? textOfBytes(left->value) : QString(),
            right ? textOfBytes(right->value) : QString(),
            stateOf(left, right),
            left,
            right};
}

template <class Number, class... Format>
std::optional<Number> wholeText(std::string_view text, Format... format)
{
    Number number{};
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number, format...);
    return error == std::errc() && end == text.data() + text.size() ? std::optional(number) : std::nullopt;
}

/// Digits without needless zeros in front.
bool isShortest(std::string_view digits)
{
    return !digits.empty() && digits.front() >= '0' && digits.front() <= '9'
        && (digits.size() == 1 || digits.front() != '0');
}

/// The bits of a whole number.
std::optional<std::uint64_t> wholeNumber(std::string_view text)
{
    if (text.substr(0, 2) == "0x" || text.substr(0, 2) == "0X")
        return wholeText<std::uint64_t>(text.substr(2), 16);
    const bool isNegative = text.substr(0, 1) == "-";
    if (!isShortest(text.substr(isNegative ? 1 : 0)))
        return std::nullopt;
    if (!isNegative)
        return wholeText<std::uint64_t>(text);
    const std::optional<std::int64_t> number = wholeText<std::int64_t>(text);
    return number ? std::optional(static_cast<std::uint64_t>(*number)) : std::nullopt;
}

std::optional<double> decimalNumber(std::string_view text)
{
    std::string_view digits = text.substr(0, text.find_first_of("eE"));
    digits.remove_prefix(digits.substr(0, 1) == "-" ? 1 : 0);
    const std::size_t point = digits.find('.');
    const bool endsWell = point == std::string_view::npos || (digits.back() != '0' && digits.back() != '.');
    return isShortest(digits.substr(0, point)) && endsWell ? wholeText<double>(text) : std::nullopt;
}

} // namespace

bool isSameSettingText(const std::string &left, const std::string &right)
{
    if (left == right)
        return true;
    if (left.size() > LongestNumber || right.size() > LongestNumber)
        return false;
    if (const std::optional<std::uint64_t> whole = wholeNumber(left); whole && wholeNumber(right))
        return whole == wholeNumber(right);
    const std::optional<double> number = decimalNumber(left);
    return number && number == decimalNumber(right);
}

std::size_t errorsIn(const Persistence::Settings &settings)
{
    return static_cast<std::size_t>(
        std::count_if(settings.problems.begin(), settings.problems.end(), [](const Persistence::Problem &problem) {
            return problem.severity == Persistence::Severity::Error;
        }));
}

std::vector<const Persistence::Entry *> lastEntries(const std::vector<Persistence::Entry> &entries)
{
    Entries last;
    std::unordered_set<std::string> known;
    for (auto entry = entries.rbegin(); entry != entries.rend(); ++entry) {
        if (known.insert(entry->place()).second)
            last.push_back(&*entry);
    }
    std::reverse(last.begin(), last.end());
    return last;
}

SettingsDiff::SettingsDiff(const Persistence::Settings &left, const Persistence::Settings &right)
{
    const Entries leftEntries = lastEntries(left.entries);
    const Entries rightEntries = lastEntries(right.entries);
    const Ranks leftRanks = ranksOf(leftEntries);
    const Ranks rightRanks = ranksOf(rightEntries);
    const auto addRightOnly = [&](std::size_t from) {
        for (std::size_t i = from; i < rightEntries.size() && !leftRanks.count(rightEntries[i]->place()); ++i)
            m_rows.push_back(rowOf(nullptr, rightEntries[i]));
    };
    addRightOnly(0);
    for (const Persistence::Entry *entry : leftEntries) {
        const auto rank = rightRanks.find(entry->place());
        const bool isInBoth = rank != rightRanks.end();
        m_rows.push_back(rowOf(entry, isInBoth ? rightEntries[rank->second] : nullptr));
        if (isInBoth)
            addRightOnly(rank->second + 1);
    }
}

std::size_t SettingsDiff::count(State state) const
{
    return static_cast<std::size_t>(
        std::count_if(m_rows.begin(), m_rows.end(), [state](const Row &row) { return row.state == state; }));
}
