// SPDX-License-Identifier: MIT
#pragma once

#include <array>

class CTabWidget;
class CToolBox;
class CToolPage;
class FeatureTreeView;
class QComboBox;
class QGridLayout;
class QLabel;
class QLineEdit;
class QSplitter;
class QTabWidget;
class QToolButton;
class QVBoxLayout;
class QWidget;

/// The widget tree of a panel. Members carry their object names; the panel owns all widgets.
class Ui_ParamterWidget
{
public:
    QWidget *wdgBackground = nullptr;
    QSplitter *splitter = nullptr;
    QTabWidget *tabMainWidget = nullptr;

    QWidget *tabPannel = nullptr;
    CTabWidget *tabWidget = nullptr;
    /// The pages "tab", "tab_2", "tab_3" and "tab_4" of "tabWidget".
    std::array<QWidget *, 4> innerPages = {};
    CToolBox *firstToolBox = nullptr;
    CToolBox *secondToolBox = nullptr;
    CToolBox *thirdToolBox = nullptr;
    CToolBox *fourthToolBox = nullptr;

    QWidget *tabAttribute = nullptr;
    QToolButton *toolButton = nullptr;
    QLineEdit *edit_search = nullptr;
    QLabel *label = nullptr;
    QComboBox *cboboxLevel = nullptr;
    FeatureTreeView *widget_featrue = nullptr;

    CToolPage *widget_attrInfo = nullptr;

    /// Builds the tree into `panel`, which must have no layout yet, and sets the texts.
    void setupUi(QWidget *panel);
    /// Sets all texts in the application's language. Fills the level selector anew, which selects its first entry.
    void retranslateUi(QWidget *panel);

private:
    void buildCommonPage();
    CToolBox *buildInnerPage(int index);
    void buildAttributePage();
    void buildFilterBar(QWidget *parent, QVBoxLayout *column);
    void retranslateFilterBar();
};
