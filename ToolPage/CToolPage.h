// SPDX-License-Identifier: MIT
#pragma once

#include <QList>
#include <QWidget>

class QLabel;
class QPushButton;
class QSpacerItem;
class QVBoxLayout;

/// A foldable group: a title bar, which folds and unfolds it, over its contents.
/// Collapsed until the first content is added. Folding is not stored. A group is empty while none of its rows shows.
class CToolPage : public QWidget
{
    Q_OBJECT

public:
    explicit CToolPage(QWidget *parent = nullptr);

    /// Appends the content, which becomes a child, takes over both titles (the English one is shown) and expands.
    void addWidget(const QString &englishTitle, const QString &chineseTitle, QWidget *content);
    void expand();
    void collapse();
    bool isExpanded() const { return m_expanded; }
    /// Whether free height goes below the content (true) or to the content (false, the default).
    void setStretchEnable(bool enable);
    /// Whether folding takes care of the free height: below the title bar while collapsed, to the content
    /// while expanded.
    void setAutoStretchEnable(bool enable);
    /// Whether all of its contents, at least one, are lists of rows that show none of them.
    bool isEmpty() const { return m_isEmpty; }
    /// Refreshes the rows of the contents while the group is expanded, or empty.
    void updateWidget();
    /// The shown title, until the next setLanguage().
    void setText(const QString &title);
    /// Language index: 0 English, any other value Chinese.
    void setLanguage(int language);

Q_SIGNALS:
    void emptyChanged(bool isEmpty);

public Q_SLOTS:
    void onPushButtonFoldClicked();

private:
    void buildForm();
    void buildTitleBar();
    void adoptContents();
    void setExpanded(bool expanded);
    void showFoldIcon();

    QPushButton *m_titleBar = nullptr;
    QWidget *m_context = nullptr;
    QVBoxLayout *m_contextLayout = nullptr;
    QSpacerItem *m_spacer = nullptr; ///< owned by the form's layout
    bool m_expanded = false;
    bool m_isEmpty = false;
    QLabel *m_foldIcon = nullptr;
    QLabel *m_title = nullptr;
    QList<QWidget *> m_contents; ///< children, in insertion order
    QString m_englishTitle;
    QString m_chineseTitle;
    bool m_autoStretch = false;
};
