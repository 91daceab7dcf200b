// SPDX-License-Identifier: MIT
#include <QLabel>
#include <QTest>

#include "Editors.h"
#include "ToolPage/ToolPageWidget.h"

class tst_ToolPageWidget : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        m_camera = std::make_unique<TestCamera>();
        m_page = std::make_unique<ToolPageWidget>();
    }

    void cleanup()
    {
        m_page.reset();
        m_camera.reset();
    }

    void aWriteRefreshesTheGroup()
    {
        ToolPageWidgetItem *power = addRow("Power");
        ToolPageWidgetItem *state = addRow("PowerState");
        ToolPageWidgetItem *gated = addRow("GatedByBoolean");
        QVERIFY(gated->isHidden() && !gated->findChild<QSpinBox *>());
        for (const bool isOn : {true, false}) {
            power->findChild<SwitchButton *>()->click();
            QCOMPARE(state->findChild<SwitchButton *>()->isOn(), isOn);
            QCOMPARE(gated->isHidden(), !isOn);
            QCOMPARE(gated->findChild<QSpinBox *>()->value(), 3);
        }
    }

    void aWriteReadsWhatDependsOnIt()
    {
        QMap<QByteArray, ToolPageWidgetItem *> rows;
        for (const char *name : {"Width", "Gain", "Power", "PowerState", "GatedByBoolean", "Selector", "SelectorState",
                                 "Temperature", "Uncached"})
            rows[name] = addRow(name);
        m_page->show();
        const auto accessesOf = [&](const char *name, auto edit) {
            m_camera->port.resetCounters();
            edit(*rows[name]);
            return QByteArray::fromStdString(m_camera->port.trace());
        };
        const auto enter8 = [](const ToolPageWidgetItem &row) {
            auto *spinBox = row.findChild<QAbstractSpinBox *>();
            spinBox->setProperty("value", 8);
            Q_EMIT spinBox->editingFinished();
        };
        const auto click = [](const ToolPageWidgetItem &row) { row.findChild<SwitchButton *>()->click(); };
        const auto choose = [](const ToolPageWidgetItem &row) { row.findChild<QComboBox *>()->setCurrentIndex(1); };
        // The write, its read-back, and the register that is never cached.
        QCOMPARE(accessesOf("Width", enter8), QByteArray("W0x0:4 R0x0:4 R0x8c:4"));
        QCOMPARE(accessesOf("Selector", choose), QByteArray("W0x8:4 R0x8:4 R0x8c:4"));
        QCOMPARE(accessesOf("Power", click), QByteArray("W0xc:4 R0xc:4 R0x8c:4"));
    }

    void hiddenRowsComeBackWhenShown()
    {
        ToolPageWidgetItem *gated = addRow("GatedByBoolean");
        m_page->show();
        QVERIFY(gated->isHidden());
        m_page->hide();
        GenApi::CBooleanPtr(m_camera->node("Power"))->SetValue(true);
        QVERIFY(gated->isHidden());
        m_page->show();
        QVERIFY(gated->isVisible());
    }

    void otherWidgetsStandAmongRows()
    {
        ToolPageWidgetItem *first = addRow("Width");
        auto *label = new QLabel(QStringLiteral("between"));
        m_page->addWidget(label);
        ToolPageWidgetItem *last = addRow("Gain");
        m_page->setLanguage(1);
        m_page->updateWidget();
        m_page->show();
        QCOMPARE(label->text(), QStringLiteral("between"));
        QVERIFY(first->y() < label->y() && label->y() < last->y());
    }

private:
    ToolPageWidgetItem *addRow(const char *nodeName)
    {
        ToolPageWidgetItem *row = rowOf(*m_camera, nodeName, m_page.get()).release();
        m_page->addWidget(row);
        return row;
    }

    std::unique_ptr<TestCamera> m_camera;
    std::unique_ptr<ToolPageWidget> m_page;
};

QTEST_MAIN(tst_ToolPageWidget)
#include "tst_ToolPageWidget.moc"
