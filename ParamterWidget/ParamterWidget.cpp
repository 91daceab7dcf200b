// SPDX-License-Identifier: MIT
#include "ParamterWidget/ParamterWidget.h"

#include <chrono>

#include <QAbstractSpinBox>
#include <QComboBox>
#include <QFile>
#include <QIcon>
#include <QLineEdit>
#include <QPushButton>
#include <QShortcut>
#include <QSignalBlocker>
#include <QSpinBox>
#include <QSplitter>
#include <QTextBrowser>
#include <QToolButton>
#include <QWidgetAction>

#include "FeatureTree/FeatureTreeView.h"
#include "PanelBase/Guarded.h"
#include "ParamterWidget/AttributeTab.h"
#include "ParamterWidget/FocusReturn.h"
#include "ParamterWidget/FormStyleSheets.h"
#include "ParamterWidget/NodeAccess.h"
#include "ParamterWidget/ParamterForm.h"
#include "ParamterWidget/RoiDrawing.h"
#include "ParamterWidget/ShowWatcher.h"
#include "ParamterWidget/SoftTrigger.h"
#include "ParamterWidget/UserSets.h"
#include "ParamterWidget/pages/AreaScanCatalogue.h"
#include "ParamterWidget/pages/PageBuilder.h"
#include "ParamterWidget/profiler/ProfilerPages.h"
#include "ParamterWidget/structuredlight/OutputSelection.h"
#include "ParamterWnd/HostCore.h"
#include "Resources/Icons.h"
#include "ToolPage/CTabWidget.h"
#include "ToolPage/CToolBox.h"
#include "ToolPage/CToolPage.h"
#include "ToolPage/SelectedButton.h"
#include "ToolPage/SwitchButton.h"
#include "ToolPage/ToolPageWidgetItem.h"

using namespace std::chrono_literals;

namespace {

constexpr const char *Module = "ParamterWidget";

/// Device type of cameras without curated pages.
constexpr const char *AttributeTabOnlyType = "4";

constexpr auto LiveRefreshPeriod = 1500ms;
constexpr int PanelMinimumWidth = 200;
constexpr int FoldButtonWidthEnglish = 85;
constexpr int FoldButtonWidthChinese = 60;
constexpr int TreeStretch = 3;
constexpr int DescriptionStretch = 1;
constexpr int FirstHeight = 150;

/// Titles of the inner tabs, which show as many tool boxes.
constexpr const char *AreaScanTitles[] = {QT_TRANSLATE_NOOP("ParamterWidget", "Commom"),
                                          QT_TRANSLATE_NOOP("ParamterWidget", "Trigger"),
                                          QT_TRANSLATE_NOOP("ParamterWidget", "Advance")};
constexpr const char *ProfilerTitles[] = {
    QT_TRANSLATE_NOOP("ParamterWidget", "Trigger"), QT_TRANSLATE_NOOP("ParamterWidget", "Image"),
    QT_TRANSLATE_NOOP("ParamterWidget", "Contour"), QT_TRANSLATE_NOOP("ParamterWidget", "Others")};
constexpr const char *StructuredLightTitles[] = {QT_TRANSLATE_NOOP("ParamterWidget", "Shoot"),
                                                 QT_TRANSLATE_NOOP("ParamterWidget", "Image"),
                                                 QT_TRANSLATE_NOOP("ParamterWidget", "Advance")};

struct PageSetSpec
{
    Table<const char *> titles;
    void (ParamterWidget::*build)();
};

/// In the order of PageSet.
constexpr PageSetSpec PageSets[] = {
    {AreaScanTitles, &ParamterWidget::init2DParameterUI},
    {ProfilerTitles, &ParamterWidget::init3DParameterUI},
    {StructuredLightTitles, &ParamterWidget::initSLParameterUI},
};

const PageSetSpec &specOf(PageSet pageSet)
{
    return PageSets[int(pageSet)];
}

QString panelStyleSheet()
{
    QFile file(Icons::PanelStyleSheet);
    return file.open(QIODevice::ReadOnly) ? QString::fromUtf8(file.readAll()) : QString();
}

} // namespace

