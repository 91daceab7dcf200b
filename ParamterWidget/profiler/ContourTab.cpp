// SPDX-License-Identifier: MIT
#include "ParamterWidget/profiler/ContourTab.h"

#include <QComboBox>

#include "PanelBase/TranslationTables.h"
#include "ParamterWidget/HostValues.h"
#include "ParamterWidget/PageControls.h"
#include "ParamterWidget/PanelContext.h"

namespace {

const char *const Mode = "LaserAdjustMode";
const QLatin1String Manual("Manual");
const QLatin1String Automatic("Auto");

int entryOf(const QString &mode)
{
    return mode == Manual ? 0 : 1;
}

} // namespace

ContourTab::ContourTab(PanelContext &context, QWidget *controlsParent)
    : m_context(context), m_laserAdjustMode(PageControls::list({Manual, Automatic}, controlsParent))
{
    context.controls[RowId::LaserAdjustMode] = m_laserAdjustMode;
}

void ContourTab::applyLaserAdjustMode()
{
    if (HostValues::writeNode(m_context, Mode, mode()))
        showRows();
    else
        showLaserAdjustMode();
}

void ContourTab::adoptLaserAdjustMode()
{
    PageControls::choose(m_laserAdjustMode, entryOf(HostValues::readNode(m_context, Mode)));
}

void ContourTab::showLaserAdjustMode()
{
    if (const auto mode = HostValues::knownText(m_context, Mode))
        PageControls::show(m_laserAdjustMode, entryOf(*mode));
    showRows();
}

QString ContourTab::mode() const
{
    const QString shown = m_laserAdjustMode->currentText();
    return zhTransEnMap.value(shown, shown);
}

void ContourTab::showRows()
{
    const bool manual = mode() == Manual;
    m_context.showRow(RowId::LowerBound, !manual);
    m_context.showRow(RowId::UpperBound, !manual);
    m_context.showRow(RowId::LaserSetting, manual);
}
