// SPDX-License-Identifier: MIT
#include "ParamterWidget/DescriptionPane.h"

#include <QCoreApplication>
#include <QTextBrowser>

#include "ParamterWidget/FeatureDescription.h"
#include "ToolPage/CToolPage.h"
#include "ToolPage/ToolPageWidgetItem.h"

namespace {

QString title()
{
    return QCoreApplication::translate("ParamterWidget", "Parameter Description");
}

} // namespace

DescriptionPane::DescriptionPane(QWidget *panel) : m_text(new QTextBrowser(panel)) { }

void DescriptionPane::placeIn(CToolPage *page)
{
    m_page = page;
    page->setStretchEnable(true);
    page->setAutoStretchEnable(true);
    m_text->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    page->addWidget(title(), QString(), m_text);
    m_text->setAccessibleName(title());
}

void DescriptionPane::describe(GenApi::INode *feature, DeviceReading *reading)
{
    m_text->setText(featureDescription(feature, reading));
    m_row = nullptr;
}

void DescriptionPane::describe(const ToolPageWidgetItem *row)
{
    m_row = row;
    showRow();
}

void DescriptionPane::retranslate(int language)
{
    m_page->setText(title());
    m_text->setAccessibleName(title());
    m_language = language == 0 ? 0 : 1;
    showRow();
}

void DescriptionPane::showRow()
{
    if (m_row)
        m_text->setText(m_row->getDescription(m_language));
}
