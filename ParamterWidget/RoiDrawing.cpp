// SPDX-License-Identifier: MIT
#include "ParamterWidget/RoiDrawing.h"

#include <QCoreApplication>
#include <QPushButton>
#include <QSpinBox>

#include "ToolPage/SelectedButton.h"
#include "ToolPage/StyleSheets.h"

RoiDrawing::RoiDrawing(QWidget *controlsParent)
    : m_selectButton(new SelectedButton(controlsParent)), m_drawButton(new QPushButton(controlsParent)),
      m_resetImageSizeButton(new QPushButton(controlsParent))
{
    for (QSpinBox *&coordinate : m_coordinates)
        coordinate = new QSpinBox(controlsParent);
    for (QPushButton *button : {static_cast<QPushButton *>(m_selectButton), m_drawButton, m_resetImageSizeButton})
        button->setText(QCoreApplication::translate("ParamterWidget", "Execute"));
    m_drawButton->setEnabled(false);
    for (QPushButton *button : {static_cast<QPushButton *>(m_selectButton), m_drawButton})
        button->setStyleSheet(StyleSheets::PlainButton);
}

bool RoiDrawing::isDrawing() const
{
    return m_selectButton->isSelected();
}

void RoiDrawing::lock()
{
    if (isDrawing())
        m_selectButton->click();
    setButtonsEnabled(false);
}

void RoiDrawing::unlock()
{
    setButtonsEnabled(true);
}

void RoiDrawing::setButtonsEnabled(bool enabled)
{
    m_selectButton->setEnabled(enabled);
    m_resetImageSizeButton->setEnabled(enabled);
}