ParamterWidget::ParamterWidget(QWidget *parent)
    : QWidget(parent), m_descriptionPane(new QTextBrowser(this)), m_unplacedControls(new QWidget(this)),
      m_softTrigger(std::make_unique<SoftTrigger>(m_context, m_unplacedControls)),
      m_roiDrawing(std::make_unique<RoiDrawing>(m_context, m_unplacedControls)),
      m_userSets(std::make_unique<UserSets>(m_context, m_unplacedControls)), m_ui(std::make_unique<Ui_ParamterWidget>())
{
    m_unplacedControls->hide();
    m_ui->setupUi(this);
    m_context.written = [tree = m_ui->widget_featrue] { tree->adoptDeviceChange(); };
    m_context.toolBoxes = {m_ui->firstToolBox, m_ui->secondToolBox, m_ui->thirdToolBox, m_ui->fourthToolBox};
    m_attributeTab = std::make_unique<AttributeTab>(m_context, *m_ui, m_descriptionPane);

    setStyleSheet(panelStyleSheet());
    setMinimumWidth(PanelMinimumWidth);
    setFocusPolicy(Qt::StrongFocus);
    setUpFilterBar();
    setUpDescriptionPane();
    setUpTabs();
    connectControls();
    new FocusReturn(this);
    m_liveRefreshTimer.start(LiveRefreshPeriod);
}

/// An editor that loses the focus by being deleted ends its editing; that must not reach what is left of the panel.
ParamterWidget::~ParamterWidget()
{
    for (QWidget *child : findChildren<QWidget *>())
        child->disconnect(this);
}

void ParamterWidget::setUpFilterBar()
{
    auto *const searchButton = new QPushButton(m_ui->edit_search);
    searchButton->setCursor(Qt::ArrowCursor);
    searchButton->setFocusPolicy(Qt::NoFocus);
    searchButton->setStyleSheet(StyleSheets::SearchButton);
    auto *const searchAction = new QWidgetAction(m_ui->edit_search);
    searchAction->setDefaultWidget(searchButton);
    m_ui->edit_search->addAction(searchAction, QLineEdit::LeadingPosition);
    // The tree takes no focus by Tab; from the search field the arrow key leads into it.
    auto *const intoTree = new QShortcut(Qt::Key_Down, m_ui->edit_search);
    intoTree->setContext(Qt::WidgetShortcut);
    connect(intoTree, &QShortcut::activated, m_ui->widget_featrue, [tree = m_ui->widget_featrue] {
        tree->setFocus();
        const QModelIndex row = tree->currentIndex().isValid() ? tree->currentIndex() : tree->indexAt({});
        tree->setCurrentIndex(row.siblingAtColumn(0)); // the focus alone marks no row
        tree->scrollTo(tree->currentIndex());
    });

    m_ui->toolButton->setIcon(QIcon(Icons::Fold));
    m_ui->toolButton->setToolButtonStyle(Qt::ToolButtonTextBesideIcon);
    m_ui->toolButton->setLayoutDirection(Qt::RightToLeft);
    m_ui->toolButton->setStyleSheet(StyleSheets::FoldButton);
}

void ParamterWidget::setUpDescriptionPane()
{
    m_ui->widget_attrInfo->setStretchEnable(true);
    m_ui->widget_attrInfo->setAutoStretchEnable(true);
    m_descriptionPane->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    m_ui->widget_attrInfo->addWidget(tr("Parameter Description"), QString(), m_descriptionPane);
    m_descriptionPane->setAccessibleName(tr("Parameter Description"));
    m_ui->splitter->setStretchFactor(0, TreeStretch);
    m_ui->splitter->setStretchFactor(1, DescriptionStretch);
    // The factors alone weigh the size hints of the two parts; these sizes make them the ratio of the heights.
    m_ui->splitter->setSizes({TreeStretch * FirstHeight, DescriptionStretch * FirstHeight});
}

void ParamterWidget::setUpTabs()
{
    while (m_ui->tabWidget->count() > 0)
        m_ui->tabWidget->removeTab(m_ui->tabWidget->count() - 1);
    m_ui->tabMainWidget->setTabText(m_ui->tabMainWidget->indexOf(m_ui->tabPannel), tr("Common Attribute"));
    m_ui->tabMainWidget->setTabText(m_ui->tabMainWidget->indexOf(m_ui->tabAttribute), tr("All Attribute"));
}

