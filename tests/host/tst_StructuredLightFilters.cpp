// SPDX-License-Identifier: MIT
#include <cmath>
#include <limits>

#include <QtTest>

#include "Simulation/StructuredLightFilters.h"

namespace {

constexpr float N = std::numeric_limits<float>::quiet_NaN(); // no data

struct Row
{
    const char *name;
    std::vector<float> heights; ///< three columns
    void (*filter)(HeightFrame &map);
    std::vector<float> filtered;
};

const Row Rows[] = {
    {"a spike takes the height around it; a step stays",
     {1, 2, 7, 2, 9, 7, 3, 3, 7},
     [](HeightFrame &map) { StructuredLightFilters::replaceSpikes(map, 5.5f); },
     {1, 2, 7, 2, 3, 7, 3, 3, 7}},
    {"a jump from the mean goes",
     {1, 1, 1, N, 9, 1},
     [](HeightFrame &map) { StructuredLightFilters::removeJumps(map, 4.0f); },
     {1, 1, 1, N, N, 1}},
    {"points with too few neighbours go",
     {1, N, N, 1, 1, N, N, N, 1},
     [](HeightFrame &map) { StructuredLightFilters::removeIsolated(map, 1, 2); },
     {1, N, N, 1, 1, N, N, N, N}},
    {"small holes are filled from their edges",
     {2, N, 4, 2, 3, 4, 5, 5, 5, N, N, 5},
     [](HeightFrame &map) { StructuredLightFilters::fillHoles(map, 1); },
     {2, 3, 4, 2, 3, 4, 5, 5, 5, N, N, 5}},
    {"smoothing keeps edges", {1, 1.2f, 9}, StructuredLightFilters::smooth, {1.1f, 1.1f, 9}},
};

} // namespace

class tst_StructuredLightFilters : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void filters()
    {
        for (const Row &row : Rows) {
            HeightFrame map;
            map.width = 3;
            map.height = int(row.heights.size()) / 3;
            map.heights = row.heights;
            row.filter(map);
            for (size_t i = 0; i < row.filtered.size(); ++i) {
                const float is = map.heights[i], should = row.filtered[i];
                QVERIFY2(std::isnan(should) ? std::isnan(is) : std::abs(is - should) < 1e-4f, row.name);
            }
        }
    }
};

QTEST_GUILESS_MAIN(tst_StructuredLightFilters)
#include "tst_StructuredLightFilters.moc"
