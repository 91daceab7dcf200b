// SPDX-License-Identifier: MIT
#include "ParamterWidget/ParamterForm.h"

#include <QComboBox>
#include <QCoreApplication>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QSplitter>
#include <QTabWidget>
#include <QToolButton>
#include <QVBoxLayout>

#include "FeatureTree/FeatureTreeView.h"
#include "ParamterWidget/FormStyleSheets.h"
#include "ToolPage/CTabWidget.h"
#include "ToolPage/CToolBox.h"
#include "ToolPage/CToolPage.h"

namespace {

constexpr QSize PanelSize(751, 598);
constexpr QSize FilterButtonSize(85, 30);
constexpr int FilterHeight = 30;
constexpr int MainTabMinimumHeight = 400;
constexpr int DescriptionMinimumHeight = 100;

template <class Object>
Object *named(Object *object, const char *name)
{
    object->setObjectName(QLatin1String(name));
    return object;
}

/// A named layout without margins.
template <class Layout>
Layout *flat(Layout *layout, const char *name, int spacing = 0)
{
    layout->setSpacing(spacing);
    layout->setContentsMargins(0, 0, 0, 0);
    return named(layout, name);
}

/// The grid of `widget`.
QGridLayout *gridOf(QWidget *widget, const char *name, int spacing = 0)
{
    return flat(new QGridLayout(widget), name, spacing);
}

QString translated(const char *source)
{
    return QCoreApplication::translate("ParamterWidget", source);
}

} // namespace

void Ui_ParamterWidget::setupUi(QWidget *panel)
{
    named(panel, "ParamterWidget")->resize(PanelSize);
    QHBoxLayout *const outer = flat(new QHBoxLayout(panel), "horizontalLayout");
    wdgBackground = named(new QWidget(panel), "wdgBackground");
    outer->addWidget(wdgBackground);

    QGridLayout *const background = gridOf(wdgBackground, "gridLayout");
    background->setContentsMargins(0, 0, 2, 0);
    splitter = named(new QSplitter(Qt::Vertical, wdgBackground), "splitter");
    background->addWidget(splitter, 0, 0);

    tabMainWidget = named(new QTabWidget(splitter), "tabMainWidget");
    tabMainWidget->setMinimumHeight(MainTabMinimumHeight);
    tabMainWidget->setElideMode(Qt::ElideRight);
    tabMainWidget->setStyleSheet(StyleSheets::MainTabs);
    buildCommonPage();
    buildAttributePage();
    widget_attrInfo = named(new CToolPage(splitter), "widget_attrInfo");
    widget_attrInfo->setMinimumHeight(DescriptionMinimumHeight);

    retranslateUi(panel);
    tabMainWidget->setCurrentIndex(0);
    tabWidget->setCurrentIndex(3);
}

void Ui_ParamterWidget::buildCommonPage()
{
    tabPannel = named(new QWidget, "tabPannel");
    QWidget *const frame = named(new QWidget(tabPannel), "widget");
    gridOf(tabPannel, "gridLayout_2")->addWidget(frame, 0, 0);
    tabWidget = named(new CTabWidget(frame), "tabWidget");
    gridOf(frame, "gridLayout_4")->addWidget(tabWidget, 0, 0);

    firstToolBox = buildInnerPage(0);
    secondToolBox = buildInnerPage(1);
    thirdToolBox = buildInnerPage(2);
    fourthToolBox = buildInnerPage(3);
    tabMainWidget->addTab(tabPannel, QString());
}

CToolBox *Ui_ParamterWidget::buildInnerPage(int index)
{
    struct Names
    {
        const char *page;
        const char *grid;
        const char *toolBox;
    };
    static constexpr Names Names[] = {{"tab", "gridLayout_5", "firstToolBox"},
                                      {"tab_2", "gridLayout_8", "secondToolBox"},
                                      {"tab_3", "gridLayout_9", "thirdToolBox"},
                                      {"tab_4", "gridLayout_10", "fourthToolBox"}};

    QWidget *const page = named(new QWidget, Names[index].page);
    CToolBox *const toolBox = named(new CToolBox(page), Names[index].toolBox);
    gridOf(page, Names[index].grid)->addWidget(toolBox, 0, 0);
    tabWidget->addTab(page, QString());
    innerPages[static_cast<size_t>(index)] = page;
    return toolBox;
}

