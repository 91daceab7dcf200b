// SPDX-License-Identifier: MIT
#include "ParamterWidget/profiler/ShieldMasks.h"

#include <QThread>
#include <QVariant>

#include "ParamterWidget/HostValues.h"
#include "ParamterWidget/PanelContext.h"
#include "ToolPage/HostCall.h"
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

void ShieldMasks::follow(const QObject *switchButton) const
{
    for (int mask = 0; mask < int(m_switches.size()); ++mask) {
        const SwitchButton *const button = m_switches[size_t(mask)];
        if (button != switchButton)
            continue;
        int region = FirstRegion + mask;
        if (button->isOn()) {
            writeNode(m_context, Selector, selectorEntry(mask));
            QThread::msleep(SelectorPause);
            writeNode(m_context, Enable, QStringLiteral("1"));
            bool accepted = false;
            callHost<HostCore::DrawROI>(Module, m_context.deviceKey(), 0, 0, 0, 0, region, accepted, 1, 0);
        } else {
            callHost<HostCore::RomoveROI>(Module, m_context.deviceKey(), region);
            writeNode(m_context, Selector, selectorEntry(mask));
            writeNode(m_context, Enable, QStringLiteral("0"));
        }
    }
}

void ShieldMasks::read() const
{
    const std::string device = m_context.deviceKey();
    for (int mask = 0; mask < int(m_switches.size()); ++mask) {
        if (callHost<HostCore::SetCameraNodeValue>(Module, device, Selector, selectorEntry(mask).toStdString()) != 0)
            continue;
        const bool enabled = HostValues::readNode(m_context, Enable) == QLatin1String("True");
        if (enabled != m_switches[size_t(mask)]->isOn())
            m_switches[size_t(mask)]->click();
    }
}
