// SPDX-License-Identifier: MIT
#pragma once

#include "ValueSource.h"

#include <array>

namespace NodeEngine {

/// The minimum, maximum and increment that an Integer or Float gives itself, as constants or through links.
template <class Number>
class LimitSource
{
public:
    bool take(Node &owner, Tag tag, pugi::xml_node child, NodeLoader &loader)
    {
        switch (tag) {
        case Tag::Min:
        case Tag::Max:
        case Tag::Inc:
            at(tag == Tag::Min       ? Limit::Min
                   : tag == Tag::Max ? Limit::Max
                                     : Limit::Inc)
                .constant = numberOfDescription<Number>(textOf(child));
            return true;
        case Tag::pMin:
        case Tag::pMax:
        case Tag::pInc:
            at(tag == Tag::pMin       ? Limit::Min
                   : tag == Tag::pMax ? Limit::Max
                                      : Limit::Inc)
                .target = loader.link(owner, tag, child);
            return true;
        default:
            return false;
        }
    }

    bool isConstant(Limit limit) const { return at(limit).constant.has_value(); }
    bool has(Limit limit) const { return at(limit).constant || at(limit).target; }

    /// Nothing if the node gives none, or its node cannot be read now.
    std::optional<Number> value(Limit limit) const
    {
        const Entry &entry = at(limit);
        if (!entry.target)
            return entry.constant;
        if (!GenApi::IsReadable(entry.target->accessMode()))
            return std::nullopt;
        if constexpr (std::is_same_v<Number, double>)
            return entry.target->floatValue(false);
        else
            return entry.target->integerValue(false);
    }

private:
    struct Entry
    {
        std::optional<Number> constant;
        Node *target = nullptr;
    };

    Entry &at(Limit limit) { return m_entries[static_cast<std::size_t>(limit)]; }
    const Entry &at(Limit limit) const { return m_entries[static_cast<std::size_t>(limit)]; }

    std::array<Entry, 3> m_entries;
};

/// The limit of a node's target, narrowed to what its copies take as well.
template <class Number>
Number inheritedLimit(const Node &target, const std::vector<Node *> &copies, Limit limit)
{
    const auto of = [limit](const Node &node) {
        if constexpr (std::is_same_v<Number, double>)
            return node.floatLimit(limit);
        else
            return node.integerLimit(limit);
    };
    Number value = of(target);
    for (const Node *copy : copies) {
        if (limit == Limit::Min)
            value = std::max(value, of(*copy));
        else if (limit == Limit::Max)
            value = std::min(value, of(*copy));
    }
    return value;
}

} // namespace NodeEngine
