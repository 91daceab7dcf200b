// SPDX-License-Identifier: MIT
#include "ParamterWidget/profiler/ImageTab.h"

#include <algorithm>

#include <QComboBox>
#include <QDoubleSpinBox>
#include <QSignalBlocker>

#include "PanelBase/Guarded.h"
#include "ParamterWidget/HostValues.h"
#include "ParamterWidget/PageControls.h"
#include "ParamterWidget/PanelContext.h"
#include "ToolPage/SwitchButton.h"

namespace {

using HostValues::readNumber;
using HostValues::readSetting;
using HostValues::writeNode;
using HostValues::writeSetting;

constexpr const char *Module = "ImageTab";
constexpr int MeasureRangeRegion = 0;
constexpr QSize SensorSize(2048, 1024); ///< what the region starts from, in pixels
constexpr int GrayImageMode = 3;
const QLatin1String DefaultSpacing("0.002"); // mm

const QLatin1String AutomaticText("Auto"); ///< sampling rate
const QLatin1String AutomaticSetting("0");

QStringList samplingRates()
{
    QStringList rates;
    for (int rate = 1; rate <= 128; rate *= 2)
        rates << QString::number(rate);
    return rates << AutomaticText;
}

} // namespace

ImageTab::ImageTab(PanelContext &context, QWidget *controlsParent)
    : m_context(context), m_measureRange(new SwitchButton(controlsParent)),
      m_grayImage(new SwitchButton(controlsParent)), m_contourSpacing(PageControls::numberField(controlsParent)),
      m_samplingRate(PageControls::list(samplingRates(), controlsParent))
{
    m_measureRange->setProperty("ROIID", MeasureRangeRegion);
    PageControls::setRange(m_contourSpacing, 0.0, 1.0, 0.01);
    showSettings();
    QObject::connect(m_samplingRate, qOverload<int>(&QComboBox::currentIndexChanged), m_samplingRate,
                     [this](int index) { guarded(Module, [&] { applySamplingRate(index); }); });

    context.controls[RowId::MeasureRange] = m_measureRange;
    context.controls[RowId::GrayImage] = m_grayImage;
    context.controls[RowId::ContourSpacing] = m_contourSpacing;
    context.controls[RowId::SamplingRate] = m_samplingRate;
}

void ImageTab::showSettings()
{
    m_grayImage->setSwitch(readSetting(m_context, HostCore::CAM_INFO_GRAY_IMAGE) == QLatin1String("1"));
    if (const auto spacing = readNumber(m_context, HostCore::CAM_INFO_CONTOUR_SPACING))
        PageControls::show(m_contourSpacing, *spacing);
    const QString rate = readSetting(m_context, HostCore::CAM_INFO_SAMPLING_RATE);
    const QSignalBlocker blocker(m_samplingRate);
    m_samplingRate->setCurrentText(rate == AutomaticSetting ? QString(AutomaticText) : rate);
}

void ImageTab::applyMeasureRange()
{
    const bool on = m_measureRange->isOn();
    if (isRangeLocked() && isRangeLimited().value_or(on) != on) {
        m_measureRange->setSwitch(!on);
        m_context.log(Module, QStringLiteral("The measure range cannot be switched while the device acquires"));
    } else if (on) {
        writeNode(m_context, "CenterImageY", QStringLiteral("Off"));
        drawMeasureRange();
    } else {
        callHost<HostCore::RomoveROI>(Module, m_context.deviceKey(), MeasureRangeRegion);
        if (!restoreHeight() && isRangeLimited().value_or(false)) {
            m_measureRange->setSwitch(true);
            drawMeasureRange();
        }
    }
}

void ImageTab::drawMeasureRange()
{
    int region = MeasureRangeRegion;
    bool accepted = false;
    callHost<HostCore::DrawROI>(Module, m_context.deviceKey(), 0, 0, SensorSize.width(), SensorSize.height(), region,
                                accepted, 0, 1);
}

/// The maximum may grow when the offset has gone. False when the device refuses.
bool ImageTab::restoreHeight()
{
    const int before = largestHeight();
    bool done = writeNode(m_context, "OffsetY", QStringLiteral("0"));
    const int maximum = std::max(before, largestHeight());
    if (maximum > 0)
        done &= writeNode(m_context, "Height", QString::number(maximum));
    return done;
}

/// 0 when the device does not tell.
int ImageTab::largestHeight() const
{
    return HostValues::readInteger(m_context, "Height").maximum;
}

bool ImageTab::isRangeLocked() const
{
    GenApi::INodeMap *const nodeMap = m_context.nodeMap();
    GenApi::INode *const height = nodeMap ? nodeMap->GetNode("Height") : nullptr;
    bool isFixed = false;
    m_context.read([&] { isFixed = height && height->GetAccessMode() == GenApi::RO; });
    return isFixed && readSetting(m_context, HostCore::CAM_INFO_ACQUISITION) == QLatin1String("1");
}

std::optional<bool> ImageTab::isRangeLimited() const
{
    const auto height = readNumber(m_context, "Height");
    const auto maximum = readNumber(m_context, "HeightMax");
    return height && maximum ? std::optional(*height != *maximum) : std::nullopt;
}

void ImageTab::showMeasureRange()
{
    const bool on = isRangeLimited().value_or(m_measureRange->isOn());
    if (m_measureRange->isOn() && !on)
        callHost<HostCore::RomoveROI>(Module, m_context.deviceKey(), MeasureRangeRegion);
    m_measureRange->setSwitch(on);
}

void ImageTab::adoptMeasureRange()
{
    const auto height = readNumber(m_context, "Height", QStringLiteral("2048"));
    const auto maximum = readNumber(m_context, "HeightMax");
    if (height && maximum && m_measureRange->isOn() != (*height != *maximum))
        m_measureRange->click();
}

void ImageTab::applyGrayImage()
{
    writeSetting(m_context, HostCore::CAM_INFO_GRAY_IMAGE, QString::number(m_grayImage->isOn() ? 1 : 0));
    callHost<HostCore::SetCameraImageMode>(Module, m_context.deviceKey(), GrayImageMode, true);
}

void ImageTab::applyContourSpacing()
{
    writeSetting(m_context, HostCore::CAM_INFO_CONTOUR_SPACING,
                 HostValues::text(PageControls::value(m_contourSpacing)));
    PageControls::settle(m_contourSpacing);
}

void ImageTab::adoptContourSpacing()
{
    if (const auto spacing = readNumber(m_context, HostCore::CAM_INFO_CONTOUR_SPACING, DefaultSpacing))
        m_contourSpacing->setValue(*spacing);
}

void ImageTab::applySamplingRate(int index)
{
    const QString rate = m_samplingRate->itemText(index);
    writeSetting(m_context, HostCore::CAM_INFO_SAMPLING_RATE, rate == AutomaticText ? QString(AutomaticSetting) : rate);
}
