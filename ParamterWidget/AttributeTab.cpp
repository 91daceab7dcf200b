// SPDX-License-Identifier: MIT
#include "ParamterWidget/AttributeTab.h"

#include <algorithm>
#include <cstdlib>

#include <QComboBox>
#include <QCoreApplication>
#include <QIcon>
#include <QLineEdit>
#include <QPushButton>
#include <QShortcut>
#include <QSignalBlocker>
#include <QToolButton>
#include <QWidgetAction>

#include "FeatureTree/FeatureTreeView.h"
#include "FeatureTree/TreeItem.h"
#include "FeatureTree/TreeModel.h"
#include "PanelBase/HostCall.h"
#include "ParamterWidget/FormStyleSheets.h"
#include "ParamterWidget/PanelContext.h"
#include "ParamterWidget/ParamterForm.h"
#include "Resources/Icons.h"

namespace {

constexpr const char *Module = "AttributeTab";

/// Property of the folding button: true when the tree is folded, so that the next click unfolds it.
constexpr const char *CollapseProperty = "collapse";

constexpr int FoldButtonWidthEnglish = 85;
constexpr int FoldButtonWidthChinese = 60;

constexpr int TopCategoryOpen = 0;
constexpr int TwoLevelsOpen = 1;

int storedLevel()
{
    return attributeLevelFromText(
        callHost<HostCore::GetParamterInfo>(Module, HostCore::PARAMETER_INFO_ATTRIBUTE_LEVEL));
}

} // namespace

int attributeLevelFromText(const std::string &text)
{
    constexpr int Base = 10;
    return static_cast<int>(
        std::clamp(std::strtol(text.c_str(), nullptr, Base), long(GenApi::Beginner), long(GenApi::Guru)));
}

AttributeTab::AttributeTab(const PanelContext &context, const Ui_ParamterWidget &form)
    : m_context(context), m_form(form)
{
    setUpSearch();
    setUpFolding();
}

AttributeTab::~AttributeTab() = default;

void AttributeTab::setUpSearch()
{
    auto *const button = new QPushButton(m_form.edit_search);
    button->setCursor(Qt::ArrowCursor);
    button->setFocusPolicy(Qt::NoFocus);
    button->setStyleSheet(StyleSheets::SearchButton);
    auto *const action = new QWidgetAction(m_form.edit_search);
    action->setDefaultWidget(button);
    m_form.edit_search->addAction(action, QLineEdit::LeadingPosition);
    // The tree takes no focus by Tab; from the search field the arrow key leads into it.
    auto *const intoTree = new QShortcut(Qt::Key_Down, m_form.edit_search);
    intoTree->setContext(Qt::WidgetShortcut);
    QObject::connect(intoTree, &QShortcut::activated, m_form.widget_featrue, [tree = m_form.widget_featrue] {
        tree->setFocus();
        const QModelIndex row = tree->currentIndex().isValid() ? tree->currentIndex() : tree->indexAt({});
        tree->setCurrentIndex(row.siblingAtColumn(0)); // the focus alone marks no row
        tree->scrollTo(tree->currentIndex());
    });
}

void AttributeTab::setUpFolding()
{
    m_form.toolButton->setProperty(CollapseProperty, true);
    m_form.toolButton->setIcon(QIcon(Icons::Fold));
    m_form.toolButton->setToolButtonStyle(Qt::ToolButtonTextBesideIcon);
    m_form.toolButton->setLayoutDirection(Qt::RightToLeft);
    m_form.toolButton->setStyleSheet(StyleSheets::FoldButton);
}

void AttributeTab::build(GenApi::INodeMap *nodeMap)
{
    if (m_context.disabled)
        return;
    showStoredLevel();
    GenApi::NodeList_t nodes;
    nodeMap->GetNodes(nodes);
    const QStringList headers = {QCoreApplication::translate("ParamterWidget", "Feature"),
                                 QCoreApplication::translate("ParamterWidget", "Value")};
    auto model = std::make_unique<TreeModel>(headers, nodes);
    model->setReading(m_context.reading.get());
    model->AddModelData(nodes, QString());

    FeatureTreeView *const view = m_form.widget_featrue;
    view->setModel(model.get());
    m_model = std::move(model);
    view->setHorizontalScrollBarPolicy(Qt::ScrollBarAsNeeded);
    view->setVerticalScrollBarPolicy(Qt::ScrollBarAsNeeded);
    m_shownLevel = m_form.cboboxLevel->currentIndex();
    view->filterExpanded(TopCategoryOpen, m_shownLevel, m_form.edit_search->text());
}

void AttributeTab::filter(bool searching)
{
    if (searching && m_isLevelReset)
        showStoredLevel();
    m_isLevelReset = false;
    const std::string level = std::to_string(m_form.cboboxLevel->currentIndex());
    callHost<HostCore::SetParamterInfo>(Module, HostCore::PARAMETER_INFO_ATTRIBUTE_LEVEL, level);
    if (!m_model || m_context.disabled || !m_context.nodeMap())
        return;
    if (searching) {
        m_form.widget_featrue->holdPasses();
        if (isFolded())
            m_form.toolButton->click();
        m_form.widget_featrue->expandAll();
    }
    applyFilter();
}

void AttributeTab::chooseLevel()
{
    if (m_isLevelReset)
        filter(false);
}

void AttributeTab::toggleFolding()
{
    setFolded(!isFolded());
}

GenApi::INode *AttributeTab::featureAt(const QModelIndex &index) const
{
    const bool isOwn = m_model && !m_context.disabled && index.model() == m_model.get();
    return isOwn ? m_model->getItem(index)->GetFeaturePtr() : nullptr;
}

void AttributeTab::selectStoredLevel()
{
    m_form.cboboxLevel->setCurrentIndex(storedLevel());
    m_isLevelReset = false;
    // New texts select the first level without a filter run, so the selector may stand there already.
    if (m_model && !m_context.disabled && m_shownLevel != m_form.cboboxLevel->currentIndex())
        applyFilter();
}

void AttributeTab::showStoredLevel()
{
    const QSignalBlocker blocker(m_form.cboboxLevel);
    m_form.cboboxLevel->setCurrentIndex(storedLevel());
    m_isLevelReset = false;
}

void AttributeTab::retranslate(int language)
{
    m_isLevelReset = true;
    m_form.toolButton->setFixedWidth(language == 0 ? FoldButtonWidthEnglish : FoldButtonWidthChinese);
    showFoldingText();
}

void AttributeTab::showFoldingText()
{
    m_form.toolButton->setText(isFolded() ? QCoreApplication::translate("ParamterWidget", "Expand")
                                          : QCoreApplication::translate("ParamterWidget", "Collapse"));
}

void AttributeTab::disable()
{
    if (m_model)
        m_model->dataDisabled = true;
    m_form.widget_featrue->setViewDataDisable();
}

bool AttributeTab::isFolded() const
{
    return m_form.toolButton->property(CollapseProperty).toBool();
}

void AttributeTab::setFolded(bool folded)
{
    m_form.widget_featrue->expandToDepth(folded ? TopCategoryOpen : TwoLevelsOpen);
    m_form.toolButton->setIcon(QIcon(folded ? Icons::Fold : Icons::Unfold));
    m_form.toolButton->setProperty(CollapseProperty, folded);
    showFoldingText();
}

void AttributeTab::applyFilter()
{
    m_shownLevel = m_form.cboboxLevel->currentIndex();
    m_form.widget_featrue->SetFilter(m_shownLevel, m_form.edit_search->text());
}
