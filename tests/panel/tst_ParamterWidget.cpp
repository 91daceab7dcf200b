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
#include <QtTest>

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

namespace {

constexpr int LiveRefreshMs = 1500;

QStringList tabTexts(const QTabWidget *tabs)
{
    QStringList texts;
    for (int i = 0; i < tabs->count(); ++i)
        texts << tabs->tabText(i);
    return texts;
}

const QStringList InnerTitles = {QStringLiteral("Commom"), QStringLiteral("Trigger"), QStringLiteral("Advance")};

} // namespace

class tst_ParamterWidget : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();

    void defaultPanel();
    void pagesByDevice_data();
    void pagesByDevice();
    void spinBoxesOpenNoContextMenu();
    void faultyNodeMaps_data();
    void faultyNodeMaps();
    void tabsComeAndGo();
    void language();
    void softTrigger();
    void liveRefreshFollowsTheTabs();
    void disabledPanelsRest();
    void nodeHelpersUseThePanelsDevice();
    void controlsAreReachable();
    void unplacedControlsAreInvisible();

private:
    template <class Widget>
    Widget *find(const char *name) const
    {
        return m_panel->findChild<Widget *>(QString::fromLatin1(name));
    }
    QTabWidget *mainTabs() const { return find<QTabWidget>("tabMainWidget"); }
    CTabWidget *innerTabs() const { return find<CTabWidget>("tabWidget"); }
    QTimer *liveRefreshTimer() const;
    QTimer *triggerTimer() const;

    FakeHostCore &m_host = FakeHostCore::instance();
    std::unique_ptr<FatalMessages> m_messages;
    std::unique_ptr<PanelCamera> m_camera;
    std::unique_ptr<ParamterWidget> m_panel;
};

void tst_ParamterWidget::init()
{
    m_host.reset();
    m_messages = std::make_unique<FatalMessages>();
    m_camera = std::make_unique<PanelCamera>();
    m_host.setNodeMap(HostCore::FOCUS_CAMERA, "cam", m_camera->map);
    m_panel = std::make_unique<ParamterWidget>();
}

void tst_ParamterWidget::cleanup()
{
    m_panel.reset();
    m_camera.reset();
    m_messages.reset();
}

QTimer *tst_ParamterWidget::liveRefreshTimer() const
{
    for (QTimer *timer : m_panel->findChildren<QTimer *>(QString(), Qt::FindDirectChildrenOnly)) {
        if (timer->interval() == LiveRefreshMs)
            return timer;
    }
    return nullptr;
}

QTimer *tst_ParamterWidget::triggerTimer() const
{
    for (QTimer *timer : m_panel->findChildren<QTimer *>()) {
        if (timer->timerType() == Qt::PreciseTimer)
            return timer;
    }
    return nullptr;
}

void tst_ParamterWidget::defaultPanel()
{
    QCOMPARE(tabTexts(mainTabs()), QStringList({QStringLiteral("Common Attribute"), QStringLiteral("All Attribute")}));
    QCOMPARE(mainTabs()->currentIndex(), 0);
    QCOMPARE(innerTabs()->count(), 0);
    QVERIFY(!find<FeatureTreeView>("widget_featrue")->model());
    QVERIFY(m_panel->styleSheet().contains(QStringLiteral("#wdgBackground")));
    m_panel->findChild<QLineEdit *>(QStringLiteral("edit_search"))->setText(QStringLiteral("gain"));
    find<QToolButton>("toolButton")->click();
    QCOMPARE(m_host.callsTo(QStringLiteral("VLogInfo")), QStringList());
}

void tst_ParamterWidget::pagesByDevice_data()
{
    QTest::addColumn<QString>("device");
    QTest::addColumn<bool>("card");
    QTest::addColumn<QByteArray>("typeCode");
    QTest::addColumn<int>("mainTab");
    QTest::addColumn<bool>("tree");
    QTest::addColumn<QStringList>("calls");
    const QString mapOfCamera = QStringLiteral("GetAttrNodeMap(3, cam, 3)");
    const QString typeOfCamera = QStringLiteral("GetCameraInfo(cam, 6)");
    QTest::newRow("area-scan camera") << QStringLiteral("cam") << false << QByteArray("2") << 0 << true
                                      << QStringList({mapOfCamera, typeOfCamera});
    QTest::newRow("attributes only") << QStringLiteral("cam") << false << QByteArray("4") << 1 << true
                                     << QStringList({mapOfCamera, typeOfCamera});
    QTest::newRow("card") << QStringLiteral("卡") << true << QByteArray() << 1 << true
                          << QStringList({QStringLiteral("GetAttrNodeMap(2, 卡, 3)")});
    QTest::newRow("no node map") << QStringLiteral("other") << false << QByteArray() << 0 << false
                                 << QStringList({QStringLiteral("GetAttrNodeMap(3, other, 3)"),
                                                 QStringLiteral("GetCameraInfo(other, 6)")});
    QTest::newRow("empty name") << QString() << false << QByteArray() << 0 << false
                                << QStringList({QStringLiteral("GetAttrNodeMap(3, , 3)"),
                                                QStringLiteral("GetCameraInfo(, 6)")});
}

