// SPDX-License-Identifier: MIT
#include "ParamterWidget/profiler/ShieldMasks.h"

#include <algorithm>

#include <QThread>
#include <QVariant>

#include "PanelBase/HostCall.h"
#include "ParamterWidget/HostValues.h"
#include "ParamterWidget/PanelContext.h"
#include "ToolPage/SwitchButton.h"

namespace {

using HostValues::writeNode;

constexpr const char *Module = "ShieldMasks";

constexpr unsigned long SelectorPause = 5; // ms
constexpr int FirstRegion = 1; ///< the host's regions of the masks follow that of the measure range
constexpr RowId Rows[] = {RowId::Mask1, RowId::Mask2, RowId::Mask3};

const char *const Selector = "ImageMaskerSelector";
const char *const Enable = "ImageMask";

QString selectorEntry(int mask)
{
    return QStringLiteral("ImageMasker%1").arg(mask);
}

} // namespace

ShieldMasks::ShieldMasks(PanelContext &context, QWidget *controlsParent) : m_context(context)
{
    for (int mask = 0; mask < int(m_switches.size()); ++mask) {
        auto *const button = new SwitchButton(controlsParent);
        button->setProperty("ROIID", FirstRegion + mask);
        m_switches[size_t(mask)] = button;
        context.controls[Rows[mask]] = button;
    }
}

void ShieldMasks::apply(const QObject *switchButton)
{
    const auto found = std::find(m_switches.begin(), m_switches.end(), switchButton);
    if (found == m_switches.end())
        return;
    const int mask = int(found - m_switches.begin());
    const bool on = (*found)->isOn();
    if (!on)
        callHost<HostCore::RomoveROI>(Module, m_context.deviceKey(), FirstRegion + mask);
    const bool enabled = enable(mask, on);
    (*found)->setSwitch(enabled);
    int region = FirstRegion + mask;
    bool accepted = false;
    if (enabled)
        callHost<HostCore::DrawROI>(Module, m_context.deviceKey(), 0, 0, 0, 0, region, accepted, 1, 0);
}

/// What became of it; as wished when the device refuses and does not tell either.
bool ShieldMasks::enable(int mask, bool on)
{
    const bool selected = writeNode(m_context, Selector, selectorEntry(mask));
    if (on)
        QThread::msleep(SelectorPause);
    const bool done = writeNode(m_context, Enable, on ? QStringLiteral("1") : QStringLiteral("0"));
    return selected && !done ? isEnabled().value_or(on) : on;
}

std::optional<bool> ShieldMasks::isEnabled() const
{
    const auto enabled = HostValues::knownText(m_context, Enable);
    return enabled ? std::optional(*enabled == QLatin1String("True")) : std::nullopt;
}

void ShieldMasks::beginShowing()
{
    m_selected = HostValues::knownText(m_context, Selector);
    m_shownMasks = 0;
}

void ShieldMasks::show(int mask)
{
    if (m_shownMasks != mask || !writeNode(m_context, Selector, selectorEntry(mask)))
        return;
    ++m_shownMasks;
    SwitchButton *const button = m_switches[size_t(mask)];
    const bool enabled = isEnabled().value_or(button->isOn());
    if (button->isOn() && !enabled)
        callHost<HostCore::RomoveROI>(Module, m_context.deviceKey(), FirstRegion + mask);
    button->setSwitch(enabled);
}

void ShieldMasks::endShowing()
{
    if (m_selected && m_shownMasks > 0)
        writeNode(m_context, Selector, *m_selected);
}

void ShieldMasks::adopt(int mask)
{
    const int result = m_context.reading->writeByName([&] {
        return callHost<HostCore::SetCameraNodeValue>(Module, m_context.deviceKey(), Selector,
                                                      selectorEntry(mask).toStdString());
    });
    if (result != 0)
        return;
    const bool enabled = isEnabled().value_or(false);
    if (enabled != m_switches[size_t(mask)]->isOn())
        m_switches[size_t(mask)]->click();
}
