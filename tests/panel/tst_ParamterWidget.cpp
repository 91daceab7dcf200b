// SPDX-License-Identifier: MIT
#include <QLabel>
#include <QLineEdit>
#include <QTimer>
#include <QToolButton>

#include "CuratedPanel.h"
#include "FaultyNode.h"
#include "FaultyNodeMap.h"
#include "FeatureTree/FeatureTreeView.h"
#include "FeatureTree/TreeModel.h"
#include "PanelCameraFixture.h"
#include "ToolPage/CTabWidget.h"
#include "support/BracketTranslator.h"

namespace {

constexpr int LiveRefreshMs = 1500;

const QStringList InnerTitles = words("Commom Trigger Advance");
const QStringList MainTitles = words("Common Attribute|All Attribute", '|');

} // namespace

class tst_ParamterWidget : public PanelCameraFixture
{
    Q_OBJECT

private Q_SLOTS:
    void init() { start(); }
    void cleanup() { end(); }

    void defaultPanel()
    {
        QCOMPARE(tabTexts(mainTabs()), MainTitles);
        QCOMPARE(mainTabs()->currentIndex(), 0);
        QCOMPARE(innerTabs()->count(), 0);
        QVERIFY(!find<FeatureTreeView>("widget_featrue")->model());
        QVERIFY(m_panel->styleSheet().contains("#wdgBackground"_s));
        find<QLineEdit>("edit_search")->setText("gain"_s);
        find<QToolButton>("toolButton")->click();
        for (const char *name : {"edit_search", "cboboxLevel", "toolButton"})
            QVERIFY2(find<QWidget>(name)->focusPolicy() & Qt::TabFocus, name);
        for (const char *name : {"edit_search", "cboboxLevel", "widget_featrue"})
            QVERIFY2(!find<QWidget>(name)->accessibleName().isEmpty(), name);
        QCOMPARE(m_host.callsTo("VLogInfo"_s), QStringList());
    }

    void pagesByDevice()
    {
        for (const auto &[name, key, card, typeCode, mainTab, tree, asked] :
             {std::tuple("area-scan camera", "cam", false, "2", 0, true,
                         "GetAttrNodeMap(3, cam, 3)|GetCameraInfo(cam, 6)"),
              std::tuple("attributes only", "cam", false, "4", 1, true,
                         "GetAttrNodeMap(3, cam, 3)|GetCameraInfo(cam, 6)"),
              std::tuple("card", "卡", true, "", 1, true, "GetAttrNodeMap(2, 卡, 3)"),
              std::tuple("no node map", "other", false, "", 0, false,
                         "GetAttrNodeMap(3, other, 3)|GetCameraInfo(other, 6)")}) {
            const InRow inRow(name);
            start();
            const QString device = QString::fromUtf8(key);
            m_host.setNodeMap(HostCore::FOCUS_CARD, "卡", m_camera->map);
            m_host.setCameraInfo("cam", HostCore::CAM_INFO_TYPE_CODE, typeCode);
            m_panel->setCard(card);
            m_host.clearCalls();
            m_panel->initUI(device);
            QCOMPARE(m_host.callsTo(words("GetAttrNodeMap GetCameraInfo")), words(asked, '|'));
            QCOMPARE(tabTexts(innerTabs()), InnerTitles);
            QCOMPARE(mainTabs()->currentIndex(), mainTab);
            const auto *view = find<FeatureTreeView>("widget_featrue");
            QCOMPARE(view->model() && view->model()->rowCount() == 1, tree);
            QCOMPARE(view->deviceName, device);
            QCOMPARE(m_host.callsTo("VLogInfo"_s), QStringList());
        }
    }

