// SPDX-License-Identifier: MIT
#include "Tools/Place.h"

#include <algorithm>

namespace {

/// Takes what stands in front of the separator, or everything.
std::string takenUntil(std::string_view &text, char separator)
{
    const std::string_view taken = text.substr(0, text.find(separator));
    text.remove_prefix(std::min(text.size(), taken.size() + 1));
    return std::string(taken);
}

bool parseSelection(std::string_view text, Persistence::Selection &selection)
{
    while (!text.empty()) {
        std::string position = takenUntil(text, ',');
        std::string_view rest = position;
        const std::string selector = takenUntil(rest, '=');
        if (selector.empty() || rest.empty())
            return false;
        selection.push_back({selector, std::string(rest)});
    }
    return !selection.empty();
}

} // namespace

std::string placeText(const std::string &feature, const Persistence::Selection &selection)
{
    std::string positions;
    for (const Persistence::SelectorPosition &one : selection)
        positions += (positions.empty() ? "[" : ",") + one.selector + "=" + one.position;
    return selection.empty() ? feature : feature + positions + "]";
}

std::optional<Persistence::Entry> parsePlace(std::string_view text)
{
    Persistence::Entry entry;
    const std::size_t bracket = text.find('[');
    entry.feature = text.substr(0, bracket);
    if (entry.feature.empty() || entry.feature.find_first_of("=]") != std::string::npos)
        return std::nullopt;
    if (bracket == std::string_view::npos)
        return entry;
    const bool isClosed = text.back() == ']';
    text = text.substr(bracket + 1, text.size() - bracket - 2);
    return isClosed && parseSelection(text, entry.selection) ? std::optional(entry) : std::nullopt;
}

std::optional<Persistence::Entry> parseAssignment(std::string_view text)
{
    const std::size_t bracket = text.find('[');
    const bool isSelected = bracket < text.find('=');
    const std::size_t end = text.find(isSelected ? "]=" : "=");
    if (end == std::string_view::npos)
        return std::nullopt;
    const std::size_t length = end + (isSelected ? 1 : 0);
    std::optional<Persistence::Entry> entry = parsePlace(text.substr(0, length));
    if (entry)
        entry->value = text.substr(length + 1);
    return entry;
}