void ParamterWidget::connectControls()
{
    connect(m_ui->edit_search, &QLineEdit::textChanged, this, &ParamterWidget::on_filter_changed);
    connect(m_ui->cboboxLevel, qOverload<int>(&QComboBox::currentIndexChanged), this,
            &ParamterWidget::on_filter_changed);
    connect(m_ui->cboboxLevel, qOverload<int>(&QComboBox::activated), this,
            [this] { guarded(Module, [this] { m_attributeTab->chooseLevel(); }); });
    connect(m_ui->toolButton, &QToolButton::clicked, this, &ParamterWidget::onCollapseButtonClicked);
    connect(m_ui->widget_featrue, &FeatureTreeView::SigSelectItem, this, &ParamterWidget::onSigSelectItemClick);

    connect(m_softTrigger->switchButton(), &SwitchButton::clicked, this, &ParamterWidget::onTriggerSwitchButtonClicked);
    connect(m_softTrigger->timer(), &QTimer::timeout, this, &ParamterWidget::onTriggerTimeout);
    connect(m_roiDrawing->selectButton(), &SelectedButton::clicked, this, &ParamterWidget::onRoiSelectedButtonClicked);
    connect(m_roiDrawing->drawButton(), &QPushButton::clicked, this, &ParamterWidget::onExecDrawButtonClicked);
    connect(m_roiDrawing->resetImageSizeButton(), &QPushButton::clicked, this,
            &ParamterWidget::onResetImageSizeButtonClicked);
    connect(m_userSets->loadButton(), &QPushButton::clicked, this, &ParamterWidget::onUserSetLoadButtonClicked);
    for (QSpinBox *coordinate : m_roiDrawing->coordinates())
        connect(coordinate, qOverload<int>(&QSpinBox::valueChanged), this,
                &ParamterWidget::onDrawParametersButtonClicked);

    connect(&m_liveRefreshTimer, &QTimer::timeout, this, &ParamterWidget::onRealUpdateTimerTimeout);
    for (QTabWidget *tabs : {m_ui->tabMainWidget, static_cast<QTabWidget *>(m_ui->tabWidget)})
        connect(tabs, &QTabWidget::currentChanged, this, &ParamterWidget::onTabWidgetIndexChanged);
}

void ParamterWidget::setPageSet(PageSet pageSet)
{
    m_pageSet = pageSet;
    m_context.areaScan = m_context.areaScan && pageSet == PageSet::AreaScan;
}

void ParamterWidget::initUI(QString device)
{
    m_context.deviceName = device;
    m_ui->widget_featrue->deviceName = device;
    if (m_context.card)
        setPageSet(PageSet::AreaScan);
    guarded(Module, [&] { (this->*specOf(m_pageSet).build)(); });
    for (QAbstractSpinBox *spinBox : findChildren<QAbstractSpinBox *>())
        spinBox->setContextMenuPolicy(Qt::NoContextMenu);
}

void ParamterWidget::init2DParameterUI()
{
    addPages();
    GenApi::INodeMap *const nodeMap = m_context.nodeMap();
    const bool attributesOnly = m_context.card
        || callHost<HostCore::GetCameraInfo>(Module, m_context.deviceKey(), HostCore::CAM_INFO_TYPE_CODE)
            == AttributeTabOnlyType;
    if (!nodeMap)
        return;
    if (attributesOnly) {
        m_ui->tabMainWidget->setCurrentWidget(m_ui->tabAttribute);
    } else {
        commonAttributeInit(nodeMap);
        triggerInit(nodeMap);
        advancedSettingsInit(nodeMap);
    }
    parameterTreeViewInit(nodeMap);
}

void ParamterWidget::addPages()
{
    for (const char *title : specOf(m_pageSet).titles)
        m_ui->tabWidget->addTab(m_context.toolBoxes.at(m_ui->tabWidget->count()), tr(title));
}

void ParamterWidget::commonAttributeInit(GenApi::INodeMap *nodeMap)
{
    buildTab(AreaScanCatalogue::Common, m_ui->firstToolBox, nodeMap);
}

void ParamterWidget::triggerInit(GenApi::INodeMap *nodeMap)
{
    buildTab(AreaScanCatalogue::Trigger, m_ui->secondToolBox, nodeMap);
}

