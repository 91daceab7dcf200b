// SPDX-License-Identifier: MIT
#include "ParamterWidget/profiler/ZRange.h"

#include <thread>

#include <QCoreApplication>
#include <QDoubleSpinBox>
#include <QPushButton>

#include "ParamterWidget/Guarded.h"
#include "ParamterWidget/HostValues.h"
#include "ParamterWidget/PageControls.h"
#include "ParamterWidget/PanelContext.h"

namespace {

using HostValues::readNumber;

constexpr double Highest = 9.0; // mm
constexpr double Lowest = -9.0;
constexpr double Step = 0.01;
constexpr int Decimals = 2;
constexpr int ButtonHeight = 30;
constexpr int ProfileMode = 1; ///< image mode of the host

} // namespace

ZRange::ZRange(PanelContext &context, QWidget *controlsParent)
    : m_context(context), m_auto(PageControls::button("Auto", controlsParent)),
      m_maximum(PageControls::numberField(controlsParent, Decimals)),
      m_minimum(PageControls::numberField(controlsParent, Decimals))
{
    m_auto->setFixedHeight(ButtonHeight);
    const double upper = readNumber(context, "ZUpSizeInfo").value_or(Highest);
    const double lower = readNumber(context, "ZDownSizeInfo").value_or(Lowest);
    for (QDoubleSpinBox *bound : {m_maximum, m_minimum})
        PageControls::setRange(bound, lower, upper, Step);
    PageControls::put(m_maximum, Highest);
    PageControls::put(m_minimum, Lowest);
    show();
    context.controls[RowId::ZRange] = PageControls::row({m_auto}, controlsParent);
    context.controls[RowId::ZMaximum] = m_maximum;
    context.controls[RowId::ZMinimum] = m_minimum;
}

void ZRange::show() const
{
    if (const auto maximum = readNumber(m_context, HostCore::CAM_INFO_Z_MAXIMUM, QString::number(Highest)))
        PageControls::show(m_maximum, *maximum);
    if (const auto minimum = readNumber(m_context, HostCore::CAM_INFO_Z_MINIMUM, QString::number(Lowest)))
        PageControls::show(m_minimum, *minimum);
}

void ZRange::determine() const
{
    HostValues::writeSetting(m_context, HostCore::CAM_INFO_AUTOMATIC_Z_RANGE, QStringLiteral("1"));
    HostCore::SetCameraImageMode(m_context.deviceKey(), ProfileMode, false);
    // The host may take its time, and the panel may go meanwhile. Its log cannot be reached from that thread.
    std::thread([device = m_context.deviceKey()] { errorOf([&] { HostCore::StartGrab(device); }); }).detach();
}

void ZRange::follow(const QObject *bound) const
{
    const bool inverted = PageControls::value(m_maximum) < PageControls::value(m_minimum);
    for (const auto &[field, item] :
         {std::pair(m_maximum, HostCore::CAM_INFO_Z_MAXIMUM), std::pair(m_minimum, HostCore::CAM_INFO_Z_MINIMUM)}) {
        if (field != bound)
            continue;
        if (!inverted)
            HostValues::writeSetting(m_context, item, HostValues::text(PageControls::value(field)));
        else if (const auto stored = readNumber(m_context, item))
            PageControls::put(field, *stored);
        PageControls::settle(field);
    }
}

void ZRange::retranslate() const
{
    m_auto->setText(QCoreApplication::translate("ParamterWidget", "Auto"));
}
