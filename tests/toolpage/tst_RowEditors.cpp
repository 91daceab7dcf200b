// SPDX-License-Identifier: MIT
#include <QAbstractItemView>
#include <QSignalSpy>

#include <cmath>
#include <limits>

#include "Editors.h"
#include "support/FakeHostCore.h"
#include "support/Rows.h"

/// The ranges, steps and entries of editors, and what becomes of odd ones.
class tst_RowEditors : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { FakeHostCore::instance().reset(); }

    void integerRange()
    {
        TestCamera camera(descriptionWith(
            "<Integer Name=\"N\"><Value>0</Value><Min>-8</Min><Max>4294967295</Max><Inc>8</Inc></Integer>"));
        const auto row = rowOf(camera);
        const auto *spinBox = row->findChild<QSpinBox *>();
        for (int pass = 0; pass < 2; ++pass) {
            QCOMPARE(spinBox->minimum(), -8);
            QCOMPARE(spinBox->maximum(), std::numeric_limits<int>::max());
            QCOMPARE(spinBox->singleStep(), 8);
            row->updateWidget(false);
        }
    }

    void floatSteps()
    {
        const std::pair<std::string, double> steps[] = {
            {"", static_cast<double>(0.01f)}, {"<Inc>0.5</Inc>", 0.5}, {"<Inc>0</Inc>", static_cast<double>(0.01f)}};
        for (const auto &[increment, step] : steps) {
            TestCamera camera(descriptionWith("<Float Name=\"N\"><Value>0.123456</Value><Min>-0.1</Min><Max>9</Max>"
                                              + increment + "</Float>"));
            const auto row = rowOf(camera);
            const auto *spinBox = row->findChild<QDoubleSpinBox *>();
            QCOMPARE(spinBox->singleStep(), step);
            QCOMPARE(spinBox->value(), 0.1235);
            QCOMPARE(spinBox->minimum(), -0.1);
            QCOMPARE(spinBox->maximum(), 9.0);
        }
    }

    void oddFloats()
    {
        TestCamera camera;
        const auto row = rowOf(camera, "AcquisitionLineRate");
        const auto *spinBox = row->findChild<QDoubleSpinBox *>();
        using Limits = std::numeric_limits<double>;
        for (const double odd : {Limits::infinity(), Limits::quiet_NaN(), -Limits::infinity(), Limits::max()}) {
            camera.port.pokeDouble(TestCamera::LineRate, odd);
            camera.map->InvalidateNodes();
            row->updateWidget(false);
            for (const double shown : {spinBox->value(), spinBox->minimum(), spinBox->maximum()})
                QVERIFY(std::isfinite(shown));
        }
    }

    /// Features that contradict themselves: one log line, and an editor if there is a value to show.
    void contradictions()
    {
        const std::tuple<const char *, const char *, int> rows[] = {
            {"minimum above maximum", "<Integer Name=\"N\"><Value>7</Value><Min>10</Min><Max>5</Max></Integer>", 7},
            {"no increment", "<Integer Name=\"N\"><Value>7</Value><Inc>0</Inc></Integer>", 7},
            {"float below its minimum", "<Float Name=\"N\"><Value>7</Value><Min>10</Min></Float>", 7},
            {"no entries", "<Enumeration Name=\"N\"><Value>0</Value></Enumeration>", -1}};
        for (const auto &[name, element, shown] : rows) {
            const InRow at(name);
            init();
            TestCamera camera(descriptionWith(element));
            const auto row = rowOf(camera);
            row->updateWidget(false);
            QCOMPARE(FakeHostCore::instance().callsTo(QStringLiteral("VLogInfo")).size(), 1);
            QCOMPARE(row->isHidden(), shown < 0);
            auto *editor = row->findChild<QAbstractSpinBox *>();
            QCOMPARE(editor != nullptr, shown >= 0);
            if (!editor)
                return;
            QCOMPARE(editor->property("value").toInt(), shown);
            QVERIFY(editor->property("singleStep").toDouble() > 0.0);
        }
    }

    void entriesChangeUnderAnOpenList()
    {
        TestCamera camera(descriptionWith(
            "<Integer Name=\"Extra\"><Value>1</Value></Integer><Integer Name=\"Number\"><Value>1</Value></Integer>"
            "<Enumeration Name=\"N\">"
            "<EnumEntry Name=\"A\"><pIsImplemented>Extra</pIsImplemented><Value>0</Value></EnumEntry>"
            "<EnumEntry Name=\"B\"><Value>1</Value></EnumEntry>"
            "<EnumEntry Name=\"C\"><pIsImplemented>Extra</pIsImplemented><Value>2</Value></EnumEntry>"
            "<pValue>Number</pValue></Enumeration>"));
        const auto row = rowOf(camera);
        row->show();
        auto *comboBox = row->findChild<QComboBox *>();
        comboBox->showPopup();
        QSignalSpy removed(comboBox->model(), &QAbstractItemModel::rowsRemoved);
        QSignalSpy changed(comboBox, &QComboBox::currentTextChanged);
        const auto refreshed = [&](int extra, int number) {
            GenApi::CIntegerPtr(camera.node("Extra"))->SetValue(extra);
            GenApi::CIntegerPtr(camera.node("Number"))->SetValue(number);
            row->updateWidget(false);
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
};

QTEST_MAIN(tst_RowEditors)
#include "tst_RowEditors.moc"
