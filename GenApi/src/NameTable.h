// SPDX-License-Identifier: MIT
#pragma once

#include <functional>
#include <string_view>
#include <utility>
#include <vector>

namespace NodeEngine {

class Node;

/// The nodes of a map by name. Open addressing, at most half full, because looking up names is a good part of loading.
/// The names are not copied: whoever inserts one keeps it.
class NameTable
{
public:
    /// Makes room for that many names.
    void reserve(std::size_t count)
    {
        std::size_t size = Smallest;
        while (size < count * 2)
            size *= 2;
        const std::vector<Slot> old = std::exchange(m_slots, std::vector<Slot>(size));
        for (const Slot &slot : old) {
            if (slot.isTaken())
                m_slots[indexOf(slot.name)] = slot;
        }
    }

    /// Null if there is no node of that name.
    Node *find(std::string_view name) const { return m_slots.empty() ? nullptr : m_slots[indexOf(name)].node; }

    /// The place of the name's node, null for a new name. Holds until the next call.
    Node *&operator[](std::string_view name)
    {
        if ((m_count + 1) * 2 > m_slots.size())
            reserve((m_count + 1) * 2);
        Slot &slot = m_slots[indexOf(name)];
        if (!slot.isTaken())
            ++m_count;
        slot.name = name;
        return slot.node;
    }

private:
    static constexpr std::size_t Smallest = 16;

    struct Slot
    {
        std::string_view name;
        Node *node = nullptr;

        bool isTaken() const { return name.data() != nullptr; } // names may be empty
    };

    // Where the name is, or the free slot where it belongs.
    std::size_t indexOf(std::string_view name) const
    {
        const std::size_t mask = m_slots.size() - 1;
        std::size_t index = std::hash<std::string_view>()(name) & mask;
        while (m_slots[index].isTaken() && m_slots[index].name != name)
            index = (index + 1) & mask;
        return index;
    }

    std::vector<Slot> m_slots; // a power of two
    std::size_t m_count = 0;
};

} // namespace NodeEngine
