// SPDX-License-Identifier: MIT
#include "Simulation/StructuredLightFilters.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <utility>

namespace StructuredLightFilters {

namespace {

constexpr float Nothing = std::numeric_limits<float>::quiet_NaN();

float &at(HeightFrame &map, int x, int y)
{
    return map.heights[size_t(y) * size_t(map.width) + size_t(x)];
}

/// The points with data among those around one, and itself.
struct Surroundings
{
    Surroundings(const HeightFrame &map, const std::vector<float> &heights, int x, int y)
    {
        const int right = std::min(map.width - 1, x + 1), front = std::min(map.height - 1, y + 1);
        for (int row = std::max(0, y - 1); row <= front; ++row) {
            const float *const line = heights.data() + std::ptrdiff_t(row) * map.width;
            for (int column = std::max(0, x - 1); column <= right; ++column) {
                if (!std::isnan(line[column]))
                    values[count++] = line[column];
            }
        }
    }

    /// Of those, how many lie that close to a height.
    int closeTo(float height, float distance) const
    {
        return int(
            std::count_if(values, values + count, [=](float value) { return std::abs(value - height) <= distance; }));
    }

    float values[9];
    int count = 0;
};

/// Calls `change` with each point that has data and its surroundings, all as they were before.
template <class Change>
void forEachPoint(HeightFrame &map, Change change)
{
    const std::vector<float> before = map.heights;
    for (int y = 0; y < map.height; ++y) {
        for (int x = 0; x < map.width; ++x) {
            float &height = at(map, x, y);
            if (!std::isnan(height))
                change(height, Surroundings(map, before, x, y));
        }
    }
}

/// Number and sum of the points in rectangles, in constant time.
class BoxSums
{
public:
    explicit BoxSums(const HeightFrame &map)
        : m_width(map.width), m_height(map.height), m_sums(size_t(m_width + 1) * size_t(m_height + 1))
    {
        for (int y = 0; y < m_height; ++y) {
            Sum line;
            for (int x = 0; x < m_width; ++x) {
                const float z = map.profile(y)[x];
                line.count += !std::isnan(z);
                line.total += std::isnan(z) ? 0.0 : double(z);
                const Sum &above = corner(x + 1, y);
                m_sums[place(x + 1, y + 1)] = {above.count + line.count, above.total + line.total};
            }
        }
    }

    struct Sum
    {
        int count = 0;
        double total = 0.0;
    };
    /// Of the points at most `reach` columns and rows away.
    Sum around(int x, int y, int reach) const
    {
        const int left = std::max(0, x - reach), right = std::min(m_width, x + reach + 1);
        const int back = std::max(0, y - reach), front = std::min(m_height, y + reach + 1);
        const Sum &a = corner(left, back), &b = corner(right, back);
        const Sum &c = corner(left, front), &d = corner(right, front);
        return {d.count - c.count - b.count + a.count, d.total - c.total - b.total + a.total};
    }

private:
    size_t place(int x, int y) const { return size_t(y) * size_t(m_width + 1) + size_t(x); }
    const Sum &corner(int x, int y) const { return m_sums[place(x, y)]; }

    const int m_width;
    const int m_height;
    std::vector<Sum> m_sums;
};

/// Removes the points for which `isWrong` says so.
template <class Rule>
void removeWhere(HeightFrame &map, Rule isWrong)
{
    const BoxSums sums(map);
    for (int y = 0; y < map.height; ++y) {
        for (int x = 0; x < map.width; ++x) {
            float &height = at(map, x, y);
            if (!std::isnan(height) && isWrong(sums, x, y, height))
                height = Nothing;
        }
    }
}

/// The points of one hole, taken from `missing`.
std::vector<int> takeHole(const HeightFrame &map, std::vector<char> &missing, int start)
{
    std::vector<int> hole;
    const auto take = [&](int place) {
        if (missing[size_t(place)]) {
            missing[size_t(place)] = 0;
            hole.push_back(place);
        }
    };
    take(start);
    for (size_t i = 0; i < hole.size(); ++i) {
        const int place = hole[i], x = place % map.width, y = place / map.width;
        if (x > 0)
            take(place - 1);
        if (x < map.width - 1)
            take(place + 1);
        if (y > 0)
            take(place - map.width);
        if (y < map.height - 1)
            take(place + map.width);
    }
    return hole;
}

/// Gives the points of the hole that lie beside known ones their mean, layer by layer.
void fillHole(HeightFrame &map, std::vector<int> hole)
{
    while (!hole.empty()) {
        std::vector<std::pair<int, float>> filled;
        for (const int place : hole) {
            const Surroundings known(map, map.heights, place % map.width, place / map.width);
            float total = 0.0f;
            for (int i = 0; i < known.count; ++i)
                total += known.values[i];
            if (known.count > 0)
                filled.emplace_back(place, total / float(known.count));
        }
        if (filled.empty())
            return;
        for (const auto &[place, height] : filled)
            map.heights[size_t(place)] = height;
        hole.erase(std::remove_if(hole.begin(), hole.end(),
                                  [&map](int place) { return !std::isnan(map.heights[size_t(place)]); }),
                   hole.end());
    }
}

} // namespace

void replaceSpikes(HeightFrame &map, float threshold)
{
    if (threshold <= 0.0f)
        return;
    forEachPoint(map, [threshold](float &height, Surroundings around) {
        if (2 * around.closeTo(height, threshold) > around.count)
            return; // so is the median
        float *const middle = around.values + around.count / 2;
        std::nth_element(around.values, middle, around.values + around.count);
        if (std::abs(height - *middle) > threshold)
            height = *middle;
    });
}

void removeJumps(HeightFrame &map, float threshold)
{
    constexpr int Reach = 5;
    if (threshold <= 0.0f)
        return;
    removeWhere(map, [threshold](const BoxSums &sums, int x, int y, float height) {
        const BoxSums::Sum sum = sums.around(x, y, Reach);
        return std::abs(double(height) - sum.total / sum.count) > double(threshold);
    });
}

void removeIsolated(HeightFrame &map, int radius, int neighbours)
{
    const int possible = (2 * radius + 1) * (2 * radius + 1) - 1;
    const int needed = std::min(neighbours, possible);
    if (needed <= 0)
        return;
    removeWhere(map, [radius, needed](const BoxSums &sums, int x, int y, float) {
        return sums.around(x, y, radius).count - 1 < needed;
    });
}

void fillHoles(HeightFrame &map, int largest)
{
    if (largest <= 0)
        return;
    std::vector<char> missing(map.heights.size());
    std::transform(map.heights.begin(), map.heights.end(), missing.begin(),
                   [](float height) { return char(std::isnan(height)); });
    for (int place = 0; place < int(missing.size()); ++place) {
        if (!missing[size_t(place)])
            continue;
        std::vector<int> hole = takeHole(map, missing, place);
        if (int(hole.size()) <= largest)
            fillHole(map, std::move(hole));
    }
}

void smooth(HeightFrame &map)
{
    constexpr float SameSurface = 0.5f; // mm
    forEachPoint(map, [](float &height, const Surroundings &around) {
        float total = 0.0f;
        int count = 0;
        for (int i = 0; i < around.count; ++i) {
            if (std::abs(around.values[i] - height) < SameSurface)
                total += around.values[i], ++count;
        }
        height = total / float(count);
    });
}

void truncate(HeightFrame &map, float lowest, float highest)
{
    for (float &height : map.heights) {
        if (height < lowest || height > highest)
            height = Nothing;
    }
}

} // namespace StructuredLightFilters
