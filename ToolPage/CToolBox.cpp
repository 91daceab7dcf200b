// SPDX-License-Identifier: MIT
#include "ToolPage/CToolBox.h"

#include <QGridLayout>
#include <QScrollArea>
#include <QVBoxLayout>

#include "ToolPage/CToolPage.h"

CToolBox::CToolBox(QWidget *parent) : QWidget(parent)
{
    auto *grid = new QGridLayout(this);
    grid->setObjectName(QStringLiteral("gridLayout"));
    grid->setSpacing(0);
    grid->setContentsMargins(0, 0, 0, 0);
    auto *scrollArea = new QScrollArea(this);
    scrollArea->setObjectName(QStringLiteral("scrollArea"));
    scrollArea->setFrameShape(QFrame::NoFrame);
    scrollArea->setLineWidth(1);
    scrollArea->setWidgetResizable(true);
    scrollArea->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    scrollArea->setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    scrollArea->setFocusPolicy(Qt::ClickFocus); // Tab goes to the editors, which scroll into view
    grid->addWidget(scrollArea);

    auto *content = new QWidget;
    auto *column = new QVBoxLayout(content);
    column->setContentsMargins(0, 0, 0, 0);
    m_pageLayout = new QVBoxLayout;
    m_pageLayout->setContentsMargins(0, 0, 0, 10);
    m_pageLayout->setSpacing(0);
    column->addLayout(m_pageLayout);
    column->addStretch(1);
    scrollArea->setWidget(content);
}

void CToolBox::addWidget(const QString &englishTitle, const QString &chineseTitle, QWidget *content)
{
    auto *page = new CToolPage(this);
    m_pageLayout->addWidget(page); // before it is filled: what moves with a widget is styled anew
    connect(page, &CToolPage::emptyChanged, page, &QWidget::setHidden);
    page->addWidget(englishTitle, chineseTitle, content);
    m_pages.append(page);
}

void CToolBox::updateWidget()
{
    for (CToolPage *page : std::as_const(m_pages))
        page->updateWidget();
}

void CToolBox::setLanguage(int language)
{
    for (CToolPage *page : std::as_const(m_pages))
        page->setLanguage(language);
}

void CToolBox::showEvent(QShowEvent *event)
{
    for (CToolPage *page : std::as_const(m_pages)) {
        if (page->isEmpty())
            page->updateWidget();
    }
    QWidget::showEvent(event);
}
