// SPDX-License-Identifier: MIT
#include "ParamterWidget/ParamterWidget.h"

#include <chrono>

#include <QAbstractSpinBox>
#include <QComboBox>
#include <QFile>
#include <QLineEdit>
#include <QPushButton>
#include <QSignalBlocker>
#include <QSpinBox>
#include <QSplitter>
#include <QToolButton>

#include "FeatureTree/FeatureTreeView.h"
#include "PanelBase/Guarded.h"
#include "ParamterWidget/AttributeTab.h"
#include "ParamterWidget/DescriptionPane.h"
#include "ParamterWidget/FocusReturn.h"
#include "ParamterWidget/NodeAccess.h"
#include "ParamterWidget/PanelTabs.h"
#include "ParamterWidget/ParamterForm.h"
#include "ParamterWidget/RoiDrawing.h"
#include "ParamterWidget/ShownAgain.h"
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
#include "ToolPage/SelectedButton.h"
#include "ToolPage/SwitchButton.h"
#include "ToolPage/ToolPageWidgetItem.h"

using namespace std::chrono_literals;

namespace {

constexpr const char *Module = "ParamterWidget";

/// Device type of cameras without curated pages.
constexpr const char *AttributeTabOnlyType = "4";

constexpr auto LiveRefreshPeriod = 1500ms;
/// What GetCameraIntNodeInfo() answers for a feature that cannot be read now.
constexpr int NotRead = -4;
constexpr int PanelMinimumWidth = 200;
constexpr int TreeStretch = 3;
constexpr int DescriptionStretch = 1;
constexpr int FirstHeight = 150;

/// What builds the pages, in the order of PageSet.
constexpr void (ParamterWidget::*PageSetBuilders[])() = {
    &ParamterWidget::init2DParameterUI, &ParamterWidget::init3DParameterUI, &ParamterWidget::initSLParameterUI};

QString panelStyleSheet()
{
    QFile file(Icons::PanelStyleSheet);
    return file.open(QIODevice::ReadOnly) ? QString::fromUtf8(file.readAll()) : QString();
}

void setUpSplitter(QSplitter &splitter)
{
    splitter.setStretchFactor(0, TreeStretch);
    splitter.setStretchFactor(1, DescriptionStretch);
    // The factors alone weigh the size hints of the two parts; these sizes make them the ratio of the heights.
    splitter.setSizes({TreeStretch * FirstHeight, DescriptionStretch * FirstHeight});
}

} // namespace

ParamterWidget::ParamterWidget(QWidget *parent)
    : QWidget(parent), m_description(std::make_unique<DescriptionPane>(this)), m_unplacedControls(new QWidget(this)),
      m_softTrigger(std::make_unique<SoftTrigger>(m_context, m_unplacedControls)),
      m_roiDrawing(std::make_unique<RoiDrawing>(m_context, m_unplacedControls)),
      m_userSets(std::make_unique<UserSets>(m_context, m_unplacedControls)),
      m_ui(std::make_unique<Ui_ParamterWidget>()), m_shownAgain(new ShownAgain(this))
{
    m_unplacedControls->hide();
    m_ui->setupUi(this);
    m_context.written = [tree = m_ui->widget_featrue] { tree->adoptDeviceChange(); };
    m_context.toolBoxes = {m_ui->firstToolBox, m_ui->secondToolBox, m_ui->thirdToolBox, m_ui->fourthToolBox};
    m_attributeTab = std::make_unique<AttributeTab>(m_context, *m_ui);
    m_tabs = std::make_unique<PanelTabs>(m_context, *m_ui);

    setStyleSheet(panelStyleSheet());
    setMinimumWidth(PanelMinimumWidth);
    setFocusPolicy(Qt::StrongFocus);
    m_description->placeIn(m_ui->widget_attrInfo);
    setUpSplitter(*m_ui->splitter);
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

    connect(m_context.reading.get(), &DeviceReading::silenced, this, [this] {
        m_ui->widget_featrue->showSilence();
        for (ToolPageWidgetItem *row : std::as_const(m_context.rows))
            row->showSilence();
    });
    connect(m_context.reading.get(), &DeviceReading::written, this, &ParamterWidget::written);
    connect(m_context.reading.get(), &DeviceReading::revived, this, [this] {
        for (ToolPageWidgetItem *row : std::as_const(m_context.rows))
            row->updateWidget(false);
        m_context.written();
        showDevice(true);
    });

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
    m_context.reading->setDeviceName(device);
    m_ui->widget_featrue->deviceName = device;
    if (m_context.card)
        setPageSet(PageSet::AreaScan);
    guarded(Module, [&] { (this->*PageSetBuilders[int(m_pageSet)])(); });
    for (QAbstractSpinBox *spinBox : findChildren<QAbstractSpinBox *>())
        spinBox->setContextMenuPolicy(Qt::NoContextMenu);
}

