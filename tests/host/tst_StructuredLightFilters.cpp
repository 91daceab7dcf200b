// SPDX-License-Identifier: MIT
#include <cmath>
#include <functional>
#include <limits>

#include <QtTest>

#include "Simulation/StructuredLightFilters.h"

namespace {

constexpr float Nothing = std::numeric_limits<float>::quiet_NaN();

HeightFrame mapOf(int width, const std::vector<float> &heights)
{
    HeightFrame map;
    map.width = width;
    map.height = int(heights.size()) / width;
    map.heights = heights;
    return map;
}

} // namespace

using Filter = void (*)(HeightFrame &map);
Q_DECLARE_METATYPE(Filter)
Q_DECLARE_METATYPE(std::vector<float>)

class tst_StructuredLightFilters : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void filters_data();
    void filters();
};

void tst_StructuredLightFilters::filters_data()
{
    QTest::addColumn<std::vector<float>>("heights"); // three columns
    QTest::addColumn<Filter>("filter");
    QTest::addColumn<std::vector<float>>("filtered");
    using namespace StructuredLightFilters;
    const float N = Nothing;
    QTest::newRow("a spike takes the height around it; a step stays")
        << std::vector<float>{1, 2, 7, 2, 9, 7, 3, 3, 7} << Filter([](HeightFrame &map) { replaceSpikes(map, 5.5f); })
        << std::vector<float>{1, 2, 7, 2, 3, 7, 3, 3, 7};
    QTest::newRow("a jump from the mean goes")
        << std::vector<float>{1, 1, 1, N, 9, 1} << Filter([](HeightFrame &map) { removeJumps(map, 4.0f); })
        << std::vector<float>{1, 1, 1, N, N, 1};
    QTest::newRow("points with too few neighbours go")
        << std::vector<float>{1, N, N, 1, 1, N, N, N, 1} << Filter([](HeightFrame &map) { removeIsolated(map, 1, 2); })
        << std::vector<float>{1, N, N, 1, 1, N, N, N, N};
    QTest::newRow("more neighbours than possible count as all")
        << std::vector<float>(9, 1.0f) << Filter([](HeightFrame &map) { removeIsolated(map, 1, 99); })
        << std::vector<float>{N, N, N, N, 1, N, N, N, N};
    QTest::newRow("small holes are filled from their edges")
        << std::vector<float>{2, N, 4, 2, 3, 4, 5, 5, 5, N, N, 5} << Filter([](HeightFrame &map) { fillHoles(map, 1); })
        << std::vector<float>{2, 3, 4, 2, 3, 4, 5, 5, 5, N, N, 5};
    QTest::newRow("smoothing keeps edges")
        << std::vector<float>{1, 1.2f, 9} << Filter(smooth) << std::vector<float>{1.1f, 1.1f, 9};
    QTest::newRow("heights are cut off") << std::vector<float>{1, 2, 3}
                                         << Filter([](HeightFrame &map) { truncate(map, 1.5f, 2.5f); })
                                         << std::vector<float>{N, 2, N};
}

void tst_StructuredLightFilters::filters()
{
    QFETCH(std::vector<float>, heights);
    QFETCH(Filter, filter);
    QFETCH(std::vector<float>, filtered);
    HeightFrame map = mapOf(3, heights);
    filter(map);
    for (size_t i = 0; i < filtered.size(); ++i) {
        const bool same =
            std::isnan(filtered[i]) ? std::isnan(map.heights[i]) : std::abs(map.heights[i] - filtered[i]) < 1e-4f;
        QVERIFY2(same, qPrintable(QStringLiteral("point %1 is %2").arg(i).arg(double(map.heights[i]))));
    }
}

QTEST_GUILESS_MAIN(tst_StructuredLightFilters)
#include "tst_StructuredLightFilters.moc"
