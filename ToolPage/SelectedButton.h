// SPDX-License-Identifier: MIT
#pragma once

#include <QPushButton>

/// A tool button that latches: each click turns its selection over before other receivers of clicked() run.
class SelectedButton : public QPushButton
{
    Q_OBJECT

public:
    /// Not selected at first.
    explicit SelectedButton(QWidget *parent = nullptr);

    /// Shows the state; emits nothing.
    void setSelected(bool selected);
    bool isSelected() const { return m_selected; }

private:
    bool m_selected = false;
};
