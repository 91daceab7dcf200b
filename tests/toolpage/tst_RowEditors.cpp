// SPDX-License-Identifier: MIT
#include <QComboBox>
#include <QDoubleSpinBox>
#include <QSpinBox>
#include <QTest>

#include <cmath>
#include <limits>

#include "TestCamera.h"
#include "ToolPage/ToolPageWidgetItem.h"
#include "support/FakeHostCore.h"

namespace {

std::string descriptionOf(const QByteArray &element)
{
    return TestCamera::description(std::string("<Category Name=\"Root\"><pFeature>N</pFeature></Category>")
                                   + element.toStdString());
}

} // namespace

/// The ranges, steps and entries of editors, and what becomes of odd ones.
class tst_RowEditors : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { FakeHostCore::instance().reset(); }
    void integerRange();
    void floatSteps();
    void oddFloats();
    void unreadable_data();
    void unreadable();
};

void tst_RowEditors::integerRange()
{
    TestCamera camera(descriptionOf("<Integer Name=\"N\"><Value>0</Value><Min>-8</Min><Max>4294967295</Max>"
                                    "<Inc>8</Inc></Integer>"));
    ToolPageWidgetItem row;
    row.setItemInfo({}, {}, camera.node("N"), true);
    const auto *spinBox = row.findChild<QSpinBox *>();
    for (int pass = 0; pass < 2; ++pass) {
        QCOMPARE(spinBox->minimum(), -8);
        QCOMPARE(spinBox->maximum(), std::numeric_limits<int>::max());
        QCOMPARE(spinBox->singleStep(), 8);
        row.updateWidget(false);
    }
}

void tst_RowEditors::floatSteps()
{
    const std::pair<const char *, double> steps[] = {{"", static_cast<double>(0.01f)}, {"<Inc>0.5</Inc>", 0.5}};
    for (const auto &[increment, step] : steps) {
        TestCamera camera(descriptionOf(QByteArray("<Float Name=\"N\"><Value>0.123456</Value><Min>-0.1</Min>"
                                                   "<Max>9</Max>")
                                        + increment + "</Float>"));
        ToolPageWidgetItem row;
        row.setItemInfo({}, {}, camera.node("N"), true);
        const auto *spinBox = row.findChild<QDoubleSpinBox *>();
        QCOMPARE(spinBox->singleStep(), step);
        QCOMPARE(spinBox->value(), 0.1235);
        QCOMPARE(spinBox->minimum(), -0.1);
        QCOMPARE(spinBox->maximum(), 9.0);
    }
}

void tst_RowEditors::oddFloats()
{
    TestCamera camera;
    ToolPageWidgetItem row;
    row.setItemInfo({}, {}, camera.node("AcquisitionLineRate"), true);
    const auto *spinBox = row.findChild<QDoubleSpinBox *>();
    using Limits = std::numeric_limits<double>;
    for (const double odd : {Limits::infinity(), Limits::quiet_NaN(), -Limits::infinity(), Limits::max()}) {
        camera.port.pokeDouble(TestCamera::LineRate, odd);
        camera.map->InvalidateNodes();
        row.updateWidget(false);
        QVERIFY(std::isfinite(spinBox->value()));
        QVERIFY(std::isfinite(spinBox->minimum()) && std::isfinite(spinBox->maximum()));
    }
}

void tst_RowEditors::unreadable_data()
{
    QTest::addColumn<QByteArray>("element");
    QTest::newRow("empty range") << QByteArray(
        "<Integer Name=\"N\"><Value>7</Value><Min>10</Min><Max>5</Max></Integer>");
    QTest::newRow("no entries") << QByteArray("<Enumeration Name=\"N\"><Value>0</Value></Enumeration>");
}

void tst_RowEditors::unreadable()
{
    QFETCH(QByteArray, element);
    TestCamera camera(descriptionOf(element));
    ToolPageWidgetItem row;
    row.setItemInfo({}, {}, camera.node("N"), true);
    row.updateWidget(false);
    QVERIFY(row.isHidden());
    QVERIFY(!row.findChild<QSpinBox *>() && !row.findChild<QComboBox *>());
    QCOMPARE(FakeHostCore::instance().callsTo(QStringLiteral("VLogInfo")).size(), 1);
}

QTEST_MAIN(tst_RowEditors)
#include "tst_RowEditors.moc"
