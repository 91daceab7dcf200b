// SPDX-License-Identifier: MIT
// The panel's doors to the pages of laser profilers.
#include <tuple>

#include <QComboBox>
#include <QDoubleSpinBox>

#include "PanelBase/Guarded.h"
#include "ParamterWidget/PanelTabs.h"
#include "ParamterWidget/ParamterForm.h"
#include "ParamterWidget/ParamterWidget.h"
#include "ParamterWidget/ShownAgain.h"
#include "ParamterWidget/pages/ProfilerCatalogue.h"
#include "ParamterWidget/profiler/ProfilerPages.h"
#include "ToolPage/CToolBox.h"
#include "ToolPage/SwitchButton.h"

namespace {

constexpr const char *Module = "ParamterWidget";

using Slot = void (ParamterWidget::*)();

void connectPages(const ProfilerPages &pages, ParamterWidget *panel)
{
    const std::tuple<QComboBox *, Slot> lists[] = {
        {pages.trigger.frameTriggerMode(), &ParamterWidget::onFrameTriggerModeChanged},
        {pages.trigger.frameTriggerSource(), &ParamterWidget::onFrameTriggerSourceChanged},
        {pages.trigger.lineScanMode(), &ParamterWidget::onLineScanModeChanged},
        {pages.data.batchMode(), &ParamterWidget::onBatchModeChanged},
        {pages.contour.laserAdjustMode(), &ParamterWidget::onLaserAdjustModeChanged},
    };
    for (const auto &[list, slot] : lists)
        QObject::connect(list, qOverload<int>(&QComboBox::currentIndexChanged), panel, slot);
    const std::tuple<QPushButton *, Slot> buttons[] = {
        {pages.trigger.softwareTrigger(), &ParamterWidget::onSoftwareTriggerBtnClicked},
        {pages.image.measureRange(), &ParamterWidget::onDrawMeasureRangeClicked},
        {pages.image.grayImage(), &ParamterWidget::onGrayImageButtonClicked},
        {pages.zRange.autoButton(), &ParamterWidget::onSizeInfoAutoClicked},
        {pages.corrections.heightButton(), &ParamterWidget::onCorrectionButtonClicked},
        {pages.corrections.tiltButton(), &ParamterWidget::onCorrectionButtonClicked},
    };
    for (const auto &[button, slot] : buttons)
        QObject::connect(button, &QPushButton::clicked, panel, slot);
    for (SwitchButton *mask : pages.masks.switches())
        QObject::connect(mask, &QPushButton::clicked, panel, &ParamterWidget::onMaskWidgetMouseClicked);
    const std::tuple<QDoubleSpinBox *, Slot> fields[] = {
        {pages.zRange.maximum(), &ParamterWidget::onZSizeInfoChanged},
        {pages.zRange.minimum(), &ParamterWidget::onZSizeInfoChanged},
        {pages.corrections.tilt(), &ParamterWidget::onCorrectionValueChanged},
        {pages.corrections.height(), &ParamterWidget::onCorrectionValueChanged},
    };
    for (const auto &[field, slot] : fields)
        QObject::connect(field, &QDoubleSpinBox::editingFinished, panel, slot);
    QObject::connect(pages.image.contourSpacing(), qOverload<double>(&QDoubleSpinBox::valueChanged), panel,
                     &ParamterWidget::onYMeasureValueChanged);
}

} // namespace

void ParamterWidget::init3DParameterUI()
{
    setPageSet(PageSet::Profiler);
    m_tabs->addPages(m_pageSet);
    GenApi::INodeMap *const nodeMap = m_context.nodeMap();
    if (!nodeMap)
        return;
    triggerSettingTabInit(nodeMap);
    imageSettingTabInit(nodeMap);
    contourSettingTabInit(nodeMap);
    othersSettingTabInit(nodeMap);
    parameterTreeViewInit(nodeMap);
    init3DParameters();
    measureRangeAreaUpdate();
    imageMaskWidgetUpdate();
}

void ParamterWidget::triggerSettingTabInit(GenApi::INodeMap *nodeMap)
{
    buildProfilerTab(ProfilerCatalogue::Trigger, m_ui->firstToolBox, nodeMap);
}

void ParamterWidget::imageSettingTabInit(GenApi::INodeMap *nodeMap)
{
    buildProfilerTab(ProfilerCatalogue::Image, m_ui->secondToolBox, nodeMap);
}

void ParamterWidget::contourSettingTabInit(GenApi::INodeMap *nodeMap)
{
    buildProfilerTab(ProfilerCatalogue::Contour, m_ui->thirdToolBox, nodeMap);
}

