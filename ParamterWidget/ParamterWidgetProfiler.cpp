// SPDX-License-Identifier: MIT
// The panel's doors to the pages of laser profilers.
#include <tuple>

#include <QComboBox>
#include <QDoubleSpinBox>

#include "PanelBase/Guarded.h"
#include "ParamterWidget/ParamterForm.h"
#include "ParamterWidget/ParamterWidget.h"
#include "ParamterWidget/pages/ProfilerCatalogue.h"
#include "ParamterWidget/profiler/ProfilerPages.h"
#include "ToolPage/CToolBox.h"
#include "ToolPage/SwitchButton.h"

namespace {

constexpr const char *Module = "ParamterWidget";

using Slot = void (ParamterWidget::*)();

} // namespace

void ParamterWidget::init3DParameterUI()
{
    setPageSet(PageSet::Profiler);
    addPages();
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
        connectProfiler();
        for (int page = 0; page < m_context.toolBoxes.size(); ++page)
            whenShownAgain(m_context.toolBoxes.at(page), [this, page] { followProfilerPage(page); });
    });
    buildTab(tab, toolBox, nodeMap);
}

void ParamterWidget::connectProfiler()
{
    const ProfilerPages &pages = *m_profiler;
    const std::tuple<QComboBox *, Slot> lists[] = {
        {pages.trigger.frameTriggerMode(), &ParamterWidget::onFrameTriggerModeChanged},
        {pages.trigger.frameTriggerSource(), &ParamterWidget::onFrameTriggerSourceChanged},
        {pages.trigger.lineScanMode(), &ParamterWidget::onLineScanModeChanged},
        {pages.trigger.batchMode(), &ParamterWidget::onBatchModeChanged},
        {pages.contour.laserAdjustMode(), &ParamterWidget::onLaserAdjustModeChanged},
    };
    for (const auto &[list, slot] : lists)
        connect(list, qOverload<int>(&QComboBox::currentIndexChanged), this, slot);
    const std::tuple<QPushButton *, Slot> buttons[] = {
        {pages.trigger.softwareTrigger(), &ParamterWidget::onSoftwareTriggerBtnClicked},
        {pages.image.measureRange(), &ParamterWidget::onDrawMeasureRangeClicked},
        {pages.image.grayImage(), &ParamterWidget::onGrayImageButtonClicked},
        {pages.zRange.autoButton(), &ParamterWidget::onSizeInfoAutoClicked},
        {pages.corrections.heightButton(), &ParamterWidget::onCorrectionButtonClicked},
        {pages.corrections.tiltButton(), &ParamterWidget::onCorrectionButtonClicked},
    };
    for (const auto &[button, slot] : buttons)
        connect(button, &QPushButton::clicked, this, slot);
    for (SwitchButton *mask : pages.masks.switches())
        connect(mask, &QPushButton::clicked, this, &ParamterWidget::onMaskWidgetMouseClicked);
    const std::tuple<QDoubleSpinBox *, Slot> fields[] = {
        {pages.zRange.maximum(), &ParamterWidget::onZSizeInfoChanged},
        {pages.zRange.minimum(), &ParamterWidget::onZSizeInfoChanged},
        {pages.corrections.tilt(), &ParamterWidget::onCorrectionValueChanged},
        {pages.corrections.height(), &ParamterWidget::onCorrectionValueChanged},
    };
    for (const auto &[field, slot] : fields)
        connect(field, &QDoubleSpinBox::editingFinished, this, slot);
    connect(pages.image.contourSpacing(), qOverload<double>(&QDoubleSpinBox::valueChanged), this,
            &ParamterWidget::onYMeasureValueChanged);
}

bool ParamterWidget::followsProfiler() const
{
    return m_profiler && !m_context.disabled && !m_context.areaScan && !m_context.deviceName.isEmpty();
}

void ParamterWidget::followProfilerPage(int page)
{
    if (followsProfiler())
        guarded(Module, [&] { m_profiler->showPage(page); });
}

void ParamterWidget::init3DParameters()
{
    if (!followsProfiler())
        return;
    update3DCustomParameters();
    guarded(Module, [this] { m_profiler->readSettings(); });
}

void ParamterWidget::update3DCustomParameters()
{
    if (m_profiler && !m_context.disabled)
        guarded(Module, [this] { m_profiler->readDevice(); });
}

void ParamterWidget::measureRangeAreaUpdate()
{
    if (followsProfiler())
        guarded(Module, [this] { m_profiler->image.readMeasureRange(); });
}

void ParamterWidget::imageMaskWidgetUpdate()
{
    if (followsProfiler())
        guarded(Module, [this] { m_profiler->masks.read(); });
}

template <class Tool>
void ParamterWidget::forward(Tool ProfilerPages::*tool, void (Tool::*follow)() const)
{
    if (m_profiler && !m_context.disabled)
        guarded(Module, [&] { (m_profiler.get()->*tool.*follow)(); });
}

template <class Tool>
void ParamterWidget::forward(Tool ProfilerPages::*tool, void (Tool::*follow)(const QObject *control) const)
{
    const QObject *const control = sender();
    if (m_profiler && !m_context.disabled && control)
        guarded(Module, [&] { (m_profiler.get()->*tool.*follow)(control); });
}

void ParamterWidget::onFrameTriggerModeChanged()
{
    if (sender() && !m_context.areaScan)
        forward(&ProfilerPages::trigger, &TriggerTab::followFrameTriggerMode);
}

void ParamterWidget::onFrameTriggerSourceChanged()
{
    forward(&ProfilerPages::trigger, &TriggerTab::followFrameTriggerSource);
}

void ParamterWidget::onSoftwareTriggerBtnClicked()
{
    forward(&ProfilerPages::trigger, &TriggerTab::trigger);
}

void ParamterWidget::onLineScanModeChanged()
{
    if (sender() && !m_context.areaScan)
        forward(&ProfilerPages::trigger, &TriggerTab::followLineScanMode);
}

void ParamterWidget::onBatchModeChanged()
{
    forward(&ProfilerPages::trigger, &TriggerTab::followBatchMode);
}

void ParamterWidget::onDrawMeasureRangeClicked()
{
    if (sender())
        forward(&ProfilerPages::image, &ImageTab::followMeasureRange);
}

void ParamterWidget::onGrayImageButtonClicked()
{
    if (sender() && !m_context.areaScan)
        forward(&ProfilerPages::image, &ImageTab::followGrayImage);
}

void ParamterWidget::onYMeasureValueChanged()
{
    if (sender() && !m_context.areaScan)
        forward(&ProfilerPages::image, &ImageTab::followContourSpacing);
}

void ParamterWidget::onMaskWidgetMouseClicked()
{
    forward(&ProfilerPages::masks, &ShieldMasks::follow);
}

void ParamterWidget::onLaserAdjustModeChanged()
{
    if (sender())
        forward(&ProfilerPages::contour, &ContourTab::followLaserAdjustMode);
}

void ParamterWidget::onSizeInfoAutoClicked()
{
    forward(&ProfilerPages::zRange, &ZRange::determine);
}

void ParamterWidget::onZSizeInfoChanged()
{
    forward(&ProfilerPages::zRange, &ZRange::follow);
}

void ParamterWidget::onCorrectionValueChanged()
{
    forward(&ProfilerPages::corrections, &Corrections::follow);
}

void ParamterWidget::onCorrectionButtonClicked()
{
    forward(&ProfilerPages::corrections, &Corrections::determine);
}
