// SPDX-License-Identifier: MIT
#include "ToolPage/CustomButton.h"

#include "PanelBase/StyleSheets.h"

CustomButton::CustomButton(const QString &normalImage, const QString &selectedImage, const QString &disabledImage,
                           QWidget *parent)
    : QPushButton(parent), m_normalImage(normalImage), m_selectedImage(selectedImage), m_disabledImage(disabledImage)
{
    setSeleted(false);
    connect(this, &QPushButton::clicked, this, [this] { setSeleted(!m_selected); });
}

CustomButton::CustomButton(QWidget *parent) : QPushButton(parent) { }

void CustomButton::setSeleted(bool selected)
{
    m_selected = selected;
    setStyleSheet(
        StyleSheets::imageButton(selected ? m_selectedImage : m_normalImage, m_selectedImage, m_disabledImage));
}