void ParamterWidget::advancedSettingsInit(GenApi::INodeMap *nodeMap)
{
    buildTab(AreaScanCatalogue::Advanced, m_ui->thirdToolBox, nodeMap);
    m_roiDrawing->pairRows();
    whenShownAgain(m_ui->thirdToolBox, [this] { followImageSize(); });
}

void ParamterWidget::buildTab(const TabSpec &tab, CToolBox *toolBox, GenApi::INodeMap *nodeMap)
{
    guarded(Module, [&] {
        for (ToolPageWidgetItem *row : PageBuilder(m_context, this, nodeMap).build(tab, toolBox)) {
            connect(row, &ToolPageWidgetItem::itemClicked, this, &ParamterWidget::onToolPageWidgetItemClicked);
            connect(row, &ToolPageWidgetItem::itemFocused, this, &ParamterWidget::onToolPageWidgetItemClicked);
            connect(row, &ToolPageWidgetItem::valueChanged, this, [this] { m_context.written(); });
            connect(row, &ToolPageWidgetItem::commandExecuted, this, [this] { m_context.written(); });
        }
    });
}

void ParamterWidget::parameterTreeViewInit(GenApi::INodeMap *nodeMap)
{
    guarded(Module, [&] { m_attributeTab->build(nodeMap); });
}

void ParamterWidget::retranslate(int language)
{
    m_ui->widget_attrInfo->setText(tr("Parameter Description"));
    m_descriptionPane->setAccessibleName(tr("Parameter Description"));
    {
        const QSignalBlocker blocker(m_ui->cboboxLevel);
        m_ui->retranslateUi(this);
    }
    m_attributeTab->retranslate();
    m_ui->toolButton->setFixedWidth(language == 0 ? FoldButtonWidthEnglish : FoldButtonWidthChinese);
    int page = 0;
    for (const char *title : specOf(m_pageSet).titles) {
        m_ui->tabWidget->setTabText(page, tr(title));
        m_context.toolBoxes.at(page++)->setLanguage(language);
    }
    if (m_profiler)
        m_profiler->retranslate();
    m_ui->tabMainWidget->setTabText(m_ui->tabMainWidget->indexOf(m_ui->tabPannel), tr("Common Attribute"));
    m_ui->tabMainWidget->setTabText(m_ui->tabMainWidget->indexOf(m_ui->tabAttribute), tr("All Attribute"));
    m_context.language = language;
    describeSelectedRow();
}

void ParamterWidget::setPanelWidgetVisiable(bool visible)
{
    QTabWidget *const tabs = m_ui->tabMainWidget;
    const int index = tabs->indexOf(m_ui->tabPannel);
    if (!visible)
        tabs->removeTab(index);
    else if (index < 0)
        tabs->insertTab(0, m_ui->tabPannel, tr("Common Attribute"));
}

void ParamterWidget::setAllDetailWidgetVisiable(bool visible)
{
    QTabWidget *const tabs = m_ui->tabMainWidget;
    const int index = tabs->indexOf(m_ui->tabAttribute);
    if (!visible)
        tabs->removeTab(index);
    else if (index < 0)
        tabs->addTab(m_ui->tabAttribute, tr("All Attribute"));
}

void ParamterWidget::setParamterViewDisable()
{
    m_context.disabled = true;
    m_attributeTab->disable();
    m_liveRefreshTimer.stop();
    m_softTrigger->timer()->stop();
    m_roiDrawing->disable();
    for (ToolPageWidgetItem *row : std::as_const(m_context.rows))
        row->releaseNode();
}

void ParamterWidget::updateWidget(bool afterImport)
{
    m_context.written();
    guarded(Module, [this] { m_context.refreshPages(); });
    followDevice(afterImport);
}

void ParamterWidget::followDevice(bool wholly)
{
    followImageSize();
    if (followsProfiler())
        guarded(Module, [&] { wholly ? m_profiler->showAll() : m_profiler->show(); });
    readOutputs();
}

void ParamterWidget::followImageSize()
{
    guarded(Module, [this] { m_roiDrawing->followCamera(); });
}

/// The pages of the panel have been shown before.
void ParamterWidget::showEvent(QShowEvent *event)
{
    QWidget::showEvent(event);
    m_wasShown = true;
}