void Ui_ParamterWidget::buildAttributePage()
{
    tabAttribute = named(new QWidget, "tabAttribute");
    QWidget *const frame = named(new QWidget(tabAttribute), "widget_2");
    gridOf(tabAttribute, "gridLayout_6")->addWidget(frame, 0, 0);

    QGridLayout *const grid = gridOf(frame, "gridLayout_3", 5);
    grid->setContentsMargins(0, 5, 0, 0);
    QVBoxLayout *const column = flat(new QVBoxLayout, "verticalLayout");
    grid->addLayout(column, 0, 0);
    buildFilterBar(frame, column);
    widget_featrue = named(new FeatureTreeView(frame), "widget_featrue");
    column->addWidget(widget_featrue);
    tabMainWidget->addTab(tabAttribute, QString());
}

void Ui_ParamterWidget::buildFilterBar(QWidget *parent, QVBoxLayout *column)
{
    QHBoxLayout *const bar = flat(new QHBoxLayout, "horizontalLayout_4", 20);
    QHBoxLayout *const search = flat(new QHBoxLayout, "horizontalLayout_3", 3);
    QHBoxLayout *const level = flat(new QHBoxLayout, "horizontalLayout_2", 3);
    column->addLayout(bar);
    bar->addLayout(search);
    bar->addLayout(level);

    toolButton = named(new QToolButton(parent), "toolButton");
    toolButton->setFixedSize(FilterButtonSize);
    edit_search = named(new QLineEdit(parent), "edit_search");
    edit_search->setFixedHeight(FilterHeight);
    search->addWidget(toolButton);
    search->addWidget(edit_search);

    label = named(new QLabel(parent), "label");
    cboboxLevel = named(new QComboBox(parent), "cboboxLevel");
    cboboxLevel->setFixedSize(FilterButtonSize);
    label->setBuddy(cboboxLevel);
    level->addWidget(label);
    level->addWidget(cboboxLevel);
}

void Ui_ParamterWidget::retranslateUi(QWidget *panel)
{
    static constexpr const char *InnerTitles[] = {
        QT_TRANSLATE_NOOP("ParamterWidget", "first"), QT_TRANSLATE_NOOP("ParamterWidget", "second"),
        QT_TRANSLATE_NOOP("ParamterWidget", "third"), QT_TRANSLATE_NOOP("ParamterWidget", "fourth")};

    panel->setWindowTitle(QCoreApplication::translate("ParamterWidget", "Form"));
    for (size_t i = 0; i < innerPages.size(); ++i)
        tabWidget->setTabText(tabWidget->indexOf(innerPages[i]), translated(InnerTitles[i]));
    tabMainWidget->setTabText(tabMainWidget->indexOf(tabPannel),
                              QCoreApplication::translate("ParamterWidget", "Pannel"));
    retranslateFilterBar();
    const QString attributeTitle = QCoreApplication::translate("ParamterWidget", "All Attribute");
    tabMainWidget->setTabText(tabMainWidget->indexOf(tabAttribute), attributeTitle);
    widget_featrue->setAccessibleName(attributeTitle);
}

void Ui_ParamterWidget::retranslateFilterBar()
{
    toolButton->setText(QCoreApplication::translate("ParamterWidget", "Expand"));
    edit_search->setPlaceholderText(QCoreApplication::translate("ParamterWidget", "Please input paramter name"));
    edit_search->setAccessibleName(edit_search->placeholderText());
    label->setText(QCoreApplication::translate("ParamterWidget", "User Level"));
    cboboxLevel->setAccessibleName(label->text());
    cboboxLevel->clear();
    cboboxLevel->insertItems(0,
                             {QCoreApplication::translate("ParamterWidget", "Beginner"),
                              QCoreApplication::translate("ParamterWidget", "Expert"),
                              QCoreApplication::translate("ParamterWidget", "Guru")});
}
