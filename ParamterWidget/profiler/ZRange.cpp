// SPDX-License-Identifier: MIT
#include "ParamterWidget/profiler/ZRange.h"

#include <thread>

#include <QCoreApplication>
#include <QDoubleSpinBox>
#include <QPushButton>

#include "PanelBase/Guarded.h"
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
    : m_context(context),
      m_auto(PageControls::button("Auto", controlsParent)), m_maximum{PageControls::numberField(controlsParent,
                                                                                                Decimals),
                                                                      HostCore::CAM_INFO_Z_MAXIMUM, Highest},
      m_minimum{PageControls::numberField(controlsParent, Decimals), HostCore::CAM_INFO_Z_MINIMUM, Lowest}
{
    m_auto->setFixedHeight(ButtonHeight);
    const double upper = readNumber(context, "ZUpSizeInfo").value_or(Highest);
    const double lower = readNumber(context, "ZDownSizeInfo").value_or(Lowest);
    for (const Bound *bound : {&m_maximum, &m_minimum}) {
        PageControls::setRange(bound->field, lower, upper, Step);
        PageControls::put(bound->field, bound->usual);
    }
    show();
    context.controls[RowId::ZRange] = PageControls::row({m_auto}, controlsParent);
    context.controls[RowId::ZMaximum] = m_maximum.field;
    context.controls[RowId::ZMinimum] = m_minimum.field;
}

void ZRange::show()
{
    for (const Bound *bound : {&m_maximum, &m_minimum}) {
        if (const auto stored = readNumber(m_context, bound->item, QString::number(bound->usual)))
            PageControls::show(bound->field, *stored);
    }
}

void ZRange::determine()
{
    HostValues::writeSetting(m_context, HostCore::CAM_INFO_AUTOMATIC_Z_RANGE, QStringLiteral("1"));
    callHost<HostCore::SetCameraImageMode>("ZRange", m_context.deviceKey(), ProfileMode, false);
    // The host may take its time, and the panel may go meanwhile. Its log cannot be reached from that thread.
    std::thread([device = m_context.deviceKey()] { errorOf([&] { HostCore::StartGrab(device); }); }).detach();
}

void ZRange::apply(const QObject *edited)
{
    const bool inverted = PageControls::value(m_maximum.field) < PageControls::value(m_minimum.field);
    for (const Bound *bound : {&m_maximum, &m_minimum}) {
        if (bound->field != edited)
            continue;
        if (!inverted)
            HostValues::writeSetting(m_context, bound->item, HostValues::text(PageControls::value(bound->field)));
        else if (const auto stored = readNumber(m_context, bound->item))
            PageControls::put(bound->field, *stored);
        else
            PageControls::giveBack(bound->field);
        PageControls::settle(bound->field);
    }
}

void ZRange::retranslate()
{
    m_auto->setText(QCoreApplication::translate("ParamterWidget", "Auto"));
}