void tst_ParamterWidget::pagesByDevice()
{
    QFETCH(QString, device);
    QFETCH(bool, card);
    QFETCH(QByteArray, typeCode);
    QFETCH(bool, tree);
    m_host.setNodeMap(HostCore::FOCUS_CARD, "卡", m_camera->map);
    m_host.setCameraInfo("cam", HostCore::CAM_INFO_TYPE_CODE, typeCode.toStdString());
    m_panel->setCard(card);
    m_host.clearCalls();
    m_panel->initUI(device);

    QTEST(m_host.callsTo({QStringLiteral("GetAttrNodeMap"), QStringLiteral("GetCameraInfo")}), "calls");
    QCOMPARE(tabTexts(innerTabs()), InnerTitles);
    QTEST(mainTabs()->currentIndex(), "mainTab");
    const auto *view = find<FeatureTreeView>("widget_featrue");
    QCOMPARE(view->model() && view->model()->rowCount() == 1, tree);
    QCOMPARE(view->deviceName, device);
    QCOMPARE(m_host.callsTo(QStringLiteral("VLogInfo")), QStringList());
}

void tst_ParamterWidget::spinBoxesOpenNoContextMenu()
{
    m_panel->initUI(QStringLiteral("cam"));
    const auto spinBoxes = m_panel->findChildren<QAbstractSpinBox *>();
    QVERIFY(spinBoxes.size() >= 5);
    for (const QAbstractSpinBox *spinBox : spinBoxes)
        QCOMPARE(spinBox->contextMenuPolicy(), Qt::NoContextMenu);
}

void tst_ParamterWidget::faultyNodeMaps_data()
{
    QTest::addColumn<bool>("mapThrows");
    QTest::addColumn<bool>("nodeIsNull");
    QTest::newRow("node throws") << false << false;
    QTest::newRow("map throws") << true << false;
    QTest::newRow("null node") << false << true;
}

void tst_ParamterWidget::faultyNodeMaps()
{
    QFETCH(bool, mapThrows);
    QFETCH(bool, nodeIsNull);
    FaultyNode node([] { throw RUNTIME_EXCEPTION("refused"); });
    int lookUps = 0;
    FaultyNodeMap map(nodeIsNull ? nullptr : &node, [&] {
        if (mapThrows && ++lookUps > 3)
            throw RUNTIME_EXCEPTION("no nodes");
    });
    m_messages->allow(QStringLiteral("An error is raised"));
    m_host.setNodeMap(HostCore::FOCUS_CAMERA, "bad", &map);
    m_panel->initUI(QStringLiteral("bad"));
    QCOMPARE(tabTexts(innerTabs()), InnerTitles);
    find<QLineEdit>("edit_search")->setText(QStringLiteral("x"));
    const bool told =
        m_host.callsTo(QStringLiteral("VLogInfo")).contains(QStringLiteral("VLogInfo(ParamterWidget, no nodes, 0)"));
    QCOMPARE(told, mapThrows);
    for (const ToolPageWidgetItem *row : m_panel->findChildren<ToolPageWidgetItem *>())
        QVERIFY(row->parentWidget() != m_panel.get()); // no row lies about outside of the pages
    m_panel.reset();
}

void tst_ParamterWidget::tabsComeAndGo()
{
    const QString common = QStringLiteral("Common Attribute");
    const QString attributes = QStringLiteral("All Attribute");
    for (int current : {0, 1}) { // shown tabs stay as they are
        mainTabs()->setCurrentIndex(current);
        m_panel->setPanelWidgetVisiable(true);
        m_panel->setAllDetailWidgetVisiable(true);
        QCOMPARE(mainTabs()->count(), 2);
        QCOMPARE(mainTabs()->currentIndex(), current);
    }
    m_panel->setPanelWidgetVisiable(false);
    QCOMPARE(tabTexts(mainTabs()), QStringList({attributes}));
    m_panel->setPanelWidgetVisiable(false);
    QCOMPARE(tabTexts(mainTabs()), QStringList({attributes}));
    m_panel->setAllDetailWidgetVisiable(false);
    QCOMPARE(mainTabs()->count(), 0);
    m_panel->setAllDetailWidgetVisiable(true);
    m_panel->setPanelWidgetVisiable(true);
    QCOMPARE(tabTexts(mainTabs()), QStringList({common, attributes}));
}

