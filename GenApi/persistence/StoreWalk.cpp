// SPDX-License-Identifier: MIT
#include <GenApi/PersistenceDevice.h>

#include "Guarded.h"
#include "ValueText.h"

#include <algorithm>
#include <map>
#include <set>

namespace Persistence {

namespace {

constexpr std::size_t MostPositions = 65536; // of the selectors of one feature, all together
constexpr std::size_t MostSelectors = 16;

bool isStorable(GenApi::INode &node, bool takesUnmarked)
{
    const GenApi::EInterfaceType type = node.GetPrincipalInterfaceType();
    return (takesUnmarked || node.IsStreamable()) && type != GenApi::intfICommand && type != GenApi::intfICategory;
}

bool isSelector(GenApi::IValue &value)
{
    const GenApi::CSelectorPtr links = &value;
    return links.IsValid() && links->IsSelector();
}

std::vector<GenApi::IValue *> selectorsOf(GenApi::IValue &value)
{
    const GenApi::CSelectorPtr links = &value;
    GenApi::FeatureList_t features;
    if (links.IsValid())
        links->GetSelectingFeatures(features);
    std::vector<GenApi::IValue *> selectors(features.begin(), features.end());
    selectors.erase(std::remove(selectors.begin(), selectors.end(), &value), selectors.end());
    return selectors;
}

/// The features of a category and of those inside.
std::set<GenApi::INode *> featuresBelow(const GenApi::CCategoryPtr &root)
{
    std::set<GenApi::INode *> features;
    std::vector<GenApi::ICategory *> due{root};
    while (!due.empty()) {
        GenApi::FeatureList_t inside;
        due.back()->GetFeatures(inside);
        due.pop_back();
        for (GenApi::IValue *value : inside) {
            const GenApi::CCategoryPtr category = value;
            if (features.insert(value->GetNode()).second && category.IsValid())
                due.push_back(category);
        }
    }
    return features;
}

/// What the walk goes on with behind a node. Of a category: the categories inside and what files hold. Of others: what
/// their values, limits and access modes come from, and what makes them forget these.
std::vector<GenApi::INode *> nextOf(GenApi::INode &node, bool takesUnmarked)
{
    GenApi::NodeList_t read;
    GenApi::NodeList_t invalidating;
    node.GetChildren(read, GenApi::ctReadingChildren);
    node.GetChildren(invalidating, GenApi::ctInvalidatingChildren);
    std::vector<GenApi::INode *> next(read.begin(), read.end());
    next.insert(next.end(), invalidating.begin(), invalidating.end());
    const auto isAside = [takesUnmarked](GenApi::INode *inside) {
        return !takesUnmarked && !inside->IsStreamable()
            && inside->GetPrincipalInterfaceType() != GenApi::intfICategory;
    };
    if (node.GetPrincipalInterfaceType() == GenApi::intfICategory)
        next.erase(std::remove_if(next.begin(), next.end(), isAside), next.end());
    return next;
}

/// The streamable features, or all, below Root in the order of files: those of a category, then those behind each of
/// them, then those of the categories inside. So what changes a feature when it is written comes soon behind it.
std::vector<GenApi::INode *> featuresOf(GenApi::INodeMap &map, bool takesUnmarked)
{
    const GenApi::CCategoryPtr root = map.GetNode("Root");
    if (!root.IsValid())
        return {};
    std::set<GenApi::INode *> left = featuresBelow(root);
    std::vector<GenApi::INode *> features;
    std::set<GenApi::INode *> known;
    std::vector<GenApi::INode *> due{GenApi::CNodePtr(root)};
    while (!due.empty()) {
        const std::vector<GenApi::INode *> next = nextOf(*due.back(), takesUnmarked);
        due.pop_back();
        for (GenApi::INode *node : next) {
            if (left.erase(node) && isStorable(*node, takesUnmarked))
                features.push_back(node);
        }
        for (auto node = next.rbegin(); node != next.rend(); ++node) {
            if (known.insert(*node).second)
                due.push_back(*node);
        }
    }
    return features;
}

/// As decimal texts, whatever the selector's own are.
std::vector<std::string> positionsOf(GenApi::IInteger &number)
{
    const int64_t first = number.GetMin();
    const int64_t last = number.GetMax();
    const auto step = static_cast<uint64_t>(std::max<int64_t>(number.GetInc(), 1));
    std::vector<std::string> positions;
    if (last < first)
        return positions;
    const uint64_t more = (static_cast<uint64_t>(last) - static_cast<uint64_t>(first)) / step;
    for (uint64_t i = 0; i <= std::min<uint64_t>(more, MostPositions); ++i)
        positions.push_back(std::to_string(static_cast<int64_t>(static_cast<uint64_t>(first) + i * step)));
    return positions;
}

/// Every position that the selector may have now; none if it cannot be read.
std::vector<std::string> positionsOf(GenApi::IValue &selector)
{
    if (!GenApi::IsReadable(&selector))
        return {};
    const GenApi::CIntegerPtr number = &selector;
    const GenApi::CEnumerationPtr enumeration = &selector;
    if (!GenApi::IsWritable(&selector) || (!number.IsValid() && !enumeration.IsValid())) {
        if (GenApi::CBooleanPtr(&selector).IsValid() && GenApi::IsWritable(&selector))
            return {"0", "1"};
        return {stringOf(selector.ToString())};
    }
    if (number.IsValid())
        return positionsOf(*number);
    GenApi::StringList_t symbolics;
    enumeration->GetSymbolics(symbolics);
    std::vector<std::string> positions;
    for (const GenICam::gcstring &symbolic : symbolics)
        positions.push_back(stringOf(symbolic));
    return positions;
}

Problem problemOf(const Entry &entry, const Outcome &outcome)
{
    return {0, messageOf(entry, outcome), Severity::Error, outcome.result == Result::TimedOut};
}

/// Moves the selectors of a group of features through all their positions.
class GroupWalk
{
public:
    using Visit = std::function<bool(const Selection &)>;

