// SPDX-License-Identifier: MIT
#pragma once

#include <memory>
#include <string>

#include <QModelIndex>
#include <QString>

#include <GenApi/GenApi.h>

class TreeModel;
class QComboBox;
class Ui_ParamterWidget;
struct PanelContext;

/// The visibility level that a host stored as text: the leading decimal integer, brought into the range
/// 0 (Beginner) to 2 (Guru); 0 for a text that does not start with one.
int attributeLevelFromText(const std::string &text);

/// The attribute tab of a panel: builds the feature tree of a device, filters and folds it. The level that the user
/// chooses is stored by the host.
///
/// Owns the tree's model. GUI thread only; exceptions of the host or of GenICam leave its functions.
class AttributeTab
{
public:
    /// `form` must be built, and context and widgets must outlive the tab.
    AttributeTab(const PanelContext &context, const Ui_ParamterWidget &form);
    ~AttributeTab();

    /// Shows the features of `nodeMap` (not null) in place of those shown before, with the stored level.
    /// Nothing happens once the tab is disabled.
    void build(GenApi::INodeMap *nodeMap);
    /// Stores the level of the selector and hides the rows that level and search text exclude. With `searching` the
    /// whole tree is unfolded first. Does not touch the tree when the host has no node map for the device.
    void filter(bool searching);
    /// Chooses the entry that the selector shows, if retranslate() and not a choice has selected it.
    void chooseLevel();
    /// Unfolds two levels, or folds back to the top-level category.
    void toggleFolding();
    /// The feature of a row; null for a row without one, and once the tab is disabled.
    GenApi::INode *featureAt(const QModelIndex &index) const;
    /// Selects the stored level. The tree is filtered by it unless it shows that level already.
    void selectStoredLevel();
    /// To be called after the form has set its texts, which selects the first level: sets the texts that depend on the
    /// folding state again. A search then goes on with the stored level. `language` is 0 for English.
    void retranslate(int language);
    /// From now on the tree shows the values read last and nothing here reads the device any more.
    void disable();

private:
    void setUpSearch();
    void setUpFolding();
    void showStoredLevel();
    void showFoldingText();
    bool isFolded() const;
    void setFolded(bool folded);
    void applyFilter();

    const PanelContext &m_context;
    const Ui_ParamterWidget &m_form;
    std::unique_ptr<TreeModel> m_model;
    bool m_isLevelReset = true; ///< new texts have selected the first level, which nobody chose
    int m_shownLevel = 0; ///< of the last filter run
};