void ParamterWidget::whenShownAgain(QWidget *page, std::function<void()> follow)
{
    new ShowWatcher(page, [this, follow = std::move(follow)] {
        if (m_wasShown)
            follow();
    });
}

void ParamterWidget::startAcquireOperation()
{
    m_roiDrawing->lock();
    m_userSets->lock();
}

void ParamterWidget::stopAcquireOperation()
{
    m_roiDrawing->unlock();
    m_userSets->unlock();
}

void ParamterWidget::imageModeChangedUpdate(int) { }

void ParamterWidget::updateAttributeLevel()
{
    guarded(Module, [this] { m_attributeTab->selectStoredLevel(); });
}

void ParamterWidget::setDrawRoiPos(int leftX, int leftY, int rightX, int rightY)
{
    guarded(Module, [&] { m_roiDrawing->followHost(leftX, leftY, rightX, rightY); });
}

void ParamterWidget::setDrawRoiStatus(bool drawing)
{
    guarded(Module, [&] { m_roiDrawing->showDrawingRows(drawing); });
}

int ParamterWidget::getCameraNodeInfo(QString nodeName, int &value, int &min, int &max, int &inc)
{
    return GetCameraIntNodeInfo(m_context.deviceName, nodeName, value, min, max, inc);
}

int ParamterWidget::setCameraNodeValue(QString nodeName, int value)
{
    const int result = SetCameraIntNodeValue(m_context.deviceName, nodeName, value);
    m_context.written();
    return result;
}

GenApi::INode *ParamterWidget::getValidNodeFromName(QString name, GenApi::INodeMap *nodeMap)
{
    return FindNodeByLogicalName(name, nodeMap);
}

void ParamterWidget::on_filter_changed()
{
    const bool searching = sender() == m_ui->edit_search;
    guarded(Module, [&] { m_attributeTab->filter(searching); });
}

void ParamterWidget::onSigSelectItemClick(QModelIndex index)
{
    guarded(Module, [&] {
        if (m_attributeTab->describe(index))
            m_context.selectedRow = nullptr;
    });
}

void ParamterWidget::onTriggerSwitchButtonClicked()
{
    m_softTrigger->follow(qobject_cast<SwitchButton *>(sender()));
}

void ParamterWidget::onTriggerTimeout()
{
    guarded(Module, [this] { m_softTrigger->fire(); });
}

void ParamterWidget::onRoiSelectedButtonClicked()
{
    guarded(Module, [this] { m_roiDrawing->followSelectButton(); });
}

void ParamterWidget::onDrawParametersButtonClicked()
{
    const QObject *const spinBox = sender();
    guarded(Module, [&] { m_roiDrawing->followCoordinate(spinBox); });
}

void ParamterWidget::onExecDrawButtonClicked()
{
    guarded(Module, [this] { m_roiDrawing->apply(); });
}

void ParamterWidget::onResetImageSizeButtonClicked()
{
    guarded(Module, [this] { m_roiDrawing->restoreFullSize(); });
}

void ParamterWidget::onUserSetLoadButtonClicked()
{
    guarded(Module, [this] { m_userSets->load(); });
    followDevice(true);
}

void ParamterWidget::onCollapseButtonClicked()
{
    if (sender())
        guarded(Module, [this] { m_attributeTab->toggleFolding(); });
}

void ParamterWidget::onToolPageWidgetItemClicked()
{
    m_context.selectedRow = qobject_cast<ToolPageWidgetItem *>(sender());
    describeSelectedRow();
}

void ParamterWidget::onTabWidgetIndexChanged()
{
    if (isFirstPageInView() && !m_context.disabled)
        m_liveRefreshTimer.start();
    else
        m_liveRefreshTimer.stop();
}

void ParamterWidget::onRealUpdateTimerTimeout()
{
    for (ToolPageWidgetItem *row : m_context.liveRows)
        guarded(Module, [row] { row->updateWidget(true); });
}

bool ParamterWidget::isFirstPageInView() const
{
    return m_ui->tabMainWidget->currentIndex() == 0 && m_ui->tabWidget->currentIndex() == 0;
}

void ParamterWidget::describeSelectedRow()
{
    if (m_context.selectedRow)
        m_descriptionPane->setText(m_context.selectedRow->getDescription(m_context.language == 0 ? 0 : 1));
}