void tst_ParamterWidget::language()
{
    m_panel->initUI(QStringLiteral("cam"));
    auto *const level = find<QComboBox>("cboboxLevel");
    auto *const tree = find<FeatureTreeView>("widget_featrue");
    level->setCurrentIndex(2);
    m_host.clearCalls();

    BracketTranslator translator;
    QCoreApplication::installTranslator(&translator);
    m_panel->retranslate(1);
    QCOMPARE(tabTexts(mainTabs()),
             QStringList({QStringLiteral("[Common Attribute]"), QStringLiteral("[All Attribute]")}));
    QCOMPARE(tabTexts(innerTabs()),
             QStringList({QStringLiteral("[Commom]"), QStringLiteral("[Trigger]"), QStringLiteral("[Advance]")}));
    QCOMPARE(find<QToolButton>("toolButton")->text(), QStringLiteral("[Expand]"));
    QCOMPARE(find<QLineEdit>("edit_search")->placeholderText(), QStringLiteral("[Please input paramter name]"));
    QCOMPARE(find<QLabel>("label")->text(), QStringLiteral("[User Level]"));
    QCOMPARE(m_panel->windowTitle(), QStringLiteral("[Form]"));
    QCOMPARE(level->itemText(2), QStringLiteral("[Guru]"));
    QCOMPARE(level->count(), 3);

    // The level selector starts over, but the tree keeps its filter and nothing is stored.
    QCOMPARE(level->currentIndex(), 0);
    QCOMPARE(m_host.calls(), QStringList());
    const QModelIndex root = tree->model()->index(0, 0);
    const QModelIndex acquisition = tree->model()->index(2, 0, root);
    QVERIFY(!tree->isRowHidden(5, acquisition));

    find<QToolButton>("toolButton")->click();
    m_panel->retranslate(1);
    QCOMPARE(find<QToolButton>("toolButton")->text(), QStringLiteral("[Collapse]"));
    QCoreApplication::removeTranslator(&translator);
    const std::pair<int, int> buttonWidths[] = {{-1, 60}, {2, 60}, {0, 85}};
    for (const auto &[index, width] : buttonWidths) {
        m_panel->retranslate(index);
        QCOMPARE(find<QToolButton>("toolButton")->width(), width);
    }
    QCOMPARE(find<QToolButton>("toolButton")->text(), QStringLiteral("Collapse"));
}

void tst_ParamterWidget::softTrigger()
{
    m_panel->initUI(QStringLiteral("cam"));
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
    const auto triggers = [this] { return m_host.callsTo(QStringLiteral("SetCameraNodeValue")); };
    toggle->click();
    QVERIFY(!interval->isEnabled());
    QCOMPARE(interval->value(), 1);
    QTRY_VERIFY(triggers().size() >= 3);
    QCOMPARE(triggers().first(), QStringLiteral("SetCameraNodeValue(cam, TriggerSoftware, )"));
    toggle->click();
    QVERIFY(interval->isEnabled());
    QVERIFY(!triggerTimer()->isActive());
}

void tst_ParamterWidget::liveRefreshFollowsTheTabs()
{
    QTimer *const timer = liveRefreshTimer();
    QVERIFY(timer);
    QVERIFY(timer->isActive());
    m_panel->initUI(QStringLiteral("cam"));
    QVERIFY(timer->isActive());
    mainTabs()->setCurrentIndex(1);
    QVERIFY(!timer->isActive());
    mainTabs()->setCurrentIndex(0);
    QVERIFY(timer->isActive());
    innerTabs()->setCurrentIndex(2);
    QVERIFY(!timer->isActive());
    mainTabs()->setCurrentIndex(1);
    mainTabs()->setCurrentIndex(0);
    QVERIFY(!timer->isActive());
    innerTabs()->setCurrentIndex(0);
    QVERIFY(timer->isActive());
}

void tst_ParamterWidget::disabledPanelsRest()
{
    m_panel->initUI(QStringLiteral("cam"));
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
    QCOMPARE(m_host.callsTo(QStringLiteral("SetCameraNodeValue")), QStringList());
}

void tst_ParamterWidget::nodeHelpersUseThePanelsDevice()
{
    m_panel->initUI(QStringLiteral("cam"));
    int value = 0, min = 0, max = 0, inc = 0;
    QCOMPARE(m_panel->getCameraNodeInfo(QStringLiteral("Width"), value, min, max, inc), 0);
    QCOMPARE(value, 640);
    QCOMPARE(m_panel->setCameraNodeValue(QStringLiteral("Width"), 800), 0);
    QCOMPARE(m_camera->port.peek(TestCamera::Width), uint64_t(800));
    QVERIFY(m_panel->getValidNodeFromName(QStringLiteral("Gain"), m_camera->map));
    ParamterWidget empty;
    QCOMPARE(empty.setCameraNodeValue(QStringLiteral("Width"), 640), -1);
}

void tst_ParamterWidget::controlsAreReachable()
{
    for (const char *name : {"edit_search", "cboboxLevel", "toolButton"})
        QVERIFY2(find<QWidget>(name)->focusPolicy() & Qt::TabFocus, name);
    for (const char *name : {"edit_search", "cboboxLevel", "widget_featrue"})
        QVERIFY2(!find<QWidget>(name)->accessibleName().isEmpty(), name);
}

/// They would lie over the corner of the panel.
void tst_ParamterWidget::unplacedControlsAreInvisible()
{
    m_panel->show();
    for (const QPushButton *button : m_panel->findChildren<QPushButton *>()) {
        if (button->text() == QStringLiteral("Execute"))
            QVERIFY(!button->isVisible());
    }
    QVERIFY(!m_panel->findChild<SwitchButton *>()->isVisible());
}

QTEST_MAIN(tst_ParamterWidget)
#include "tst_ParamterWidget.moc"
