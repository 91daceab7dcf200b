// SPDX-License-Identifier: MIT
#pragma once

#include <optional>

class QComboBox;
class QDoubleSpinBox;
class QWidget;
class SwitchButton;
struct PanelContext;

/// What part of the sensor a laser profiler captures, and how the host displays the result: measure range, intensity
/// image, row spacing, sampling rate. Display settings are the host's, kept per camera. GUI thread only.
class ImageTab
{
public:
    /// The controls become children of `controlsParent`, until a page places them; they show the host's settings.
    ImageTab(PanelContext &context, QWidget *controlsParent);

    SwitchButton *measureRange() const { return m_measureRange; }
    SwitchButton *grayImage() const { return m_grayImage; }
    /// Distance of the rows of the 3D view in mm, 0 to 1.
    QDoubleSpinBox *contourSpacing() const { return m_contourSpacing; }

    /// Lets the user draw the measure range, or removes it and restores the full sensor height. The switch goes back
    /// when the device does not allow it.
    void applyMeasureRange();
    /// Switches on a measure range that the device has, and off one that it has not.
    void adoptMeasureRange();
    /// Shows whether the device has a measure range, without drawing one. If it has none any more, the region is
    /// removed from the image.
    void showMeasureRange();
    void applyGrayImage();
    void applyContourSpacing();
    /// Sets the spacing from the host's settings, which get the default one if they have none.
    void adoptContourSpacing();
    /// Shows the host's settings, writing nothing. What is not usable, or is being typed, stays as it is.
    void showSettings();

private:
    void applySamplingRate(int index);
    void drawMeasureRange();
    bool restoreHeight();
    int largestHeight() const;
    /// The device acquires and keeps its range as it is meanwhile.
    bool isRangeLocked() const;
    /// The device has a range that is less than the sensor; nothing when it does not tell.
    std::optional<bool> isRangeLimited() const;

    PanelContext &m_context;
    SwitchButton *m_measureRange;
    SwitchButton *m_grayImage;
    QDoubleSpinBox *m_contourSpacing;
    QComboBox *m_samplingRate;
};