    GroupWalk(const std::vector<GenApi::IValue *> &selectors, SelectorGuard &guard, const Visit &visit)
        : m_selectors(selectors), m_guard(guard), m_visit(visit)
    { }

    /// False if the visitor wants no more, or the device does not answer any more.
    bool run() { return walk(0); }
    std::vector<Problem> takeProblems() { return std::exchange(m_problems, {}); }

private:
    bool walk(std::size_t depth)
    {
        if (depth == m_selectors.size())
            return visit();
        GenApi::IValue &selector = *m_selectors[depth];
        const std::string name = nameOf(selector);
        std::vector<std::string> positions;
        report({name, m_selection, {}}, guarded([&] { positions = positionsOf(selector); }));
        for (const std::string &position : positions) {
            m_selection.push_back({name, position});
            const bool goesOn = walkAt(selector, depth);
            m_selection.pop_back();
            if (!goesOn || m_visited > MostPositions)
                return goesOn;
        }
        return true;
    }

    bool walkAt(GenApi::IValue &selector, std::size_t depth)
    {
        const Outcome outcome = m_guard.moveTo(m_selection);
        if (!outcome.isDone()) {
            report({nameOf(selector), m_selection, {}}, outcome);
            return !m_silence.isLasting();
        }
        guarded([&] { m_selection.back().position = stringOf(selector.ToString()); });
        return walk(depth + 1);
    }

    bool visit()
    {
        if (++m_visited <= MostPositions)
            return m_visit(m_selection);
        m_problems.push_back({0,
                              "'" + nameOf(*m_selectors.back()) + "' has more than " + std::to_string(MostPositions)
                                  + " positions: the others are left out"});
        return true;
    }

    void report(const Entry &entry, const Outcome &outcome)
    {
        m_silence.note(outcome);
        if (!outcome.isDone())
            m_problems.push_back(problemOf(entry, outcome));
    }

    const std::vector<GenApi::IValue *> &m_selectors;
    SelectorGuard &m_guard;
    const Visit &m_visit;
    Selection m_selection;
    std::size_t m_visited = 0;
    std::vector<Problem> m_problems;
    Silence m_silence;
};

struct Group
{
    std::vector<GenApi::IValue *> selectors;
    std::vector<std::size_t> features;
};

/// Features with the same selectors together, in the order of the first one.
std::vector<Group> groupsOf(const std::vector<StoreWalk::Feature> &features)
{
    std::vector<Group> groups;
    std::map<std::vector<GenApi::IValue *>, std::size_t> known;
    for (std::size_t i = 0; i < features.size(); ++i) {
        const auto [found, isNew] = known.try_emplace(features[i].selectors, groups.size());
        if (isNew)
            groups.push_back({features[i].selectors, {}});
        groups[found->second].features.push_back(i);
    }
    return groups;
}

void append(std::vector<Problem> &problems, std::vector<Problem> more)
{
    problems.insert(problems.end(), more.begin(), more.end());
}

} // namespace

StoreWalk::StoreWalk(GenApi::INodeMap &map, const std::function<bool(const std::string &)> &wanted, bool takesUnmarked)
{
    std::set<GenApi::IValue *> used;
    for (GenApi::INode *node : featuresOf(map, takesUnmarked)) {
        const GenApi::CValuePtr value = node;
        Feature feature{nameOf(*value), value,
                        isSelector(*value) ? std::vector<GenApi::IValue *>() : selectorsOf(*value)};
        if (wanted && !wanted(feature.name))
            continue;
        used.insert(feature.selectors.begin(), feature.selectors.end());
        m_features.push_back(std::move(feature));
    }
    const auto isTold = [&used](const Feature &feature) { return used.count(feature.value) > 0; };
    m_features.erase(std::remove_if(m_features.begin(), m_features.end(), isTold), m_features.end());
}

std::vector<Problem> StoreWalk::run(SelectorGuard &guard, const std::function<bool(const Place &)> &visit) const
{
    std::vector<Problem> problems;
    Silence silence;
    const auto visitAll = [&](const Group &group, const Selection &selection) {
        return std::all_of(group.features.begin(), group.features.end(), [&](std::size_t i) {
            const Feature &feature = m_features[i];
            bool isOpen = false;
            const Outcome outcome = guarded([&] { isOpen = feature.value->GetAccessMode() == GenApi::RW; });
            silence.note(outcome);
            if (!outcome.isDone())
                problems.push_back(problemOf({feature.name, selection, {}}, outcome));
            return isOpen ? visit({i, feature.name, selection, *feature.value}) : !silence.isLasting();
        });
    };
    for (const Group &group : groupsOf(m_features)) {
        if (group.selectors.size() > MostSelectors) {
            problems.push_back(
                {0, "'" + m_features[group.features.front()].name + "' is left out: it has too many selectors"});
            continue;
        }
        const GroupWalk::Visit visitGroup = [&](const Selection &selection) { return visitAll(group, selection); };
        GroupWalk walk(group.selectors, guard, visitGroup);
        const bool goesOn = walk.run();
        guard.restore();
        append(problems, walk.takeProblems());
        append(problems, guard.takeProblems());
        if (!goesOn)
            break;
    }
    return problems;
}

} // namespace Persistence