    void faultyNodeMaps()
    {
        FaultyNode node([] { throw RUNTIME_EXCEPTION("refused"); });
        for (const char *fault : {"node throws", "map throws", "null node"}) {
            const InRow inRow(fault);
            start();
            const bool mapThrows = qstrcmp(fault, "map throws") == 0;
            int lookUps = 0;
            FaultyNodeMap map(qstrcmp(fault, "null node") == 0 ? nullptr : &node, [&] {
                if (mapThrows && ++lookUps > 3)
                    throw RUNTIME_EXCEPTION("no nodes");
            });
            m_messages->allow("An error is raised"_s);
            m_host.setNodeMap(HostCore::FOCUS_CAMERA, "bad", &map);
            m_panel->initUI("bad"_s);
            QCOMPARE(tabTexts(innerTabs()), InnerTitles);
            find<QLineEdit>("edit_search")->setText("x"_s);
            QCOMPARE(m_host.calls().contains("VLogInfo(ParamterWidget, no nodes, 0)"_s), mapThrows);
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
        m_panel->setPanelWidgetVisiable(false);
        m_panel->setPanelWidgetVisiable(false);
        QCOMPARE(tabTexts(mainTabs()), MainTitles.mid(1));
        m_panel->setAllDetailWidgetVisiable(false);
        QCOMPARE(mainTabs()->count(), 0);
        m_panel->setAllDetailWidgetVisiable(true);
        m_panel->setPanelWidgetVisiable(true);
        QCOMPARE(tabTexts(mainTabs()), MainTitles);
    }

    void language()
    {
        m_panel->initUI("cam"_s);
        BracketTranslator translator;
        QCoreApplication::installTranslator(&translator);
        m_panel->retranslate(1);
        QCOMPARE(tabTexts(mainTabs()), words("[Common Attribute]|[All Attribute]", '|'));
        QCOMPARE(tabTexts(innerTabs()), words("[Commom] [Trigger] [Advance]"));
        QCOMPARE(find<QToolButton>("toolButton")->text(), "[Expand]"_s);
        QCOMPARE(find<QLineEdit>("edit_search")->placeholderText(), "[Please input paramter name]"_s);
        QCOMPARE(find<QLabel>("label")->text(), "[User Level]"_s);
        QCOMPARE(m_panel->windowTitle(), "[Form]"_s);
        QCOMPARE(find<QComboBox>("cboboxLevel")->itemText(2), "[Guru]"_s);
        find<QToolButton>("toolButton")->click();
        m_panel->retranslate(1);
        QCOMPARE(find<QToolButton>("toolButton")->text(), "[Collapse]"_s);
        QCoreApplication::removeTranslator(&translator);
        m_panel->retranslate(-1); // as any but English
        QCOMPARE(find<QToolButton>("toolButton")->width(), 60);
        m_panel->retranslate(0);
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
        QCOMPARE(interval->contextMenuPolicy(), Qt::NoContextMenu);
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
        for (const auto &[mainTab, innerTab] :
             {std::pair(1, 0), std::pair(0, 0), std::pair(0, 2), std::pair(1, 2), std::pair(0, 2), std::pair(0, 0)}) {
            mainTabs()->setCurrentIndex(mainTab);
            innerTabs()->setCurrentIndex(innerTab);
            QCOMPARE(timer->isActive(), mainTab == 0 && innerTab == 0);
        }
    }

    void disabledPanelsRest()
    {
        m_panel->initUI("cam"_s);
        auto *const toggle = m_panel->findChild<SwitchButton *>();
        toggle->click();
        QVERIFY(triggerTimer()->isActive());
        m_panel->setParamterViewDisable();
        QVERIFY(!triggerTimer()->isActive());
        m_host.clearCalls();
        toggle->click();
        toggle->click();
        mainTabs()->setCurrentIndex(1);
        mainTabs()->setCurrentIndex(0);
        QVERIFY(!liveRefreshTimer()->isActive() && !triggerTimer()->isActive());
        QCOMPARE(m_host.callsTo("SetCameraNodeValue"_s), QStringList());
    }

    /// The node map goes while half a number stands in a field; neither the user nor the host's events may reach into
    /// it any more.
    void releasedDevices()
    {
        const std::tuple<const char *, int, PageSet> rows[] = {{"Exposure Time(us)", 0, PageSet::AreaScan},
                                                               {"TiltCorrection", 3, PageSet::Profiler},
                                                               {"SensorMethod", 0, PageSet::StructuredLight}};
        m_messages.reset();
        for (const auto &[field, page, pages] : rows) {
            const InRow inRow(field);
            CuratedPanel curated(pages == PageSet::Profiler ? profilerFeatures() : structuredLightFeatures(), pages,
                                 [](CuratedPanel &panel) { panel.host.setNodeValue("cam", "Left2DImage", "True"); });
            ParamterWidget &panel = *curated.panel;
            panel.show();
            QVERIFY(QTest::qWaitForWindowActive(&panel));
            curated.innerTabs()->setCurrentIndex(page);
            curated.editor<QAbstractSpinBox>(field)->setFocus();
            QTest::keyClicks(QApplication::focusWidget(), "12"_s);
            panel.setParamterViewDisable();
            curated.host.setNodeMap(HostCore::FOCUS_CAMERA, "cam", nullptr);
            curated.camera.map->InvalidateNodes();
            curated.camera.port.resetCounters();
            curated.host.clearCalls();

            panel.startAcquireOperation();
            panel.stopAcquireOperation();
            panel.updateWidget(true);
            panel.init3DParameters();
            panel.setDrawRoiPos(0, 0, 50, 50);
            panel.on2DGrabOutputChanged(0, false);
            panel.on2DShowTypeChanged(1);
            panel.onRealUpdateTimerTimeout();
            panel.retranslate(1);
            for (int tab = 0; tab < curated.innerTabs()->count(); ++tab)
                curated.innerTabs()->setCurrentIndex(tab);
            for (ToolPageWidgetItem *row : panel.findChildren<ToolPageWidgetItem *>()) {
                for (QPushButton *button : row->findChildren<QPushButton *>())
                    button->click();
                for (QComboBox *list : row->findChildren<QComboBox *>())
                    QVERIFY2(!list->isEnabled(), qPrintable(row->objectName()));
            }
            QCOMPARE(curated.host.calls(), QStringList());
            curated.mainTabs()->setCurrentIndex(1);
            panel.findChild<FeatureTreeView *>()->expandAll();
            panel.findChild<QComboBox *>("cboboxLevel"_s)->setCurrentIndex(2);
            QVERIFY(!panel.grab().isNull());
            panel.hide();
            QCOMPARE(curated.camera.port.accesses.size(), size_t(0));
            QCOMPARE(curated.host.callsTo("SetCameraNodeValue"_s), QStringList());
        }
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
};

QTEST_MAIN(tst_ParamterWidget)
#include "tst_ParamterWidget.moc"
