// SPDX-License-Identifier: MIT
// The panel's doors to the pages of structured-light cameras.
#include <QComboBox>

#include "PanelBase/Guarded.h"
#include "ParamterWidget/PanelTabs.h"
#include "ParamterWidget/ParamterForm.h"
#include "ParamterWidget/ParamterWidget.h"
#include "ParamterWidget/ShownAgain.h"
#include "ParamterWidget/pages/StructuredLightCatalogue.h"
#include "ParamterWidget/structuredlight/OutputSelection.h"
#include "ToolPage/CComboBox.h"
#include "ToolPage/CToolBox.h"

namespace {

constexpr const char *Module = "ParamterWidget";

} // namespace

void ParamterWidget::initSLParameterUI()
{
    setPageSet(PageSet::StructuredLight);
    m_tabs->addPages(m_pageSet);
    GenApi::INodeMap *const nodeMap = m_context.nodeMap();
    if (!nodeMap)
        return;
    SLCommonAttributeInit(nodeMap);
    SLTriggerInit(nodeMap);
    SLAdvancedSettingsInit(nodeMap);
    parameterTreeViewInit(nodeMap);
}

void ParamterWidget::SLCommonAttributeInit(GenApi::INodeMap *nodeMap)
{
    guarded(Module, [this] {
        m_outputSelection = std::make_unique<OutputSelection>(m_context, m_unplacedControls);
        connect(m_outputSelection->outputs(), &CComboBox::itemCheckedStatusChanged, this,
                &ParamterWidget::on2DGrabOutputChanged);
        connect(m_outputSelection->showTypes(), qOverload<int>(&QComboBox::currentIndexChanged), this,
                &ParamterWidget::on2DShowTypeChanged);
        m_shownAgain->watch(m_ui->firstToolBox, [this] {
            m_context.use(m_outputSelection, [](OutputSelection &selection) { selection.show(); });
        });
    });
    buildTab(StructuredLightCatalogue::Shoot, m_ui->firstToolBox, nodeMap);
}

void ParamterWidget::SLTriggerInit(GenApi::INodeMap *nodeMap)
{
    buildTab(StructuredLightCatalogue::Image, m_ui->secondToolBox, nodeMap);
}

void ParamterWidget::SLAdvancedSettingsInit(GenApi::INodeMap *nodeMap)
{
    buildTab(StructuredLightCatalogue::Advanced, m_ui->thirdToolBox, nodeMap);
}

void ParamterWidget::on2DGrabOutputChanged(int index, bool status)
{
    m_context.use(m_outputSelection, [&](OutputSelection &selection) { selection.applyOutput(index, status); });
}

void ParamterWidget::on2DShowTypeChanged(int)
{
    m_context.use(m_outputSelection, [](OutputSelection &selection) { selection.applyShowType(); });
}

void ParamterWidget::update2DShowTypeComboBox()
{
    m_context.use(m_outputSelection, [](OutputSelection &selection) { selection.updateShowTypes(); });
}
