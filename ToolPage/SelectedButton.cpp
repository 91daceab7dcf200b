// SPDX-License-Identifier: MIT
#include "ToolPage/SelectedButton.h"

#include "PanelBase/StyleSheets.h"

SelectedButton::SelectedButton(QWidget *parent) : QPushButton(parent)
{
    setSelected(false);
    connect(this, &QPushButton::clicked, this, [this] { setSelected(!m_selected); });
}

void SelectedButton::setSelected(bool selected)
{
    m_selected = selected;
    setStyleSheet(selected ? StyleSheets::SelectedButton : StyleSheets::PlainButton);
}