void ParamterWidget::othersSettingTabInit(GenApi::INodeMap *nodeMap)
{
    buildProfilerTab(ProfilerCatalogue::Others, m_ui->fourthToolBox, nodeMap);
}

void ParamterWidget::buildProfilerTab(const TabSpec &tab, CToolBox *toolBox, GenApi::INodeMap *nodeMap)
{
    guarded(Module, [this] {
        if (m_profiler)
            return;
        m_profiler = std::make_unique<ProfilerPages>(m_context, m_unplacedControls);
        connectPages(*m_profiler, this);
        for (int page = 0; page < m_context.toolBoxes.size(); ++page)
            m_shownAgain->watch(m_context.toolBoxes.at(page), [this, page] {
                m_context.use(m_profiler, [page](ProfilerPages &pages) { pages.showPage(page); });
            });
    });
    buildTab(tab, toolBox, nodeMap);
}

void ParamterWidget::init3DParameters()
{
    m_context.use(m_profiler, [](ProfilerPages &pages) {
        if (pages.hasProfiler())
            pages.adoptDevice();
    });
    m_context.use(m_profiler, [](ProfilerPages &pages) { pages.adoptSettings(); });
}

void ParamterWidget::update3DCustomParameters()
{
    m_context.use(m_profiler, [](ProfilerPages &pages) { pages.adoptDevice(); });
}

void ParamterWidget::measureRangeAreaUpdate()
{
    m_context.use(m_profiler, [](ProfilerPages &pages) { pages.adoptMeasureRange(); });
}

void ParamterWidget::imageMaskWidgetUpdate()
{
    m_context.use(m_profiler, [](ProfilerPages &pages) { pages.adoptMasks(); });
}

void ParamterWidget::onFrameTriggerModeChanged()
{
    if (sender() && !m_context.areaScan)
        m_context.use(m_profiler, [](ProfilerPages &pages) { pages.trigger.applyFrameTriggerMode(); });
}

void ParamterWidget::onFrameTriggerSourceChanged()
{
    m_context.use(m_profiler, [](ProfilerPages &pages) { pages.trigger.applyFrameTriggerSource(); });
}

void ParamterWidget::onSoftwareTriggerBtnClicked()
{
    m_context.use(m_profiler, [](ProfilerPages &pages) { pages.trigger.trigger(); });
}

void ParamterWidget::onLineScanModeChanged()
{
    if (sender() && !m_context.areaScan)
        m_context.use(m_profiler, [](ProfilerPages &pages) { pages.trigger.applyLineScanMode(); });
}

void ParamterWidget::onBatchModeChanged()
{
    m_context.use(m_profiler, [](ProfilerPages &pages) { pages.data.applyBatchMode(); });
}

void ParamterWidget::onDrawMeasureRangeClicked()
{
    if (sender())
        m_context.use(m_profiler, [](ProfilerPages &pages) { pages.image.applyMeasureRange(); });
}

void ParamterWidget::onGrayImageButtonClicked()
{
    if (sender() && !m_context.areaScan)
        m_context.use(m_profiler, [](ProfilerPages &pages) { pages.image.applyGrayImage(); });
}

void ParamterWidget::onYMeasureValueChanged()
{
    if (sender() && !m_context.areaScan)
        m_context.use(m_profiler, [](ProfilerPages &pages) { pages.image.applyContourSpacing(); });
}

void ParamterWidget::onMaskWidgetMouseClicked()
{
    m_context.use(m_profiler, [control = sender()](ProfilerPages &pages) { pages.masks.apply(control); });
}

void ParamterWidget::onLaserAdjustModeChanged()
{
    if (sender())
        m_context.use(m_profiler, [](ProfilerPages &pages) { pages.contour.applyLaserAdjustMode(); });
}

void ParamterWidget::onSizeInfoAutoClicked()
{
    m_context.use(m_profiler, [](ProfilerPages &pages) { pages.zRange.determine(); });
}

void ParamterWidget::onZSizeInfoChanged()
{
    m_context.use(m_profiler, [control = sender()](ProfilerPages &pages) { pages.zRange.apply(control); });
}

void ParamterWidget::onCorrectionValueChanged()
{
    m_context.use(m_profiler, [control = sender()](ProfilerPages &pages) { pages.corrections.apply(control); });
}

void ParamterWidget::onCorrectionButtonClicked()
{
    m_context.use(m_profiler, [control = sender()](ProfilerPages &pages) { pages.corrections.determine(control); });
}