void ParamterWidget::init2DParameterUI()
{
    m_tabs->addPages(m_pageSet);
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
    m_shownAgain->watch(m_ui->thirdToolBox, [this] { adoptImageSize(); });
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
    {
        const QSignalBlocker blocker(m_ui->cboboxLevel);
        m_ui->retranslateUi(this);
    }
    m_attributeTab->retranslate(language);
    m_tabs->retranslate(m_pageSet, language);
    if (m_profiler)
        m_profiler->retranslate();
    m_description->retranslate(language);
}

void ParamterWidget::setPanelWidgetVisiable(bool visible)
{
    m_tabs->setPagesVisible(visible);
}

void ParamterWidget::setAllDetailWidgetVisiable(bool visible)
{
    m_tabs->setTreeVisible(visible);
}

void ParamterWidget::setParamterViewDisable()
{
    m_context.disabled = true;
    m_context.reading->stop();
    m_attributeTab->disable();
    m_liveRefreshTimer.stop();
    m_softTrigger->timer()->stop();
    m_roiDrawing->disable();
    for (ToolPageWidgetItem *row : std::as_const(m_context.rows))
        row->releaseNode();
}

void ParamterWidget::updateWidget(bool afterImport)
{
    m_context.reading->retry();
    m_context.written();
    guarded(Module, [this] { m_context.refreshPages(); });
    showDevice(afterImport);
}

void ParamterWidget::showDevice(bool wholly)
{
    adoptImageSize();
    m_context.use(m_profiler, [wholly](ProfilerPages &pages) { wholly ? pages.showAll() : pages.show(); });
    m_context.use(m_outputSelection, [](OutputSelection &selection) { selection.show(); });
}

void ParamterWidget::adoptImageSize()
{
    guarded(Module, [this] { m_roiDrawing->adoptCameraChange(); });
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
    guarded(Module, [&] { m_roiDrawing->adoptHostRegion(leftX, leftY, rightX, rightY); });
}

void ParamterWidget::setDrawRoiStatus(bool drawing)
{
    guarded(Module, [&] { m_roiDrawing->showDrawingRows(drawing); });
}

int ParamterWidget::getCameraNodeInfo(QString nodeName, int &value, int &min, int &max, int &inc)
{
    int result = NotRead;
    m_context.read([&] { result = GetCameraIntNodeInfo(m_context.deviceName, nodeName, value, min, max, inc); });
    return result;
}

int ParamterWidget::setCameraNodeValue(QString nodeName, int value)
{
    DeviceReading *const reading = m_context.reading.get();
    const int result =
        reading->writeByName([&] { return SetCameraIntNodeValue(reading, m_context.deviceName, nodeName, value); });
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
        if (GenApi::INode *const feature = m_attributeTab->featureAt(index))
            m_description->describe(feature, m_context.reading.get());
    });
}

void ParamterWidget::onTriggerSwitchButtonClicked()
{
    m_softTrigger->apply(qobject_cast<SwitchButton *>(sender()));
}

void ParamterWidget::onTriggerTimeout()
{
    guarded(Module, [this] { m_softTrigger->fire(); });
}

void ParamterWidget::onRoiSelectedButtonClicked()
{
    guarded(Module, [this] { m_roiDrawing->applySelectButton(); });
}

void ParamterWidget::onDrawParametersButtonClicked()
{
    const QObject *const spinBox = sender();
    guarded(Module, [&] { m_roiDrawing->applyCoordinate(spinBox); });
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
    showDevice(true);
}

void ParamterWidget::onCollapseButtonClicked()
{
    if (sender())
        guarded(Module, [this] { m_attributeTab->toggleFolding(); });
}

void ParamterWidget::onToolPageWidgetItemClicked()
{
    m_description->describe(qobject_cast<ToolPageWidgetItem *>(sender()));
}

void ParamterWidget::onTabWidgetIndexChanged()
{
    if (m_tabs->isFirstPageInView() && !m_context.disabled)
        m_liveRefreshTimer.start();
    else
        m_liveRefreshTimer.stop();
}

void ParamterWidget::onRealUpdateTimerTimeout()
{
    for (ToolPageWidgetItem *row : m_context.liveRows)
        guarded(Module, [row] { row->updateWidget(true); });
}
