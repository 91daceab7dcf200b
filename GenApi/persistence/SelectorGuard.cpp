// SPDX-License-Identifier: MIT
#include <GenApi/PersistenceDevice.h>

#include "Guarded.h"
#include "ValueText.h"

#include <algorithm>

namespace Persistence {

namespace {

bool selects(GenApi::IValue &selector, GenApi::IValue &feature)
{
    const GenApi::CSelectorPtr links = &selector;
    if (!links.IsValid() || &selector == &feature)
        return false;
    GenApi::FeatureList_t selected;
    links->GetSelectedFeatures(selected);
    return std::find(selected.begin(), selected.end(), &feature) != selected.end();
}

bool standsAt(GenApi::IValue &selector, const std::string &position, std::string &present)
{
    return hasValue(selector, position, false, present);
}

bool standsAt(GenApi::IValue &selector, const std::string &position)
{
    std::string present;
    return standsAt(selector, position, present);
}

} // namespace

Outcome SelectorGuard::moveTo(const Selection &selection)
{
    Outcome outcome{Result::Done};
    std::vector<GenApi::IValue *> outer;
    for (const SelectorPosition &one : selection) {
        outcome = guarded([&] {
            const GenApi::CValuePtr selector = m_map.GetNode(gcstringOf(one.selector));
            if (!selector.IsValid())
                throw INVALID_ARGUMENT_EXCEPTION("'%s' not found", one.selector.c_str());
            move(*selector, one.position, outer);
            outer.push_back(selector);
        });
        if (outcome.isDone())
            continue;
        outcome.selector = one.selector;
        if (outcome.result == Result::Refused)
            outcome.result = Result::SelectorRefused;
        return outcome;
    }
    return outcome;
}

// The outer ones stay where they are, even if this one selects them.
void SelectorGuard::move(GenApi::IValue &selector, const std::string &position,
                         const std::vector<GenApi::IValue *> &outer)
{
    std::string present;
    if (standsAt(selector, position, present))
        return;
    putBackSelectedBy(selector, outer);
    const bool isKnown = std::any_of(m_moved.begin(), m_moved.end(),
                                     [&selector](const Moved &moved) { return moved.selector == &selector; });
    if (!isKnown)
        m_moved.push_back({&selector, present});
    selector.FromString(gcstringOf(position), true);
}

Outcome SelectorGuard::moveForGood(GenApi::IValue &selector, const std::string &position)
{
    return guarded([&] {
        putBackSelectedBy(selector);
        if (!standsAt(selector, position))
            selector.FromString(gcstringOf(position), true);
        m_moved.erase(std::remove_if(m_moved.begin(), m_moved.end(),
                                     [&selector](const Moved &moved) { return moved.selector == &selector; }),
                      m_moved.end());
    });
}

// Each call takes one out before it goes on, so selectors that select each other come to an end.
void SelectorGuard::putBackSelectedBy(GenApi::IValue &selector, const std::vector<GenApi::IValue *> &butNot)
{
    while (true) {
        const auto found = std::find_if(m_moved.rbegin(), m_moved.rend(), [&](const Moved &moved) {
            return selects(selector, *moved.selector)
                && std::find(butNot.begin(), butNot.end(), moved.selector) == butNot.end();
        });
        if (found == m_moved.rend())
            return;
        const Moved moved = *found;
        m_moved.erase(std::next(found).base());
        putBack(moved);
    }
}

// What is not available any more may still pass without the checks: a position may have been one before.
void SelectorGuard::putBack(const Moved &moved)
{
    const auto write = [&](bool verify) {
        return guarded([&] {
            if (!standsAt(*moved.selector, moved.former))
                moved.selector->FromString(gcstringOf(moved.former), verify);
        });
    };
    guarded([&] { putBackSelectedBy(*moved.selector); });
    const Outcome outcome = write(true);
    if (!outcome.isDone() && !write(false).isDone())
        m_problems.push_back({0,
                              "Error while putting back selector '" + nameOf(*moved.selector) + "': " + outcome.reason,
                              Severity::Error, outcome.result == Result::TimedOut});
}

void SelectorGuard::restore()
{
    while (!m_moved.empty()) {
        const Moved moved = m_moved.back();
        m_moved.pop_back();
        putBack(moved);
    }
}

} // namespace Persistence
