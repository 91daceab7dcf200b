// SPDX-License-Identifier: MIT
#include "ParamterWidget/profiler/ImageTab.h"

#include <QComboBox>
#include <QDoubleSpinBox>
#include <QSignalBlocker>

#include "ParamterWidget/Guarded.h"
#include "ParamterWidget/HostValues.h"
#include "ParamterWidget/NodeAccess.h"
#include "ParamterWidget/PageControls.h"
#include "ParamterWidget/PanelContext.h"
#include "ToolPage/SwitchButton.h"

namespace {

using HostValues::readNumber;
using HostValues::readSetting;
using HostValues::writeNode;
using HostValues::writeSetting;

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
                     [this](int index) { guarded("ImageTab", [&] { followSamplingRate(index); }); });

    context.controls[RowId::MeasureRange] = m_measureRange;
    context.controls[RowId::GrayImage] = m_grayImage;
    context.controls[RowId::ContourSpacing] = m_contourSpacing;
    context.controls[RowId::SamplingRate] = m_samplingRate;
}

void ImageTab::showSettings() const
{
    m_grayImage->setSwitch(readSetting(m_context, HostCore::CAM_INFO_GRAY_IMAGE) == QLatin1String("1"));
    if (const auto spacing = readNumber(m_context, HostCore::CAM_INFO_CONTOUR_SPACING))
        PageControls::show(m_contourSpacing, *spacing);
    const QString rate = readSetting(m_context, HostCore::CAM_INFO_SAMPLING_RATE);
    const QSignalBlocker blocker(m_samplingRate);
    m_samplingRate->setCurrentText(rate == AutomaticSetting ? QString(AutomaticText) : rate);
}

void ImageTab::followMeasureRange() const
{
    if (!m_measureRange->isOn()) {
        HostCore::RomoveROI(m_context.deviceKey(), MeasureRangeRegion);
        restoreHeight();
        return;
    }
    writeNode(m_context, "CenterImageY", QStringLiteral("Off"));
    int region = MeasureRangeRegion;
    bool accepted = false;
    HostCore::DrawROI(m_context.deviceKey(), 0, 0, SensorSize.width(), SensorSize.height(), region, accepted, 0, 1);
}

void ImageTab::restoreHeight() const
{
    int value = 0, minimum = 0, maximum = 0, increment = 0;
    GetCameraIntNodeInfo(m_context.deviceName, QStringLiteral("Height"), value, minimum, maximum, increment);
    writeNode(m_context, "OffsetY", QStringLiteral("0"));
    if (maximum > 0)
        writeNode(m_context, "Height", QString::number(maximum));
}

void ImageTab::readMeasureRange() const
{
    const auto height = readNumber(m_context, "Height", QStringLiteral("2048"));
    const auto maximum = readNumber(m_context, "HeightMax");
    if (height && maximum && m_measureRange->isOn() != (*height != *maximum))
        m_measureRange->click();
}

void ImageTab::followGrayImage() const
{
    writeSetting(m_context, HostCore::CAM_INFO_GRAY_IMAGE, QString::number(m_grayImage->isOn() ? 1 : 0));
    HostCore::SetCameraImageMode(m_context.deviceKey(), GrayImageMode, true);
}

void ImageTab::followContourSpacing() const
{
    writeSetting(m_context, HostCore::CAM_INFO_CONTOUR_SPACING,
                 HostValues::text(PageControls::value(m_contourSpacing)));
    PageControls::settle(m_contourSpacing);
}

void ImageTab::readContourSpacing() const
{
    if (const auto spacing = readNumber(m_context, HostCore::CAM_INFO_CONTOUR_SPACING, DefaultSpacing))
        m_contourSpacing->setValue(*spacing);
}

void ImageTab::followSamplingRate(int index) const
{
    const QString rate = m_samplingRate->itemText(index);
    writeSetting(m_context, HostCore::CAM_INFO_SAMPLING_RATE, rate == AutomaticText ? QString(AutomaticSetting) : rate);
}
