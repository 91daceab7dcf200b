// SPDX-License-Identifier: MIT
#include <QAbstractItemView>
#include <QComboBox>
#include <QDoubleSpinBox>
#include <QSignalSpy>
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
    void contradictions_data();
    void contradictions();
    void entriesChangeUnderAnOpenList();
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
    const std::pair<const char *, double> steps[] = {
        {"", static_cast<double>(0.01f)}, {"<Inc>0.5</Inc>", 0.5}, {"<Inc>0</Inc>", static_cast<double>(0.01f)}};
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

/// Features that contradict themselves: one log line, and an editor if there is a value to show.
void tst_RowEditors::contradictions_data()
{
    QTest::addColumn<QByteArray>("element");
    QTest::addColumn<int>("shown");
    QTest::newRow("minimum above maximum")
        << QByteArray("<Integer Name=\"N\"><Value>7</Value><Min>10</Min><Max>5</Max></Integer>") << 7;
    QTest::newRow("no increment") << QByteArray("<Integer Name=\"N\"><Value>7</Value><Inc>0</Inc></Integer>") << 7;
    QTest::newRow("float below its minimum")
        << QByteArray("<Float Name=\"N\"><Value>7</Value><Min>10</Min></Float>") << 7;
    QTest::newRow("no entries") << QByteArray("<Enumeration Name=\"N\"><Value>0</Value></Enumeration>") << -1;
}

void tst_RowEditors::contradictions()
{
    QFETCH(QByteArray, element);
    QFETCH(int, shown);
    TestCamera camera(descriptionOf(element));
    ToolPageWidgetItem row;
    row.setItemInfo({}, {}, camera.node("N"), true);
    row.updateWidget(false);
    QCOMPARE(FakeHostCore::instance().callsTo(QStringLiteral("VLogInfo")).size(), 1);
    QCOMPARE(row.isHidden(), shown < 0);
    auto *editor = row.findChild<QAbstractSpinBox *>();
    QCOMPARE(editor != nullptr, shown >= 0);
    if (!editor)
        return;
    QCOMPARE(editor->property("value").toInt(), shown);
    QVERIFY(editor->property("singleStep").toDouble() > 0.0);
}

void tst_RowEditors::entriesChangeUnderAnOpenList()
{
    TestCamera camera(descriptionOf(
        "<Integer Name=\"Extra\"><Value>1</Value></Integer><Integer Name=\"Number\"><Value>1</Value></Integer>"
        "<Enumeration Name=\"N\">"
        "<EnumEntry Name=\"A\"><pIsImplemented>Extra</pIsImplemented><Value>0</Value></EnumEntry>"
        "<EnumEntry Name=\"B\"><Value>1</Value></EnumEntry>"
        "<EnumEntry Name=\"C\"><pIsImplemented>Extra</pIsImplemented><Value>2</Value></EnumEntry>"
        "<pValue>Number</pValue></Enumeration>"));
    ToolPageWidgetItem row;
    row.setItemInfo({}, {}, camera.node("N"), true);
    row.show();
    auto *comboBox = row.findChild<QComboBox *>();
    comboBox->showPopup();
    QSignalSpy removed(comboBox->model(), &QAbstractItemModel::rowsRemoved);
    QSignalSpy changed(comboBox, &QComboBox::currentTextChanged);
    const auto refreshed = [&](int extra, int number) {
        GenApi::CIntegerPtr(camera.node("Extra"))->SetValue(extra);
        GenApi::CIntegerPtr(camera.node("Number"))->SetValue(number);
        row.updateWidget(false);
        QString entries;
        for (int index = 0; index < comboBox->count(); ++index)
            entries += comboBox->itemText(index);
        return QStringLiteral("%1 of %2").arg(comboBox->currentText(), entries);
    };
    QCOMPARE(refreshed(1, 2), QStringLiteral("C of ABC"));
    QCOMPARE(removed.count(), 0);
    QCOMPARE(refreshed(0, 1), QStringLiteral("B of B"));
    QCOMPARE(refreshed(1, 1), QStringLiteral("B of ABC"));
    QCOMPARE(refreshed(0, 2), QStringLiteral(" of B"));
    QVERIFY(comboBox->view()->isVisible());
    QCOMPARE(changed.count(), 0);
}

QTEST_MAIN(tst_RowEditors)
#include "tst_RowEditors.moc"
