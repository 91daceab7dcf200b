// SPDX-License-Identifier: MIT
#pragma once

#include <array>
#include <optional>

#include <QString>

class QObject;
class QWidget;
class SwitchButton;
struct PanelContext;

/// The three areas of the sensor image that a laser profiler can ignore, drawn by the user on the host's image view.
/// The device addresses them by a selector. GUI thread only; switching one on pauses for 5 ms.
class ShieldMasks
{
public:
    /// The switches become children of `controlsParent`, until a page places them.
    ShieldMasks(PanelContext &context, QWidget *controlsParent);

    const std::array<SwitchButton *, 3> &switches() const { return m_switches; }
    /// Lets the user draw the area of a switch, or removes it. A switch that the device refuses goes back, with its
    /// area. Other objects are ignored.
    void apply(const QObject *switchButton);
    /// Switches on a mask that the device has enabled, or off. A mask that cannot be selected keeps its switch.
    void adopt(int mask);
    /// Show what the device has enabled, without drawing; areas that are off are removed from the image. Each mask is
    /// selected to be asked for, from 0 on until one cannot be, and at the end the one that was selected before.
    void beginShowing();
    void show(int mask);
    void endShowing();

private:
    bool enable(int mask, bool on);
    /// Of the mask that is selected.
    std::optional<bool> isEnabled() const;

    PanelContext &m_context;
    std::array<SwitchButton *, 3> m_switches;
    std::optional<QString> m_selected; ///< before the masks are shown, if known
    int m_shownMasks = 0;
};
