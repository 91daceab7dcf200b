// SPDX-License-Identifier: MIT
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QSpinBox>
#include <QTabWidget>
#include <QTextBrowser>
#include <QTimer>
#include <QToolButton>

#include "FaultyNode.h"
#include "FaultyNodeMap.h"
#include "FeatureTree/FeatureTreeView.h"
#include "FeatureTree/TreeModel.h"
#include "PanelDescription.h"
#include "ParamterWidget/ParamterWidget.h"
#include "ToolPage/CTabWidget.h"
#include "ToolPage/CToolBox.h"
#include "ToolPage/CToolPage.h"
#include "ToolPage/SwitchButton.h"
#include "ToolPage/ToolPageWidgetItem.h"
#include "support/BracketTranslator.h"
#include "support/FakeHostCore.h"
#include "support/FatalMessages.h"
#include "support/Rows.h"

namespace {

constexpr int LiveRefreshMs = 1500;

QStringList tabTexts(const QTabWidget *tabs)
{
    QStringList texts;
    for (int i = 0; i < tabs->count(); ++i)
        texts << tabs->tabText(i);
    return texts;
}

const QStringList InnerTitles = words("Commom Trigger Advance");
const QStringList MainTitles = words("Common Attribute|All Attribute", '|');

} // namespace

