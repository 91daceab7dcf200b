// SPDX-License-Identifier: MIT
#pragma once

#include <QtGlobal>

#include <random>

/// Where all choices of a run come from. The same seed gives the same choices, on every machine.
class Dice
{
public:
    explicit Dice(quint64 seed) : m_random(seed) { }

    /// From 0 to count - 1; 0 for a count below 1.
    int below(int count) { return count > 0 ? int(m_random() % quint64(count)) : 0; }
    bool chance(int percent) { return below(100) < percent; }
    /// Of a list that is not empty.
    template <class List>
    auto oneOf(const List &list)
    {
        return list[below(int(std::size(list)))];
    }

private:
    std::mt19937_64 m_random;
};
