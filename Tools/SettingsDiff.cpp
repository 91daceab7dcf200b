// SPDX-License-Identifier: MIT
#include "Tools/SettingsDiff.h"

#include <algorithm>
#include <optional>
#include <unordered_map>
#include <unordered_set>

#include <QRegularExpression>

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

/// The bits of a whole number.
std::optional<quint64> wholeNumber(const QString &text)
{
    static const QRegularExpression Decimal(QStringLiteral("^-?(0|[1-9][0-9]*)$"));
    static const QRegularExpression Hexadecimal(QStringLiteral("^0[xX][0-9a-fA-F]+$"));
    bool isNumber = false;
    quint64 bits = 0;
    if (Decimal.match(text).hasMatch())
        bits = text.startsWith(QLatin1Char('-')) ? static_cast<quint64>(text.toLongLong(&isNumber))
                                                 : text.toULongLong(&isNumber);
    else if (Hexadecimal.match(text).hasMatch())
        bits = text.mid(2).toULongLong(&isNumber, 16);
    return isNumber ? std::optional<quint64>(bits) : std::nullopt;
}

std::optional<double> decimalNumber(const QString &text)
{
    static const QRegularExpression Decimal(QStringLiteral("^-?(0|[1-9][0-9]*)(\\.[0-9]*[1-9])?([eE][+-]?[0-9]+)?$"));
    bool isNumber = false;
    const double number = Decimal.match(text).hasMatch() ? text.toDouble(&isNumber) : 0.0;
    return isNumber ? std::optional<double>(number) : std::nullopt;
}

} // namespace

bool isSameSettingText(const std::string &left, const std::string &right)
{
    if (left == right)
        return true;
    if (left.size() > LongestNumber || right.size() > LongestNumber)
        return false;
    const QString leftText = textOfBytes(left);
    const QString rightText = textOfBytes(right);
    if (const std::optional<quint64> whole = wholeNumber(leftText); whole && wholeNumber(rightText))
        return whole == wholeNumber(rightText);
    const std::optional<double> number = decimalNumber(leftText);
    return number && number == decimalNumber(rightText);
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
