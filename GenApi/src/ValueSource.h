// SPDX-License-Identifier: MIT
#pragma once

#include "AccessModes.h"
#include "Node.h"
#include "NodeLoader.h"
#include "NumberText.h"

#include <utility>
#include <vector>

namespace NodeEngine {

template <class Number>
std::optional<Number> numberOfDescription(std::string_view text);
template <>
inline std::optional<int64_t> numberOfDescription(std::string_view text)
{
    return integerOfDescription(text);
}
template <>
inline std::optional<double> numberOfDescription(std::string_view text)
{
    return floatOfDescription(text);
}

/// Where the value of an Integer or Float is: in the node itself, behind pValue, or in one of several such places
/// that pIndex chooses.
template <class Number>
class ValueSource
{
public:
    struct Place
    {
        Node *target = nullptr; ///< null for a value in the node itself
        Number constant = 0;
    };

    explicit ValueSource(Node &owner) : m_owner(owner) { }

    bool take(Tag tag, pugi::xml_node child, NodeLoader &loader)
    {
        switch (tag) {
        case Tag::Value:
        case Tag::ValueDefault:
            m_default.constant = numberOfDescription<Number>(textOf(child)).value_or(0);
            return true;
        case Tag::pValue:
        case Tag::pValueDefault:
            m_default.target = loader.link(m_owner, tag, child);
            return true;
        case Tag::pValueCopy:
            if (Node *copy = loader.link(m_owner, tag, child))
                m_copies.push_back(copy);
            return true;
        case Tag::pIndex:
            m_index = loader.link(m_owner, tag, child);
            return true;
        case Tag::ValueIndexed:
            m_indexed.push_back({indexOf(child), {nullptr, numberOfDescription<Number>(textOf(child)).value_or(0)}});
            return true;
        case Tag::pValueIndexed:
            m_indexed.push_back({indexOf(child), {loader.link(m_owner, tag, child), 0}});
            return true;
        default:
            return false;
        }
    }

    /// The place that holds the value now.
    const Place &current() const
    {
        if (m_index) {
            const int64_t index = m_index->integerValue(false);
            for (const auto &[key, place] : m_indexed) {
                if (key == index)
                    return place;
            }
        }
        return m_default;
    }
    Place &current() { return const_cast<Place &>(std::as_const(*this).current()); }

    /// The node that the value always comes from, or null: what units and the like are inherited of.
    Node *target() const { return m_index ? nullptr : m_default.target; }
    /// The node that holds the value now, or null: where limits come from.
    Node *currentTarget() const
    {
        const bool isKnown = !m_index || GenApi::IsReadable(m_index->accessMode());
        return isKnown ? current().target : nullptr;
    }
    const std::vector<Node *> &copies() const { return m_copies; }

    GenApi::EAccessMode accessMode() const { return modeOf(&Node::accessMode); }
    GenApi::EAccessMode baseAccessMode() const { return modeOf(&Node::baseAccessMode); }

private:
    static int64_t indexOf(pugi::xml_node element)
    {
        return integerOfDescription(element.attribute("Index").value()).value_or(0);
    }

    // Copies are written, never read.
    static GenApi::EAccessMode modeOfCopy(GenApi::EAccessMode mode)
    {
        return GenApi::IsWritable(mode) ? GenApi::RW : mode;
    }

    GenApi::EAccessMode modeOf(GenApi::EAccessMode (Node::*mode)() const) const
    {
        if (m_index && !GenApi::IsReadable(m_index->accessMode()))
            return GenApi::NA;
        const Node *target = current().target;
        GenApi::EAccessMode result = target ? (target->*mode)() : GenApi::RW;
        for (const Node *copy : m_copies)
            result = combined(result, modeOfCopy((copy->*mode)()));
        return result;
    }

    Node &m_owner;
    Node *m_index = nullptr;
    Place m_default;
    std::vector<std::pair<int64_t, Place>> m_indexed;
    std::vector<Node *> m_copies;
};

} // namespace NodeEngine
