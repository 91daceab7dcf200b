// SPDX-License-Identifier: MIT
#pragma once

#include <QModelIndex>
#include <QString>

class QComboBox;
class QLineEdit;
class QToolButton;
class QTreeView;
class QWidget;
class TourPanel;
class TourVerdict;

/// The panel's tree of all features, with what stands around it. Parts are null when the panel lacks them.
class TourTree
{
public:
    TourTree(const TourPanel &panel, TourVerdict &verdict) : m_panel(panel), m_verdict(verdict) { }

    QTreeView *view() const;
    QLineEdit *searchField() const;
    QComboBox *levelBox() const;
    QToolButton *foldButton() const;

    /// Number of rows that can be seen or scrolled to.
    int shownRows() const;
    /// The row of a feature or category, invalid when it has none.
    QModelIndex feature(const QString &name) const;
    bool isShown(const QString &name) const;

    /// The editor that is open, or null.
    QWidget *editor() const;
    /// Clicks the value of a feature and returns the editor that opens, else null.
    QWidget *openEditor(const QString &name);
    /// The same; the list of a choice opens too. False when no editor opens.
    bool showEditor(const QString &name);
    /// Closes open lists and menus and the open editor without a write.
    void leaveEditor();
    /// Edits the feature's value as a person would.
    bool edit(const QString &name, const QString &text);

private:
    const TourPanel &m_panel;
    TourVerdict &m_verdict;
};
