// SPDX-License-Identifier: MIT
#pragma once

#include <GenApi/GenApi.h>

class CToolPage;
class DeviceReading;
class QTextBrowser;
class QWidget;
class ToolPageWidgetItem;

/// Describes the feature of the tree or the row of a page that was selected last. GUI thread only; exceptions of
/// GenICam leave describe().
class DescriptionPane
{
public:
    /// The pane becomes a child of `panel`, until placeIn().
    explicit DescriptionPane(QWidget *panel);

    /// Shows the pane under its title in `page`, which must outlive it.
    void placeIn(CToolPage *page);
    /// `reading` tells how the device is read, null: at once.
    void describe(GenApi::INode *feature, DeviceReading *reading);
    /// The row must outlive the pane; for null the text stays as it is.
    void describe(const ToolPageWidgetItem *row);
    /// Sets the texts in the application's language, but for those of a feature; 0 for English.
    void retranslate(int language);

private:
    void showRow();

    QTextBrowser *m_text;
    CToolPage *m_page = nullptr;
    const ToolPageWidgetItem *m_row = nullptr; ///< null unless a row was selected last
    int m_language = 0;
};
