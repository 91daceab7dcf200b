// SPDX-License-Identifier: MIT
#pragma once

#include <QTimer>

class QSpinBox;
class QWidget;
class SwitchButton;
struct PanelContext;

/// The automatic software trigger: executes the camera's command "TriggerSoftware" at a fixed period while
/// its switch is on. GUI thread only.
class SoftTrigger
{
public:
    /// The two controls become children of `controlsParent`, until a page places them; the timer stays one.
    SoftTrigger(PanelContext &context, QWidget *controlsParent);

    QTimer *timer() { return &m_timer; }
    SwitchButton *switchButton() const { return m_switch; }

    /// Starts or stops the timer, as a switch says. Nothing happens for null.
    void apply(const SwitchButton *switchButton);
    /// Triggers the camera once; a failure changes nothing.
    void fire();

private:
    PanelContext &m_context;
    QTimer m_timer;
    QSpinBox *m_interval; ///< in ms, 1 to 10000, 1000 at first; enabled while the trigger is off
    SwitchButton *m_switch;
};
