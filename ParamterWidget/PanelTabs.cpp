// SPDX-License-Identifier: MIT
#include "ParamterWidget/PanelTabs.h"

#include <QCoreApplication>
#include <QTabWidget>

#include "ParamterWidget/PanelContext.h"
#include "ParamterWidget/ParamterForm.h"
#include "ToolPage/CTabWidget.h"
#include "ToolPage/CToolBox.h"

namespace {

constexpr const char *PagesTitle = QT_TRANSLATE_NOOP("ParamterWidget", "Common Attribute");
constexpr const char *TreeTitle = QT_TRANSLATE_NOOP("ParamterWidget", "All Attribute");

constexpr const char *AreaScanTitles[] = {QT_TRANSLATE_NOOP("ParamterWidget", "Commom"),
                                          QT_TRANSLATE_NOOP("ParamterWidget", "Trigger"),
                                          QT_TRANSLATE_NOOP("ParamterWidget", "Advance")};
constexpr const char *ProfilerTitles[] = {
    QT_TRANSLATE_NOOP("ParamterWidget", "Trigger"), QT_TRANSLATE_NOOP("ParamterWidget", "Image"),
    QT_TRANSLATE_NOOP("ParamterWidget", "Contour"), QT_TRANSLATE_NOOP("ParamterWidget", "Others")};
constexpr const char *StructuredLightTitles[] = {QT_TRANSLATE_NOOP("ParamterWidget", "Shoot"),
                                                 QT_TRANSLATE_NOOP("ParamterWidget", "Image"),
                                                 QT_TRANSLATE_NOOP("ParamterWidget", "Advance")};

/// Titles of the inner tabs, which show as many tool boxes. In the order of PageSet.
constexpr Table<const char *> Titles[] = {AreaScanTitles, ProfilerTitles, StructuredLightTitles};

QString translated(const char *text)
{
    return QCoreApplication::translate("ParamterWidget", text);
}

} // namespace

PanelTabs::PanelTabs(const PanelContext &context, const Ui_ParamterWidget &form) : m_context(context), m_form(form)
{
    while (m_form.tabWidget->count() > 0)
        m_form.tabWidget->removeTab(m_form.tabWidget->count() - 1);
    setTexts();
}

void PanelTabs::addPages(PageSet pageSet)
{
    for (const char *title : Titles[int(pageSet)])
        m_form.tabWidget->addTab(m_context.toolBoxes.at(m_form.tabWidget->count()), translated(title));
}

void PanelTabs::setPagesVisible(bool visible)
{
    setVisible(m_form.tabPannel, visible, 0, PagesTitle);
}

void PanelTabs::setTreeVisible(bool visible)
{
    setVisible(m_form.tabAttribute, visible, m_form.tabMainWidget->count(), TreeTitle);
}

void PanelTabs::setVisible(QWidget *tab, bool visible, int place, const char *title)
{
    const int index = m_form.tabMainWidget->indexOf(tab);
    if (!visible)
        m_form.tabMainWidget->removeTab(index);
    else if (index < 0)
        m_form.tabMainWidget->insertTab(place, tab, translated(title));
}

bool PanelTabs::isFirstPageInView() const
{
    return m_form.tabMainWidget->currentIndex() == 0 && m_form.tabWidget->currentIndex() == 0;
}

void PanelTabs::retranslate(PageSet pageSet, int language)
{
    int page = 0;
    for (const char *title : Titles[int(pageSet)]) {
        m_form.tabWidget->setTabText(page, translated(title));
        m_context.toolBoxes.at(page++)->setLanguage(language);
    }
    setTexts();
}

void PanelTabs::setTexts()
{
    QTabWidget *const tabs = m_form.tabMainWidget;
    tabs->setTabText(tabs->indexOf(m_form.tabPannel), translated(PagesTitle));
    tabs->setTabText(tabs->indexOf(m_form.tabAttribute), translated(TreeTitle));
}
