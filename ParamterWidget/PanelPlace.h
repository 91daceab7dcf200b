// SPDX-License-Identifier: MIT
#pragma once

#include <QMap>
#include <QSet>
#include <QString>
#include <QStringList>

class QWidget;

/// Where a person is in a panel: the tabs in front, what is folded, how far it is scrolled, the selected row of the
/// feature tree and the search text. GUI thread only; no node is touched.
class PanelPlace
{
public:
    /// Of a panel that is about to be removed: its groups have English titles from here on.
    static PanelPlace take(QWidget &panel);
    /// Brings a panel there whose groups have English titles yet. What it does not have is left as it is; scroll
    /// positions that do not exist yet follow when they do.
    void giveBack(QWidget &panel) const;

private:
    void takeTree(const QWidget &panel);
    void giveBackTree(const QWidget &panel) const;

    QMap<QString, QString> m_tabs; ///< object names: of each set of tabs, the page in front
    QSet<QString> m_foldedGroups; ///< English titles, each after its tool box's object name
    QMap<QString, int> m_scrollPositions; ///< of each tool box and of the tree, by object name
    bool m_isTreeFolded = true;
    QString m_search;
    QSet<QStringList> m_openRows; ///< names from the top down to the row
    QStringList m_currentRow;
};
