// SPDX-License-Identifier: MIT
#include <GenApi/PersistenceDevice.h>

#include "Guarded.h"
#include "ShownText.h"
#include "ValueText.h"

namespace Persistence {

namespace {

bool isSetting(GenApi::IValue &value)
{
    switch (value.GetNode()->GetPrincipalInterfaceType()) {
    case GenApi::intfIInteger:
    case GenApi::intfIBoolean:
    case GenApi::intfIFloat:
    case GenApi::intfIString:
    case GenApi::intfIEnumeration:
    case GenApi::intfIRegister:
        return true;
    default:
        return false;
    }
}

bool isSelector(GenApi::IValue &value)
{
    const GenApi::CSelectorPtr links = &value;
    return links.IsValid() && links->IsSelector();
}

Outcome written(GenApi::IValue &value, const std::string &text)
{
    return guarded([&] {
        std::string found;
        const bool isThere =
            !GenApi::IsWritable(&value) && GenApi::IsReadable(&value) && hasValue(value, text, false, found);
        if (!isThere)
            value.FromString(gcstringOf(text), true);
    });
}

/// Moves the selectors and calls the function with the feature.
template <class Function>
Outcome atPlace(GenApi::INodeMap &map, const Entry &entry, SelectorGuard &guard, Function function)
{
    GenApi::CValuePtr value;
    Outcome outcome = guarded([&] { value = map.GetNode(gcstringOf(entry.feature)); });
    if (!outcome.isDone())
        return outcome;
    if (!value.IsValid())
        return {Result::NotFound};
    if (!isSetting(*value))
        return {Result::Refused, "it is no setting"};
    outcome = guard.moveTo(entry.selection);
    return outcome.isDone() ? function(*value) : outcome;
}

std::string sentence(const Entry &entry, const Outcome &outcome)
{
    const std::string feature = "'" + shownText(entry.feature) + "'";
    const std::string task = outcome.isOfVerify ? "Error while verifying " : "Error while writing ";
    if (!outcome.selector.empty())
        return task + "selector '" + shownText(outcome.selector) + "': " + outcome.reason;
    switch (outcome.result) {
    case Result::NotFound:
        return task + "node: " + feature + " not found";
    case Result::NotTried:
        return task + "node " + feature + ": not tried";
    case Result::Differs:
        return task + "node " + feature + ". Expected '" + shownText(entry.value) + "', but found '"
            + shownText(outcome.found) + "'";
    default:
        return task + "node " + feature + ": " + outcome.reason;
    }
}

} // namespace

std::string messageOf(const Entry &entry, const Outcome &outcome)
{
    if (outcome.isDone())
        return {};
    std::string where = displayText(entry.selection);
    if (entry.line)
        where += (where.empty() ? "line " : "; line ") + std::to_string(entry.line);
    return sentence(entry, outcome) + (where.empty() ? "" : " (" + where + ")");
}

Outcome readEntry(GenApi::INodeMap &map, const Entry &entry, SelectorGuard &guard)
{
    return atPlace(map, entry, guard, [](GenApi::IValue &value) {
        std::string found;
        Outcome outcome = guarded([&] { found = storedText(value, false); });
        outcome.found = found;
        return outcome;
    });
}

Outcome applyEntry(GenApi::INodeMap &map, const Entry &entry, SelectorGuard &guard)
{
    return atPlace(map, entry, guard, [&](GenApi::IValue &value) {
        if (isSelector(value))
            return guard.moveForGood(value, entry.value);
        if (entry.selection.empty())
            guard.restore();
        return written(value, entry.value);
    });
}

Outcome verifyEntry(GenApi::INodeMap &map, const Entry &entry, SelectorGuard &guard)
{
    Outcome verified = atPlace(map, entry, guard, [&](GenApi::IValue &value) {
        std::string found;
        bool isSame = false;
        Outcome outcome = guarded([&] { isSame = hasValue(value, entry.value, true, found); });
        outcome.found = found;
        if (outcome.isDone() && !isSame)
            outcome.result = Result::Differs;
        return outcome;
    });
    verified.isOfVerify = true;
    return verified;
}

} // namespace Persistence
