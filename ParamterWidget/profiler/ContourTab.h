// SPDX-License-Identifier: MIT
#pragma once

class QComboBox;
class QString;
class QWidget;
struct PanelContext;

/// The laser's brightness: automatic within bounds, or a fixed value. GUI thread only.
class ContourTab
{
public:
    /// The list becomes a child of `controlsParent`, until a page places it.
    ContourTab(PanelContext &context, QWidget *controlsParent);

    QComboBox *laserAdjustMode() const { return m_laserAdjustMode; }
    /// Writes the mode and shows the rows that belong to it. A refused one goes back to that of the device.
    void applyLaserAdjustMode();
    /// Sets the list from the device and applies it as if the user had chosen the entry.
    void adoptLaserAdjustMode();
    /// Shows what the device has and the rows that belong to it, writing nothing. A mode that cannot be read stays.
    void showLaserAdjustMode();

private:
    QString mode() const; ///< the device's name of the entry that is shown
    void showRows();

    PanelContext &m_context;
    QComboBox *m_laserAdjustMode;
};
