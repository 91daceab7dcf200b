// SPDX-License-Identifier: MIT
#pragma once

#include <QPushButton>

/// An on/off switch, 44 x 20 by its images. A click or Space toggles it before other receivers of
/// clicked() run, so they may read isOn().
class SwitchButton : public QPushButton
{
    Q_OBJECT

public:
    /// Off at first.
    explicit SwitchButton(QWidget *parent = nullptr);

    /// Shows the state; emits nothing.
    void setSwitch(bool on);
    bool isOn() const { return m_on; }

protected:
    /// Shows the focus as a ring while the keyboard is in use.
    void paintEvent(QPaintEvent *event) override;

private:
    bool m_on = false;
};