class tst_ParamterWidget : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        m_host.reset();
        m_messages = std::make_unique<FatalMessages>();
        m_camera = std::make_unique<PanelCamera>();
        m_host.setNodeMap(HostCore::FOCUS_CAMERA, "cam", m_camera->map);
        m_panel = std::make_unique<ParamterWidget>();
    }

    void cleanup()
    {
        m_panel.reset();
        m_camera.reset();
        m_messages.reset();
    }

    void defaultPanel()
    {
        QCOMPARE(tabTexts(mainTabs()), MainTitles);
        QCOMPARE(mainTabs()->currentIndex(), 0);
        QCOMPARE(innerTabs()->count(), 0);
        QVERIFY(!find<FeatureTreeView>("widget_featrue")->model());
        QVERIFY(m_panel->styleSheet().contains("#wdgBackground"_s));
        m_panel->findChild<QLineEdit *>("edit_search"_s)->setText("gain"_s);
        find<QToolButton>("toolButton")->click();
        QCOMPARE(m_host.callsTo("VLogInfo"_s), QStringList());
    }

    void pagesByDevice()
    {
        struct Row
        {
            const char *name, *device;
            bool card;
            const char *typeCode;
            int mainTab;
            bool tree;
            const char *calls;
        };
        for (const Row &row :
             {Row{"area-scan camera", "cam", false, "2", 0, true, "GetAttrNodeMap(3, cam, 3)|GetCameraInfo(cam, 6)"},
              Row{"attributes only", "cam", false, "4", 1, true, "GetAttrNodeMap(3, cam, 3)|GetCameraInfo(cam, 6)"},
              Row{"card", "卡", true, "", 1, true, "GetAttrNodeMap(2, 卡, 3)"},
              Row{"no node map", "other", false, "", 0, false, "GetAttrNodeMap(3, other, 3)|GetCameraInfo(other, 6)"},
              Row{"empty name", "", false, "", 0, false, "GetAttrNodeMap(3, , 3)|GetCameraInfo(, 6)"}}) {
            const InRow inRow(row.name);
            cleanup();
            init();
            const QString device = QString::fromUtf8(row.device);
            m_host.setNodeMap(HostCore::FOCUS_CARD, "卡", m_camera->map);
            m_host.setCameraInfo("cam", HostCore::CAM_INFO_TYPE_CODE, row.typeCode);
            m_panel->setCard(row.card);
            m_host.clearCalls();
            m_panel->initUI(device);
            QCOMPARE(m_host.callsTo(words("GetAttrNodeMap GetCameraInfo")), words(row.calls, '|'));
            QCOMPARE(tabTexts(innerTabs()), InnerTitles);
            QCOMPARE(mainTabs()->currentIndex(), row.mainTab);
            const auto *view = find<FeatureTreeView>("widget_featrue");
            QCOMPARE(view->model() && view->model()->rowCount() == 1, row.tree);
            QCOMPARE(view->deviceName, device);
            QCOMPARE(m_host.callsTo("VLogInfo"_s), QStringList());
        }
    }

    void spinBoxesOpenNoContextMenu()
    {
        m_panel->initUI("cam"_s);
        const auto spinBoxes = m_panel->findChildren<QAbstractSpinBox *>();
        QVERIFY(spinBoxes.size() >= 5);
        for (const QAbstractSpinBox *spinBox : spinBoxes)
            QCOMPARE(spinBox->contextMenuPolicy(), Qt::NoContextMenu);
    }

    void faultyNodeMaps()
    {
        struct Row
        {
            const char *name;
            bool mapThrows, nodeIsNull;
        };
        for (const Row &row :
             {Row{"node throws", false, false}, Row{"map throws", true, false}, Row{"null node", false, true}}) {
            const InRow inRow(row.name);
            cleanup();
            init();
            FaultyNode node([] { throw RUNTIME_EXCEPTION("refused"); });
            int lookUps = 0;
            FaultyNodeMap map(row.nodeIsNull ? nullptr : &node, [&] {
                if (row.mapThrows && ++lookUps > 3)
                    throw RUNTIME_EXCEPTION("no nodes");
            });
            m_messages->allow("An error is raised"_s);
            m_host.setNodeMap(HostCore::FOCUS_CAMERA, "bad", &map);
            m_panel->initUI("bad"_s);
            QCOMPARE(tabTexts(innerTabs()), InnerTitles);
            find<QLineEdit>("edit_search")->setText("x"_s);
            const QStringList told = m_host.callsTo("VLogInfo"_s);
            QCOMPARE(told.contains("VLogInfo(ParamterWidget, no nodes, 0)"_s), row.mapThrows);
            for (const ToolPageWidgetItem *item : m_panel->findChildren<ToolPageWidgetItem *>())
                QVERIFY(item->parentWidget() != m_panel.get()); // no row lies about outside of the pages
            m_panel.reset();
        }
    }

    void tabsComeAndGo()
    {
        for (int current : {0, 1}) { // shown tabs stay as they are
            mainTabs()->setCurrentIndex(current);
            m_panel->setPanelWidgetVisiable(true);
            m_panel->setAllDetailWidgetVisiable(true);
            QCOMPARE(mainTabs()->count(), 2);
            QCOMPARE(mainTabs()->currentIndex(), current);
        }
        for (int time = 0; time < 2; ++time) {
            m_panel->setPanelWidgetVisiable(false);
            QCOMPARE(tabTexts(mainTabs()), MainTitles.mid(1));
        }
        m_panel->setAllDetailWidgetVisiable(false);
        QCOMPARE(mainTabs()->count(), 0);
        m_panel->setAllDetailWidgetVisiable(true);
        m_panel->setPanelWidgetVisiable(true);
        QCOMPARE(tabTexts(mainTabs()), MainTitles);
    }

    void language()
    {
        m_panel->initUI("cam"_s);
        auto *const level = find<QComboBox>("cboboxLevel");
        auto *const tree = find<FeatureTreeView>("widget_featrue");
        level->setCurrentIndex(2);
        m_host.clearCalls();

        BracketTranslator translator;
        QCoreApplication::installTranslator(&translator);
        m_panel->retranslate(1);
        QCOMPARE(tabTexts(mainTabs()), words("[Common Attribute]|[All Attribute]", '|'));
        QCOMPARE(tabTexts(innerTabs()), words("[Commom] [Trigger] [Advance]"));
        QCOMPARE(find<QToolButton>("toolButton")->text(), "[Expand]"_s);
        QCOMPARE(find<QLineEdit>("edit_search")->placeholderText(), "[Please input paramter name]"_s);
        QCOMPARE(find<QLabel>("label")->text(), "[User Level]"_s);
        QCOMPARE(m_panel->windowTitle(), "[Form]"_s);
        QCOMPARE(level->itemText(2), "[Guru]"_s);
        QCOMPARE(level->count(), 3);

        // The level selector starts over, but the tree keeps its filter and nothing is stored.
        QCOMPARE(level->currentIndex(), 0);
        QCOMPARE(m_host.calls(), QStringList());
        const QModelIndex root = tree->model()->index(0, 0);
        const QModelIndex acquisition = tree->model()->index(2, 0, root);
        QVERIFY(!tree->isRowHidden(5, acquisition));

        find<QToolButton>("toolButton")->click();
        m_panel->retranslate(1);
        QCOMPARE(find<QToolButton>("toolButton")->text(), "[Collapse]"_s);
        QCoreApplication::removeTranslator(&translator);
        const std::pair<int, int> buttonWidths[] = {{-1, 60}, {2, 60}, {0, 85}};
        for (const auto &[index, width] : buttonWidths) {
            m_panel->retranslate(index);
            QCOMPARE(find<QToolButton>("toolButton")->width(), width);
        }
        QCOMPARE(find<QToolButton>("toolButton")->text(), "Collapse"_s);
    }

    void softTrigger()
    {
        m_panel->initUI("cam"_s);
        auto *const toggle = m_panel->findChild<SwitchButton *>();
        QSpinBox *interval = nullptr;
        for (QSpinBox *spinBox : m_panel->findChildren<QSpinBox *>()) {
            if (spinBox->maximum() == 10000)
                interval = spinBox;
        }
        QVERIFY(interval);
        QCOMPARE(interval->value(), 1000);
        interval->setValue(-5);
        QCOMPARE(interval->value(), 1);

        m_host.setWriteResult("cam", "TriggerSoftware", -1);
        const auto triggers = [this] { return m_host.callsTo("SetCameraNodeValue"_s); };
        toggle->click();
        QVERIFY(!interval->isEnabled());
        QCOMPARE(interval->value(), 1);
        QTRY_VERIFY(triggers().size() >= 3);
        QCOMPARE(triggers().first(), "SetCameraNodeValue(cam, TriggerSoftware, )"_s);
        toggle->click();
        QVERIFY(interval->isEnabled());
        QVERIFY(!triggerTimer()->isActive());
    }

    void liveRefreshOfTheFirstPage()
    {
        QTimer *const timer = liveRefreshTimer();
        QVERIFY(timer && timer->isActive());
        m_panel->initUI("cam"_s);
        QVERIFY(timer->isActive());
        struct Step
        {
            int mainTab, innerTab;
        };
        for (const Step &step : {Step{1, 0}, Step{0, 0}, Step{0, 2}, Step{1, 2}, Step{0, 2}, Step{0, 0}}) {
            mainTabs()->setCurrentIndex(step.mainTab);
            innerTabs()->setCurrentIndex(step.innerTab);
            QCOMPARE(timer->isActive(), step.mainTab == 0 && step.innerTab == 0);
        }
    }

    void disabledPanelsRest()
    {
        m_panel->initUI("cam"_s);
        auto *const tree = find<FeatureTreeView>("widget_featrue");
        auto *const toggle = m_panel->findChild<SwitchButton *>();
        toggle->click();
        QVERIFY(triggerTimer()->isActive());
        m_panel->setParamterViewDisable();
        QVERIFY(!triggerTimer()->isActive());
        m_camera->map->InvalidateNodes();
        m_camera->port.resetCounters();
        m_host.clearCalls();

        toggle->click();
        toggle->click();
        mainTabs()->setCurrentIndex(1);
        mainTabs()->setCurrentIndex(0);
        QVERIFY(!liveRefreshTimer()->isActive() && !triggerTimer()->isActive());

        m_panel->show();
        mainTabs()->setCurrentIndex(1);
        const QModelIndex root = tree->model()->index(0, 0);
        tree->expandAll();
        tree->setCurrentIndex(tree->model()->index(0, 0, tree->model()->index(0, 0, root)));
        find<QComboBox>("cboboxLevel")->setCurrentIndex(2);
        QVERIFY(!tree->grab().isNull());
        QCOMPARE(m_camera->port.accesses.size(), size_t(0));
        QCOMPARE(m_host.callsTo("SetCameraNodeValue"_s), QStringList());
    }

    void nodeHelpersUseThePanelsDevice()
    {
        m_panel->initUI("cam"_s);
        int value = 0, min = 0, max = 0, inc = 0;
        QCOMPARE(m_panel->getCameraNodeInfo("Width"_s, value, min, max, inc), 0);
        QCOMPARE(value, 640);
        QCOMPARE(m_panel->setCameraNodeValue("Width"_s, 800), 0);
        QCOMPARE(m_camera->port.peek(TestCamera::Width), uint64_t(800));
        QVERIFY(m_panel->getValidNodeFromName("Gain"_s, m_camera->map));
        ParamterWidget empty;
        QCOMPARE(empty.setCameraNodeValue("Width"_s, 640), -1);
    }

    void controlsAreReachable()
    {
        for (const char *name : {"edit_search", "cboboxLevel", "toolButton"})
            QVERIFY2(find<QWidget>(name)->focusPolicy() & Qt::TabFocus, name);
        for (const char *name : {"edit_search", "cboboxLevel", "widget_featrue"})
            QVERIFY2(!find<QWidget>(name)->accessibleName().isEmpty(), name);
    }

    /// They would lie over the corner of the panel.
    void unplacedControlsAreInvisible()
    {
        m_panel->show();
        for (const QPushButton *button : m_panel->findChildren<QPushButton *>()) {
            if (button->text() == "Execute"_s)
                QVERIFY(!button->isVisible());
        }
        QVERIFY(!m_panel->findChild<SwitchButton *>()->isVisible());
    }

private:
    template <class Widget>
    Widget *find(const char *name) const
    {
        return m_panel->findChild<Widget *>(QString::fromLatin1(name));
    }
    QTabWidget *mainTabs() const { return find<QTabWidget>("tabMainWidget"); }
    CTabWidget *innerTabs() const { return find<CTabWidget>("tabWidget"); }

    QTimer *liveRefreshTimer() const
    {
        for (QTimer *timer : m_panel->findChildren<QTimer *>(QString(), Qt::FindDirectChildrenOnly)) {
            if (timer->interval() == LiveRefreshMs)
                return timer;
        }
        return nullptr;
    }

    QTimer *triggerTimer() const
    {
        for (QTimer *timer : m_panel->findChildren<QTimer *>()) {
            if (timer->timerType() == Qt::PreciseTimer)
                return timer;
        }
        return nullptr;
    }

    FakeHostCore &m_host = FakeHostCore::instance();
    std::unique_ptr<FatalMessages> m_messages;
    std::unique_ptr<PanelCamera> m_camera;
    std::unique_ptr<ParamterWidget> m_panel;
};

QTEST_MAIN(tst_ParamterWidget)
#include "tst_ParamterWidget.moc"
