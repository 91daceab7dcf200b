// SPDX-License-Identifier: MIT
#pragma once

#include <QList>
#include <QWidget>

class CToolPage;
class QVBoxLayout;

/// A stack of foldable groups that scrolls vertically (by wheel or keyboard focus: no scroll bar is shown). Empty
/// groups are hidden, title bar and all, until one of their rows shows.
class CToolBox : public QWidget
{
    Q_OBJECT

public:
    explicit CToolBox(QWidget *parent = nullptr);

    /// Appends an expanded group with the content, which becomes a child.
    void addWidget(const QString &englishTitle, const QString &chineseTitle, QWidget *content);
    /// Refreshes the rows of the expanded and of the empty groups.
    void updateWidget();
    /// Language index: 0 English, any other value Chinese.
    void setLanguage(int language);

protected:
    /// Refreshes the empty groups: their features may have become available meanwhile.
    void showEvent(QShowEvent *event) override;

private:
    QVBoxLayout *m_pageLayout = nullptr;
    QList<CToolPage *> m_pages; ///< children, in insertion order
};
