// SPDX-License-Identifier: MIT
#include "ParamterWidget/profiler/Corrections.h"

#include <cmath>

#include <QCoreApplication>
#include <QDoubleSpinBox>
#include <QPushButton>
#include <QThread>

#include "PanelBase/HostCall.h"
#include "PanelBase/NumberInput.h"
#include "ParamterWidget/HostValues.h"
#include "ParamterWidget/NodeAccess.h"
#include "ParamterWidget/PageControls.h"
#include "ParamterWidget/PanelContext.h"
#include "ToolPage/ToolPageWidgetItem.h"

namespace {

using HostValues::text;
using HostValues::writeNode;

constexpr double RadiansPerDegree = 0.017453292519943295;
constexpr double LargestTilt = 44.427; // degrees
constexpr double Step = 0.001;
constexpr unsigned long SinePause = 10; // ms
constexpr QSize ButtonSize(60, 34);

/// The values that the host can determine.
enum Kind { Tilt, Height };

} // namespace

Corrections::Corrections(PanelContext &context, QWidget *controlsParent)
    : m_context(context), m_tilt(PageControls::numberField(controlsParent)),
      m_height(PageControls::numberField(controlsParent)),
      m_tiltButton(PageControls::button("Settings", controlsParent)),
      m_heightButton(PageControls::button("Settings", controlsParent))
{
    for (QPushButton *button : {m_tiltButton, m_heightButton})
        button->setFixedSize(ButtonSize);
    for (QDoubleSpinBox *field : {m_tilt, m_height})
        field->setFixedHeight(ButtonSize.height());
    context.controls[RowId::TiltCorrection] = PageControls::row({m_tilt, m_tiltButton}, controlsParent);
    context.controls[RowId::HeightCorrection] = PageControls::row({m_height, m_heightButton}, controlsParent);
}

void Corrections::apply(const QObject *field)
{
    if (field == m_tilt)
        writeTilt();
    else if (field == m_height)
        writeHeight();
}

void Corrections::writeTilt()
{
    const double angle = PageControls::value(m_tilt) * RadiansPerDegree;
    bool done = writeNode(m_context, "SinData", text(std::sin(angle)));
    QThread::msleep(SinePause);
    done &= writeNode(m_context, "CosData", text(std::cos(angle)));
    leave(m_tilt, RowId::TiltCorrection);
    if (!done)
        showTilt();
}

void Corrections::writeHeight()
{
    const bool done = writeNode(m_context, "ZCoorScale", text(PageControls::value(m_height)));
    leave(m_height, RowId::HeightCorrection);
    if (!done)
        showHeight();
}

void Corrections::leave(QDoubleSpinBox *field, RowId id)
{
    ToolPageWidgetItem *const row = m_context.placed(id).row;
    PageControls::settle(field);
    if (row && field->hasFocus() && !NumberInput::of(field)->keepsFocus())
        row->setFocus(Qt::OtherFocusReason);
}

void Corrections::determine(const QObject *button)
{
    if (button != m_tiltButton && button != m_heightButton)
        return;
    const Kind kind = button == m_tiltButton ? Tilt : Height;
    QDoubleSpinBox *const field = kind == Tilt ? m_tilt : m_height;
    callHost<HostCore::NotifyCorrection>("Corrections", m_context.deviceKey(), kind, static_cast<float>(field->value()),
                                         field);
    Q_EMIT field->editingFinished();
}

void Corrections::showTilt()
{
    const auto sine = HostValues::readNumber(m_context, "SinData");
    if (sine && std::abs(*sine) > 1.0) {
        HostValues::reportUnusable(m_context, QStringLiteral("SinData"), text(*sine));
    } else if (sine) {
        PageControls::setRange(m_tilt, -LargestTilt, LargestTilt, Step);
        PageControls::show(m_tilt, std::asin(*sine) / RadiansPerDegree);
    }
}

void Corrections::showHeight()
{
    float value = 0, minimum = 0, maximum = 0, increment = 0;
    bool isRead = false;
    m_context.read([&] {
        isRead = GetCamerFloatNodeValue(m_context.deviceName, QStringLiteral("ZCoorScale"), value, minimum, maximum,
                                        increment)
            == 0;
    });
    if (isRead) {
        PageControls::setRange(m_height, static_cast<double>(minimum), static_cast<double>(maximum), Step);
        PageControls::show(m_height, static_cast<double>(value));
    }
}

void Corrections::retranslate()
{
    for (QPushButton *button : {m_tiltButton, m_heightButton})
        button->setText(QCoreApplication::translate("ParamterWidget", "Settings"));
}
