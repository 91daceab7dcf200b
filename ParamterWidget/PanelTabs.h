// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

#include "ParamterWidget/PageSet.h"

class CToolBox;
class QWidget;
class Ui_ParamterWidget;
struct PanelContext;

/// The tabs of a panel: the curated pages, one inner tab for each tool box of a camera, and the feature tree. GUI
/// thread only.
class PanelTabs
{
public:
    /// Without inner tabs at first. `form` must be built, and outlive this with the context.
    PanelTabs(const PanelContext &context, const Ui_ParamterWidget &form);

    /// Adds the inner tabs of these pages.
    void addPages(PageSet pageSet);
    /// Shows or hides the tab of the curated pages, and that of the feature tree.
    void setPagesVisible(bool visible);
    void setTreeVisible(bool visible);
    bool isFirstPageInView() const;
    /// Sets the texts in the application's language, those on the pages too; `language` is 0 for English.
    void retranslate(PageSet pageSet, int language);

private:
    void setTexts();
    void setVisible(QWidget *tab, bool visible, int place, const char *title);

    const PanelContext &m_context;
    const Ui_ParamterWidget &m_form;
};
