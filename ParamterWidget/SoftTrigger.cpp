// SPDX-License-Identifier: MIT
#include "ParamterWidget/SoftTrigger.h"

#include <QSpinBox>

#include "PanelBase/HostCall.h"
#include "ParamterWidget/PageControls.h"
#include "ParamterWidget/PanelContext.h"
#include "ToolPage/SwitchButton.h"

namespace {

constexpr int ShortestIntervalMs = 1;
constexpr int LongestIntervalMs = 10000;
constexpr int FirstIntervalMs = 1000;

} // namespace

SoftTrigger::SoftTrigger(PanelContext &context, QWidget *controlsParent)
    : m_context(context), m_timer(controlsParent),
      m_interval(PageControls::integerField(controlsParent, ShortestIntervalMs, LongestIntervalMs, FirstIntervalMs)),
      m_switch(new SwitchButton(controlsParent))
{
    m_timer.setTimerType(Qt::PreciseTimer);
    context.controls[RowId::SoftTriggerInterval] = m_interval;
    context.controls[RowId::SoftTriggerSwitch] = m_switch;
}

void SoftTrigger::apply(const SwitchButton *switchButton)
{
    if (!switchButton)
        return;
    m_timer.stop();
    if (switchButton->isOn())
        m_timer.start(m_interval->value());
    m_interval->setEnabled(!switchButton->isOn());
}

void SoftTrigger::fire()
{
    if (m_context.reading->isSilent())
        return;
    m_context.reading->writeByName([this] {
        return callHost<HostCore::SetCameraNodeValue>("SoftTrigger", m_context.deviceKey(), "TriggerSoftware",
                                                      std::string());
    });
}
