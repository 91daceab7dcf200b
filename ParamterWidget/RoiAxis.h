// SPDX-License-Identifier: MIT
#pragma once

class QObject;
class QSpinBox;
class QWidget;
struct PanelContext;

/// One direction of a region that is being drawn: its size and its offset in sensor pixels. It never leaves the region
/// that the camera had when drawing began. GUI thread only.
class RoiAxis
{
public:
    /// The names of the camera's features. The fields become children of `controlsParent`, until a page places them.
    RoiAxis(const char *sizeFeature, const char *offsetFeature, QWidget *controlsParent);

    const char *sizeFeature() const { return m_sizeFeature; }
    const char *offsetFeature() const { return m_offsetFeature; }
    QSpinBox *size() const { return m_size; }
    QSpinBox *offset() const { return m_offset; }
    /// In the pixels of the host's image, which shows the camera's region.
    int begin() const;
    int length() const;

    /// Starts with the region that the camera has.
    void adoptCamera(const PanelContext &context);
    /// The camera still has that region, as far as it tells.
    bool isCurrent(const PanelContext &context) const;
    /// Takes what the user drew in the host's image, from either end.
    void adoptHost(int from, int to);
    /// Limits the partner of the edited field to the edge of the camera's region; false for an object of another axis.
    bool limitPartner(const QObject *edited);

private:
    void settle();

    const char *m_sizeFeature;
    const char *m_offsetFeature;
    QSpinBox *m_size;
    QSpinBox *m_offset;
    int m_edge = 0; ///< right or bottom end of the camera's region in sensor pixels
};
